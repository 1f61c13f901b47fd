#include <algorithm>

#include "table/cbasehighperformancetable_p.h"

namespace ZB {

QList<boost::shared_ptr<IBaseHpfTableData>> CBaseHighPerformanceTable::selectedDatas() const
{
    QList<boost::shared_ptr<IBaseHpfTableData>> rows;
    for (const GridRowId id : d->grid->selectedRows())
        if (const auto row = d->source.rowOfId(id))
            rows.append(row);
    return rows;
}

boost::shared_ptr<IBaseHpfTableData> CBaseHighPerformanceTable::currentData() const
{
    return d->source.rowOfId(d->grid->currentRow());
}

void CBaseHighPerformanceTable::selectKey(const std::string &key)
{
    d->settle();
    d->grid->refreshNow();
    const quint64 id = d->model ? HpfModelAccess::idOfKey(*d->model, key) : 0;
    if (id)
        d->grid->setCurrent(id, std::max(0, d->grid->currentColumn()));
}

void CBaseHighPerformanceTable::scrollToKey(const std::string &key)
{
    d->settle();
    d->grid->refreshNow();
    if (const quint64 id = d->model ? HpfModelAccess::idOfKey(*d->model, key) : 0)
        d->grid->scrollTo(id);
}

void CBaseHighPerformanceTable::openFind()
{
    d->search.open();
}

void CBaseHighPerformanceTable::find(const QString &text, bool forward)
{
    d->search.find(text, forward, false);
}

void CBaseHighPerformanceTable::copySelection(bool withHeader)
{
    d->copySelection(withHeader);
}

bool CBaseHighPerformanceTable::Private::exportTo(const QString &path)
{
    return q->exportData(path);
}

bool CBaseHighPerformanceTable::exportData(QString path)
{
    if (!d->model || path.isEmpty())
        return false;
    d->restoreNow();
    d->settle();
    if (!d->waitForOrder() || !d->model)
        return false;
    return d->transfer.exportTo(path, d->exportColumns(d->grid->visibleColumns()), d->source.allRows());
}

} // namespace ZB
