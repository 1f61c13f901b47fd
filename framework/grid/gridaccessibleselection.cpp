#include <algorithm>
#include <vector>

#include "grid/gridaccessible.h"
#include "grid/gridview.h"
#include "grid/gridviewprivate.h"

namespace ZB {

namespace {

constexpr qint64 mostListedRows = 4096;

} // namespace

bool GridAccessible::isRowSelected(int row) const
{
    const GridRowId id = idOf(row);
    return id != NoGridRow && view().chooser.selection().isRowSelected(id);
}

QList<int> GridAccessible::selectedRows() const
{
    QList<int> selected;
    if (!view().source)
        return selected;
    if (view().chooser.selection().selectedRowCount() > mostListedRows)
        return selectedRowsOnScreen();
    std::vector<qint64> rows;
    view().source->rowsOf(static_cast<const GridView *>(object())->selectedRows(), rows);
    for (const qint64 row : rows)
        if (row >= 0 && row < rowCount())
            selected.append(static_cast<int>(row));
    return selected;
}

QList<int> GridAccessible::selectedRowsOnScreen() const
{
    QList<int> selected;
    const GridWindow &window = view().rows.window();
    const auto end = static_cast<int>(std::min<qint64>(window.first + qint64(window.rows.size()), rowCount()));
    for (auto row = static_cast<int>(window.first); row < end; ++row)
        if (isRowSelected(row))
            selected.append(row);
    return selected;
}

int GridAccessible::selectedRowCount() const
{
    return static_cast<int>(std::min<qint64>(view().chooser.selection().selectedRowCount(), rowCount()));
}

/// Those on the screen: of a selection of all rows nobody wants an object for every cell.
QList<QAccessibleInterface *> GridAccessible::selectedCells() const
{
    QList<QAccessibleInterface *> selected;
    const GridWindow &window = view().rows.window();
    const auto shown = static_cast<int>(window.rows.size());
    for (int row = 0; row < shown; ++row)
        for (int column = 0; column < columnCount(); ++column) {
            QAccessibleInterface *cell = cellAt(static_cast<int>(window.first) + row, column);
            if (cell && cell->state().selected)
                selected.append(cell);
        }
    return selected;
}

int GridAccessible::selectedCellCount() const
{
    const GridSelection &selection = view().chooser.selection();
    if (!selection.hasBlocks())
        return selectedRowCount() * columnCount();
    qint64 rows = 0;
    qint64 cellsOfBlocks = 0;
    for (const GridSelection::Block &block : selection.cellBlocks()) {
        rows += block.rows.size();
        cellsOfBlocks += cellCountOf(block);
    }
    if (selection.cellBlocks().size() == 1 || rows > mostListedRows)
        return static_cast<int>(std::min<qint64>(cellsOfBlocks, qint64(rowCount()) * columnCount()));
    const auto *grid = static_cast<const GridView *>(object());
    const GridCells table = grid->selectedTable();
    const auto selected = grid->selectedTableCells();
    int count = 0; // blocks may share cells
    for (const GridRowId row : table.rows)
        count += static_cast<int>(std::count_if(table.columns.begin(), table.columns.end(),
                                                [&](int column) { return selected(row, column); }));
    return count;
}

/// As with rows, those that are filtered out at present are counted.
qint64 GridAccessible::cellCountOf(const GridSelection::Block &block) const
{
    const GridColumns &columns = view().geometry.columns;
    const auto shown = std::count_if(block.columns.begin(), block.columns.end(),
                                     [&](int column) { return columns.placeOf(column) >= 0; });
    return std::min<qint64>(block.rows.size(), rowCount()) * shown;
}

bool GridAccessible::selectRow(int row)
{
    const GridRowId id = idOf(row);
    if (id == NoGridRow)
        return false;
    static_cast<GridView *>(object())->setCurrent(id, view().currentColumn());
    return true;
}

bool GridAccessible::unselectRow(int row)
{
    if (!isRowSelected(row))
        return false;
    static_cast<GridView *>(object())->clearSelection();
    return true;
}

} // namespace ZB
