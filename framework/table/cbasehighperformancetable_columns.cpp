#include "table/cbasehighperformancetable_p.h"
#include "zb/cbasetablecolumnwidgetdelegate.h"

namespace ZB {

void CBaseHighPerformanceTable::addTableColumn(int column)
{
    if (!d->model || column != int(d->columns.size()) || column >= d->model->columnCount())
        return;
    d->source.touch();
    d->initColumn(column);
    d->updateStatistics();
}

void CBaseHighPerformanceTable::setColumnAlignment(int column, int alignment)
{
    d->changeColumn(column, [alignment](GridColumn &shown) { shown.alignment = Qt::Alignment(alignment); });
    d->updateNumeric(column);
}

void CBaseHighPerformanceTable::setStatColumnAlignment(int column, int alignment)
{
    d->changeColumn(column, [alignment](GridColumn &shown) { shown.statisticsAlignment = Qt::Alignment(alignment); });
}

void CBaseHighPerformanceTable::setColumnBoldFont(int column, bool bold)
{
    d->changeColumn(column, [bold](GridColumn &shown) { shown.bold = bold; });
}

void CBaseHighPerformanceTable::setColumnFilterable(int column, bool filterable)
{
    d->changeColumn(column, [filterable](GridColumn &shown) { shown.filterable = filterable; });
}

bool CBaseHighPerformanceTable::columnFilterable(int column) const
{
    return d->hasColumn(column) && d->grid->column(column).filterable;
}

void CBaseHighPerformanceTable::setColumnInList(int column, bool offered)
{
    if (d->hasColumn(column))
        d->columns[std::size_t(column)].info.offered = offered;
}

void CBaseHighPerformanceTable::setColumnVisible(int column, bool visible)
{
    d->setColumnVisible(column, visible);
}

bool CBaseHighPerformanceTable::columnVisible(int column) const
{
    return d->hasColumn(column) && d->grid->column(column).visible;
}

void CBaseHighPerformanceTable::setColumnFieldId(int column, int fieldId)
{
    if (d->hasColumn(column))
        d->columns[std::size_t(column)].info.fieldId = fieldId;
}

void CBaseHighPerformanceTable::setColumnWidth(int column, int pixels)
{
    d->setColumnWidth(column, pixels);
}

int CBaseHighPerformanceTable::columnWidth(int column) const
{
    return d->hasColumn(column) ? d->grid->column(column).width : 0;
}

void CBaseHighPerformanceTable::setColumnDelegate(int column,
                                                  const boost::shared_ptr<CBaseTableColumnWidgetDelegate> &delegate)
{
    d->grid->setColumnDelegate(column, delegate);
}

void CBaseHighPerformanceTable::setFrozenColumns(int count)
{
    d->setFrozenColumns(count);
}

int CBaseHighPerformanceTable::frozenColumns() const
{
    return d->grid->frozenColumns();
}

void CBaseHighPerformanceTable::fitVisibleColumns()
{
    d->fitVisibleColumns();
}

} // namespace ZB
