#include "accessible/accessibleitem.h"

#include <QtWidgets/QWidget>

#include "accessible/accessibleitems.h"

namespace KV {

AccessibleItem::AccessibleItem(QWidget *control, quint64 ownKey) : owner(control), key(ownKey) {}

AccessibleItems *AccessibleItem::items() const
{
    return owner ? dynamic_cast<AccessibleItems *>(QAccessible::queryAccessibleInterface(owner)) : nullptr;
}

/// -1 once it is gone.
int AccessibleItem::index() const
{
    const AccessibleItems *all = items();
    return all ? all->indexOf(key) : -1;
}

QAccessibleInterface *AccessibleItem::parent() const
{
    return items();
}

QString AccessibleItem::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Name && isValid() ? items()->textOf(index()) : QString();
}

QRect AccessibleItem::rect() const
{
    const QRect inControl = isValid() ? items()->rectOf(index()) : QRect();
    return inControl.isEmpty() ? QRect() : QRect(owner->mapToGlobal(inControl.topLeft()), inControl.size());
}

QAccessible::Role AccessibleItem::role() const
{
    return isValid() ? items()->roleOf(index()) : QAccessible::NoRole;
}

bool AccessibleItem::isSelected() const
{
    return isValid() && items()->isSelected(index());
}

QAccessible::State AccessibleItem::state() const
{
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const bool isCell = items()->isCell(index());
    state.disabled = !owner->isEnabled();
    state.readOnly = isCell;
    state.selectable = isCell;
    state.focusable = true;
    state.selected = isSelected();
    state.focused = owner->hasFocus() && items()->currentIndex() == index();
    state.offscreen = rect().isEmpty();
    return state;
}

void *AccessibleItem::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TableCellInterface && isValid() && items()->isCell(index()))
        return static_cast<QAccessibleTableCellInterface *>(this);
    if (type == QAccessible::ActionInterface)
        return static_cast<QAccessibleActionInterface *>(this);
    return nullptr;
}

int AccessibleItem::columnIndex() const
{
    return isValid() ? index() % items()->columnCount() : -1;
}

int AccessibleItem::rowIndex() const
{
    return isValid() ? index() / items()->columnCount() : -1;
}

/// The first cell says what the row is about.
QList<QAccessibleInterface *> AccessibleItem::rowHeaderCells() const
{
    return isValid() && columnIndex() > 0 ? QList<QAccessibleInterface *>{items()->cellAt(rowIndex(), 0)}
                                          : QList<QAccessibleInterface *>();
}

QStringList AccessibleItem::actionNames() const
{
    return isValid() && owner->isEnabled() && items()->canPress(index()) ? QStringList{pressAction()} : QStringList();
}

void AccessibleItem::doAction(const QString &name)
{
    if (actionNames().contains(name))
        items()->press(index());
}

} // namespace KV
