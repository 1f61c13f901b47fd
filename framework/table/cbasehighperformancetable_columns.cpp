#include <algorithm>
#include <cmath>

#include "table/cbasehighperformancetable_p.h"
#include "zb/cbasetablecolumnwidgetdelegate.h"
#include "zb/cuiresource.h"

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
    if (!d->hasColumn(column))
        return;
    d->columns[std::size_t(column)].info.defaultVisible = visible;
    d->grid->setColumnVisible(column, visible);
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
    if (!d->hasColumn(column) || pixels <= 0)
        return;
    Private::Column &known = d->columns[std::size_t(column)];
    known.width = Private::WidthOrigin::Program;
    known.info.defaultWidth = std::max(1, int(std::lround(pixels / CUiResource::instance()->scale())));
    d->grid->setColumnWidth(column, pixels);
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
    if (d->grid->frozenColumns() == count)
        return;
    d->grid->setFrozenColumns(count);
    d->saveSoon();
}

int CBaseHighPerformanceTable::frozenColumns() const
{
    return d->grid->frozenColumns();
}

void CBaseHighPerformanceTable::fitVisibleColumns()
{
    for (const int column : d->grid->visibleColumns()) {
        Private::Column &known = d->columns[std::size_t(column)];
        if (known.width == Private::WidthOrigin::User)
            continue;
        known.width = Private::WidthOrigin::Fitted;
        d->grid->fitColumn(column);
    }
}

void CBaseHighPerformanceTable::Private::fitAll()
{
    for (Column &column : columns)
        column.width = WidthOrigin::Fitted;
    grid->fitVisibleColumns();
    saveSoon();
}

/// Columns that are not offered keep their places among the others.
void CBaseHighPerformanceTable::Private::orderOffered(const std::vector<int> &offered)
{
    std::vector<int> order = grid->columnOrder();
    auto next = offered.begin();
    for (int &column : order)
        if (std::find(offered.begin(), offered.end(), column) != offered.end() && next != offered.end())
            column = *next++;
    grid->setColumnOrder(order);
    saveSoon();
}

/// As the program has set the columns up.
void CBaseHighPerformanceTable::Private::resetColumns()
{
    std::vector<int> order(columns.size());
    for (std::size_t column = 0; column < columns.size(); ++column) {
        order[column] = int(column);
        columns[column].width = WidthOrigin::Default;
        grid->setColumnVisible(int(column), columns[column].info.defaultVisible);
        grid->setColumnWidth(int(column), scaled(columns[column].info.defaultWidth));
    }
    grid->setColumnOrder(order);
    grid->setFrozenColumns(0);
    frame.columnSet.clear();
    q->fitVisibleColumns();
    saveSoon();
}

} // namespace ZB
