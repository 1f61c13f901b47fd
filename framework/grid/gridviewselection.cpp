#include <algorithm>

#include "grid/gridview.h"
#include "grid/gridviewprivate.h"
#include "zb/cbasetablecolumnwidgetdelegate.h"

namespace ZB {

namespace {

/// Those of the visible columns in which a block has cells.
std::vector<int> columnsOf(const std::vector<GridSelection::Block> &blocks, const std::vector<int> &visible)
{
    std::vector<int> columns;
    for (const int column : visible)
        if (std::any_of(blocks.begin(), blocks.end(), [column](const GridSelection::Block &block) {
                return std::binary_search(block.columns.begin(), block.columns.end(), column);
            }))
            columns.push_back(column);
    return columns;
}

} // namespace

GridRowId GridView::currentRow() const
{
    return d->chooser.isCurrentShown() ? d->chooser.current().row : NoGridRow;
}

int GridView::currentColumn() const
{
    return d->chooser.current().column;
}

void GridView::setCurrent(GridRowId row, int column)
{
    const qint64 place = d->source && row != NoGridRow ? d->source->rowOf(row) : -1;
    if (place >= 0) {
        d->chooser.chooseRow({row, place, column}, Qt::NoModifier);
    } else {
        d->chooser.setCurrent(GridTarget());
        d->chooser.clearSelection();
    }
    d->touchRows();
    d->announce();
}

void GridView::selectAll()
{
    d->chooser.selectAll();
    d->touchRows();
    d->announce();
}

void GridView::clearSelection()
{
    d->chooser.clearSelection();
    d->touchRows();
    d->announce();
}

void GridView::selectRows(const std::vector<GridRowId> &rows)
{
    d->chooser.selectRows(rows);
    d->touchRows();
    d->announce();
}

bool GridView::isRowSelected(GridRowId row) const
{
    return d->chooser.selection().isRowSelected(row);
}

std::vector<GridRowId> GridView::selectedRows() const
{
    return d->source ? d->chooser.selection().shownRows(*d->source) : std::vector<GridRowId>();
}

std::vector<GridCells> GridView::selectedCells() const
{
    std::vector<GridCells> result;
    if (!d->source)
        return result;
    const GridSelection &selection = d->chooser.selection();
    const std::vector<int> visible = visibleColumns();
    for (const GridSelection::Block &block : selection.cellBlocks()) {
        const GridCells cells{GridSelection::inShownOrder(*d->source, block.rows), columnsOf({block}, visible)};
        if (!cells.rows.empty() && !cells.columns.empty())
            result.push_back(cells);
    }
    if (!selection.hasBlocks()) {
        const std::vector<GridRowId> rows = selectedRows();
        if (!rows.empty())
            result.push_back({rows, visible});
    }
    return result;
}

GridCells GridView::selectedTable() const
{
    GridCells table;
    if (!d->source)
        return table;
    const std::vector<int> visible = visibleColumns();
    const GridSelection &selection = d->chooser.selection();
    if (!selection.hasBlocks())
        return {selectedRows(), visible};
    GridRowSet rows;
    for (const GridSelection::Block &block : selection.cellBlocks()) {
        if (columnsOf({block}, visible).empty())
            continue; // it is in hidden columns
        rows.reserve(rows.size() + block.rows.size());
        for (const GridRowId row : block.rows.ids())
            rows.insert(row);
    }
    return {GridSelection::inShownOrder(*d->source, rows), columnsOf(selection.cellBlocks(), visible)};
}

std::function<bool(GridRowId, int)> GridView::selectedTableCells() const
{
    const GridSelection &selection = d->chooser.selection();
    if (selection.cellBlocks().size() < 2)
        return nullptr;
    return [selection](GridRowId row, int column) { return selection.isCellSelected(row, column); };
}

bool GridView::hasSelection() const
{
    return !d->chooser.selection().isEmpty();
}

} // namespace ZB
