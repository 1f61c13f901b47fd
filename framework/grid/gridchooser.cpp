#include "grid/gridchooser.h"

#include <algorithm>

namespace ZB {

GridChooser::GridChooser(const GridRows &shownRows, const GridGeometry &layout) : rows(shownRows), geometry(layout) {}

void GridChooser::setSource(GridSource *newSource)
{
    source = newSource;
    chosen.clear();
    now = GridTarget();
    anchor = GridTarget();
    currentShown = false;
}

void GridChooser::follow()
{
    if (now.row == NoGridRow || !source)
        return;
    const int index = rows.indexOf(now.row);
    const qint64 place = index >= 0 ? rows.window().first + index : source->rowOf(now.row);
    currentShown = place >= 0;
    if (currentShown)
        now.place = place;
}

GridTarget GridChooser::target(qint64 place, int column) const
{
    GridTarget cell{rows.idAt(place), place, column};
    if (cell.row == NoGridRow && source && place >= 0) {
        std::vector<GridRowId> ids;
        source->rowIds(place, 1, ids);
        if (!ids.empty())
            cell.row = ids.front();
    }
    return cell;
}

void GridChooser::setCurrent(const GridTarget &cell)
{
    now = cell;
    currentShown = cell.row != NoGridRow;
}

/// Where a stretch begins; at the cell itself when its beginning is no longer shown.
qint64 GridChooser::anchorPlace(const GridTarget &fallback)
{
    if (anchor.row != NoGridRow) {
        const int index = rows.indexOf(anchor.row);
        const qint64 place = index >= 0 ? rows.window().first + index : source ? source->rowOf(anchor.row) : -1;
        if (place >= 0)
            return place;
    }
    anchor = fallback;
    return fallback.place;
}

/// Rows on the screen count as they are shown there, which may be an order that is held; others as they are now.
std::vector<GridRowId> GridChooser::rowsBetween(qint64 a, qint64 b) const
{
    if (a > b)
        std::swap(a, b);
    std::vector<GridRowId> ids;
    if (rows.idAt(a) != NoGridRow && rows.idAt(b) != NoGridRow)
        for (qint64 place = a; place <= b; ++place)
            ids.push_back(rows.idAt(place));
    else if (source && a >= 0)
        source->rowIds(a, b - a + 1, ids);
    return ids;
}

std::vector<int> GridChooser::columnsBetween(int a, int b) const
{
    int first = geometry.columns.placeOf(a);
    int last = geometry.columns.placeOf(b);
    if (first > last)
        std::swap(first, last);
    std::vector<int> columns;
    for (int place = first; first >= 0 && place <= last; ++place)
        columns.push_back(geometry.columns.placed()[static_cast<size_t>(place)].column);
    return columns;
}

void GridChooser::chooseRow(const GridTarget &cell, Qt::KeyboardModifiers modifiers)
{
    if (modifiers & Qt::ShiftModifier) {
        beginRows(modifiers & Qt::ControlModifier);
        extendRows(cell);
        return;
    }
    anchor = cell;
    setCurrent(cell);
    if (modifiers & Qt::ControlModifier)
        chosen.toggleRow(cell.row);
    else
        chosen.selectRow(cell.row);
}

void GridChooser::toggleCurrent()
{
    if (!isCurrentShown())
        return;
    anchor = now;
    chosen.toggleRow(now.row);
}

void GridChooser::aim(const GridTarget &cell)
{
    anchor = cell;
    setCurrent(cell);
}

void GridChooser::beginRows(bool keep)
{
    chosen.beginStretch(keep);
}

void GridChooser::extendRows(const GridTarget &cell)
{
    if (cell.row == NoGridRow)
        return;
    chosen.setStretch(rowsBetween(anchorPlace(cell), cell.place));
    setCurrent(cell);
}

void GridChooser::beginCells(bool keep)
{
    chosen.beginBlock(keep);
}

void GridChooser::beginCellsAtCurrent()
{
    anchor = now;
    chosen.beginBlock(false);
}

void GridChooser::extendCells(const GridTarget &cell)
{
    if (cell.row == NoGridRow)
        return;
    const qint64 from = anchorPlace(cell);
    chosen.setBlock(rowsBetween(from, cell.place), columnsBetween(anchor.column, cell.column));
    setCurrent(cell);
}

void GridChooser::selectAll()
{
    std::vector<GridRowId> all;
    if (source)
        source->rowIds(0, source->rowCount(), all);
    chosen.selectRows(all);
}

void GridChooser::selectRows(const std::vector<GridRowId> &wanted)
{
    chosen.selectRows(wanted);
}

void GridChooser::clearSelection()
{
    chosen.clear();
}

} // namespace ZB
