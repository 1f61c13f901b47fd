#include <algorithm>

#include "grid/gridview.h"
#include "grid/gridviewprivate.h"
#include "zb/cbasetablecolumnwidgetdelegate.h"

namespace ZB {

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
        GridCells cells{GridSelection::inShownOrder(*d->source, block.rows), {}};
        std::copy_if(visible.begin(), visible.end(), std::back_inserter(cells.columns), [&](int column) {
            return std::binary_search(block.columns.begin(), block.columns.end(), column);
        });
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

bool GridView::hasSelection() const
{
    return !d->chooser.selection().isEmpty();
}

} // namespace ZB
