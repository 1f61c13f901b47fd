#include "window/pagedstreamtable.h"

#include <boost/make_shared.hpp>

#include "pagemodel/chpfpagedatamodel.h"
#include "window/pagedrows.h"

namespace terminal {

PagedStreamTable::PagedStreamTable(int tableId, int metaId, QWidget *parent)
    : KV::CHpfDataTable(tableId, metaId, parent, kdservice::TraderStock, /* paged */ true),
      pagedRows(boost::make_shared<PagedRows>(metaId, kdservice::TraderStock))
{
    setDataModel(pagedRows.get());
    setPageModel(pagedRows->pages());
    setFollowsLastPage(true);
}

PagedStreamTable::~PagedStreamTable() = default;

KV::CHpfPageDataModel &PagedStreamTable::pages() const
{
    return *pagedRows->pages();
}

void PagedStreamTable::setStatus(int mode)
{
    pages().setExFilterStatus(mode);
    filterAnew();
}

void PagedStreamTable::setCodeSearch(const QString &text)
{
    pages().setFilter(text);
    filterAnew();
}

void PagedStreamTable::filterAnew()
{
    setPaused(false);
    pages().filterColumn(pages().columnFilters());
    showNow();
}

void PagedStreamTable::clearFilter()
{
    pages().setExFilterStatus(0);
    pages().setFilter(QString());
    KV::CHpfDataTable::clearFilter();
    Q_EMIT filterRestored();
}

void PagedStreamTable::cancelWork()
{
    KV::CHpfDataTable::cancelWork();
    Q_EMIT filterRestored();
}

void PagedStreamTable::showNow()
{
    onTimer();
    updateTable();
}

} // namespace terminal
