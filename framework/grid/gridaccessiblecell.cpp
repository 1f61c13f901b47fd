#include "grid/gridaccessiblecell.h"

#include "grid/gridaccessible.h"
#include "grid/gridview.h"
#include "grid/gridviewprivate.h"

namespace ZB {

GridAccessibleCell::GridAccessibleCell(GridView *view, quint64 rowId, int modelColumn)
    : owner(view), row(rowId), column(modelColumn)
{
}

bool GridAccessibleCell::isValid() const
{
    return rowIndex() >= 0 && columnIndex() >= 0;
}

int GridAccessibleCell::columnIndex() const
{
    return owner ? GridViewPrivate::of(*owner).geometry.columns.placeOf(column) : -1;
}

int GridAccessibleCell::rowIndex() const
{
    return owner ? static_cast<int>(GridViewPrivate::of(*owner).placeOfRow(row)) : -1;
}

QAccessibleInterface *GridAccessibleCell::parent() const
{
    return QAccessible::queryAccessibleInterface(owner);
}

QList<QAccessibleInterface *> GridAccessibleCell::columnHeaderCells() const
{
    const auto *table = dynamic_cast<const GridAccessible *>(parent());
    return table && isValid() ? QList<QAccessibleInterface *>{table->header(columnIndex())}
                              : QList<QAccessibleInterface *>();
}

QString GridAccessibleCell::text(QAccessible::Text kind) const
{
    if (kind != QAccessible::Name || !isValid())
        return QString();
    const GridViewPrivate &grid = GridViewPrivate::of(*owner);
    const GridCell *painted = grid.body.cell(grid.rows.indexOf(row), column);
    return painted ? painted->text + painted->unit : grid.source->cellText(rowIndex(), column);
}

QRect GridAccessibleCell::rect() const
{
    if (!isValid())
        return QRect();
    const QRect inView = owner->cellRect(row, column);
    return inView.isEmpty() ? QRect() : QRect(owner->mapToGlobal(inView.topLeft()), inView.size());
}

bool GridAccessibleCell::isSelected() const
{
    if (!isValid())
        return false;
    const GridSelection &selection = GridViewPrivate::of(*owner).chooser.selection();
    return selection.isRowSelected(row) || selection.isCellSelected(row, column);
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
    state.focused = owner->hasFocus() && current.row == row && current.column == column;
    state.offscreen = rect().isEmpty();
    return state;
}

void *GridAccessibleCell::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface *>(this) : nullptr;
}

} // namespace ZB
