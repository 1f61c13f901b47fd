#include <algorithm>
#include <cmath>

#include "grid/gridview.h"
#include "grid/gridviewprivate.h"
#include "zb/cbasetablecolumnwidgetdelegate.h"

namespace ZB {

const GridColumn &GridView::column(int column) const
{
    d->ensureColumns();
    return d->geometry.columns.at(column);
}

void GridView::setColumn(int column, const GridColumn &look)
{
    d->ensureColumns();
    const GridColumn before = d->geometry.columns.at(column);
    if (!d->geometry.columns.set(column, look))
        return;
    if (haveLikeCells(before, look)) // the header or the statistics row, or where columns stand
        d->touchLayout();
    else
        d->touchColumns();
}

void GridView::setColumnWidth(int column, int width)
{
    GridColumn look = this->column(column);
    look.width = width;
    setColumn(column, look);
}

void GridView::setColumnVisible(int column, bool visible)
{
    GridColumn look = this->column(column);
    look.visible = visible;
    setColumn(column, look);
}

std::vector<int> GridView::columnOrder() const
{
    d->ensureColumns();
    return d->geometry.columns.order();
}

void GridView::setColumnOrder(const std::vector<int> &order)
{
    d->ensureColumns();
    d->geometry.columns.setOrder(order);
    d->touchLayout();
}

std::vector<int> GridView::visibleColumns() const
{
    d->ensureColumns();
    std::vector<int> columns;
    for (const GridPlacedColumn &placed : d->geometry.columns.placed())
        columns.push_back(placed.column);
    return columns;
}

int GridView::frozenColumns() const
{
    return d->geometry.columns.frozenWish();
}

void GridView::setFrozenColumns(int count)
{
    if (count == frozenColumns())
        return;
    d->geometry.columns.setFrozen(count);
    d->touchLayout();
}

void GridView::setSortMarks(const GridSortMarks &marks)
{
    const auto same = [](const GridSortMark &a, const GridSortMark &b) {
        return a.column == b.column && a.descending == b.descending;
    };
    const GridSortMarks &before = d->headerState.sorts;
    if (std::equal(before.begin(), before.end(), marks.begin(), marks.end(), same))
        return;
    d->headerState.sorts = marks;
    d->rows.expectSort();
    d->touchHeader();
}

GridSortMarks GridView::sortMarks() const
{
    return d->headerState.sorts;
}

void GridView::setColumnDelegate(int column, const boost::shared_ptr<CBaseTableColumnWidgetDelegate> &delegate)
{
    d->ensureColumns();
    if (column < 0 || column >= d->geometry.columns.count())
        return;
    if (d->delegates.size() <= static_cast<size_t>(column))
        d->delegates.resize(static_cast<size_t>(column) + 1);
    d->delegates[static_cast<size_t>(column)] = delegate;
    d->touchColumns();
}

void GridView::fitColumn(int column, int maximumWidth)
{
    fitColumns({column}, maximumWidth);
}

void GridView::fitColumns(const std::vector<int> &columns, int maximumWidth)
{
    d->sync();
    for (const int column : columns)
        d->fit(column, maximumWidth, true);
}

void GridView::widenColumns(const std::vector<int> &columns, int maximumWidth)
{
    d->sync();
    for (const int column : columns)
        d->fit(column, maximumWidth, false);
}

bool GridView::isHeaderCut(int column) const
{
    return d->source && d->geometry.columns.placeOf(column) >= 0 &&
           d->headers.isCut(d->source->headerText(column), d->geometry, d->headerState, column);
}

void GridView::widenForHeader(int column)
{
    if (!isHeaderCut(column))
        return;
    const int needed = d->headers.wantedWidth(d->source->headerText(column), d->geometry, d->headerState, column);
    setColumnWidth(column, static_cast<int>(std::ceil(needed / d->ratio)));
}

} // namespace ZB
