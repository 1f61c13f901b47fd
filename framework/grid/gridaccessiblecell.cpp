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
    const auto &rows = GridViewPrivate::of(*owner).rows.window().rows;
    return index < static_cast<int>(rows.size()) ? rows[static_cast<size_t>(index)].id : NoGridRow;
}

QAccessibleInterface *GridAccessibleCell::parent() const
{
    return QAccessible::queryAccessibleInterface(owner);
}

/// Columns out of sight have no texts: what is not painted is not asked for.
QString GridAccessibleCell::text(QAccessible::Text kind) const
{
    if (kind != QAccessible::Name || !isValid())
        return QString();
    const GridCell *cell = GridViewPrivate::of(*owner).body.cell(index, modelColumn());
    return cell ? cell->text + cell->unit : QString();
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
