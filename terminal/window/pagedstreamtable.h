#pragma once

#include "table/chpfdatatable.h"

namespace KV {
class CHpfPageDataModel;
}

namespace terminal {

class PagedRows;

/// A table that shows one page of a stream of records, the newest at the end, and stays on the last page while records
/// come in. Beside the filters of its columns there are a status and a search for a code. GUI thread.
class PagedStreamTable : public KV::CHpfDataTable
{
    Q_OBJECT

public:
    PagedStreamTable(int tableId, int metaId, QWidget *parent);
    ~PagedStreamTable() override;

    PagedRows &rows() const { return *pagedRows; }
    KV::CHpfPageDataModel &pages() const;

    /// The status modes of the paged model.
    void setStatus(int mode);
    void setCodeSearch(const QString &text);
    /// Takes status and search off as well.
    void clearFilter() override;
    void cancelWork() override;

    /// Brings page and total up to date before it redraws.
    void showNow();

Q_SIGNALS:
    /// Status or search are others, and not because somebody asked for them here.
    void filterRestored();

private:
    void filterAnew();

    boost::shared_ptr<PagedRows> pagedRows;
};

} // namespace terminal
