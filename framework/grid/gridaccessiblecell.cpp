#include "grid/gridaccessiblecell.h"

#include "grid/gridaccessible.h"
#include "grid/gridview.h"
#include "grid/gridviewprivate.h"

namespace ZB {

GridAccessibleCell::GridAccessibleCell(GridView *view, int row, int column) : owner(view), index(row), place(column) {}

bool GridAccessibleCell::isValid() const
{
    return owner && modelColumn() >= 0 && rowId() != NoGridRow;
}

int GridAccessibleCell::modelColumn() const
{
    const auto &columns = GridViewPrivate::of(*owner).geometry.columns.placed();
    return place < static_cast<int>(columns.size()) ? columns[static_cast<size_t>(place)].column : -1;
}

quint64 GridAccessibleCell::rowId() const
{
    const GridViewPrivate &grid = GridViewPrivate::of(*owner);
    const GridRowId onScreen = grid.rows.idAt(index);
    std::vector<GridRowId> ids;
    if (onScreen == NoGridRow && grid.source)
        grid.source->rowIds(index, 1, ids);
    return ids.empty() ? onScreen : ids.front();
}

QAccessibleInterface *GridAccessibleCell::parent() const
{
    return QAccessible::queryAccessibleInterface(owner);
}

QString GridAccessibleCell::text(QAccessible::Text kind) const
{
    if (kind != QAccessible::Name || !isValid())
        return QString();
    const GridViewPrivate &grid = GridViewPrivate::of(*owner);
    const GridCell *painted = grid.body.cell(grid.rows.indexOf(rowId()), modelColumn());
    return painted ? painted->text + painted->unit : grid.source->cellText(index, modelColumn());
}

QRect GridAccessibleCell::rect() const
{
    if (!isValid())
        return QRect();
    const QRect inView = owner->cellRect(rowId(), modelColumn());
    return inView.isEmpty() ? QRect() : QRect(owner->mapToGlobal(inView.topLeft()), inView.size());
}

bool GridAccessibleCell::isSelected() const
{
    if (!isValid())
        return false;
    const GridSelection &selection = GridViewPrivate::of(*owner).chooser.selection();
    return selection.isRowSelected(rowId()) || selection.isCellSelected(rowId(), modelColumn());
}

QAccessible::State GridAccessibleCell::state() const
{
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const GridTarget &current = GridViewPrivate::of(*owner).chooser.current();
    state.readOnly = true;
    state.selectable = true;
    state.focusable = true;
    state.selected = isSelected();
    state.focused = owner->hasFocus() && current.row == rowId() && current.column == modelColumn();
    state.offscreen = rect().isEmpty();
    return state;
}

void *GridAccessibleCell::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface *>(this) : nullptr;
}

} // namespace ZB
