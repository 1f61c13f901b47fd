#include <algorithm>

#include "table/cbasehighperformancetable_p.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

constexpr int pixelsOfCharacter = 7; ///< at 100 %, about

} // namespace

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

std::vector<ExportColumn> CBaseHighPerformanceTable::Private::exportColumns(const std::vector<int> &shown) const
{
    std::vector<ExportColumn> all;
    for (const int column : shown)
        all.push_back(
            {column, model->columnHeader(column), model->columnType(column),
             std::clamp(int(grid->column(column).width / CUiResource::instance()->scale()) / pixelsOfCharacter, 4,
                        60)});
    return all;
}

/// Cells of different columns in different rows go as one block per stretch of rows, each with its own columns.
void CBaseHighPerformanceTable::copySelection(bool withHeader)
{
    const std::vector<GridCells> blocks = d->grid->selectedCells();
    if (!d->model || blocks.empty())
        return;
    std::vector<int> columns;
    std::vector<GridRowId> rows;
    for (const GridCells &block : blocks) {
        for (const int column : block.columns)
            if (std::find(columns.begin(), columns.end(), column) == columns.end())
                columns.push_back(column);
        rows.insert(rows.end(), block.rows.begin(), block.rows.end());
    }
    const auto count = qint64(rows.size());
    d->transfer.copy(withHeader, d->exportColumns(columns), count, d->source.rowsOfIds(std::move(rows)));
}

bool CBaseHighPerformanceTable::exportData(QString path)
{
    if (!d->model || path.isEmpty())
        return false;
    d->restoreNow();
    d->settle();
    return d->transfer.exportTo(path, d->exportColumns(d->grid->visibleColumns()), d->source.allRows());
}

} // namespace ZB
