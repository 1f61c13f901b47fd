#include "accessible/accessibleitems.h"

#include <QtWidgets/QWidget>

#include "accessible/accessibleitem.h"

namespace KV {

namespace {

constexpr std::size_t mostKeptItems = 1 << 12; ///< more than any screen shows

} // namespace

AccessibleItems::AccessibleItems(QWidget *widget, QAccessible::Role role)
    : QAccessibleWidget(widget, role), items(mostKeptItems)
{
}

AccessibleItems::~AccessibleItems()
{
    for (const QAccessible::Id id : items.all())
        QAccessible::deleteAccessibleInterface(id);
}

bool AccessibleItems::canPress(int) const
{
    return false;
}

void AccessibleItems::press(int) {}

void *AccessibleItems::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface *>(this)
                                               : QAccessibleWidget::interface_cast(type);
}

int AccessibleItems::childCount() const
{
    return rowCount() * columnCount();
}

QAccessibleInterface *AccessibleItems::item(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    const quint64 key = keyOf(index);
    if (const auto known = items.find(key))
        return QAccessible::accessibleInterface(*known);
    auto *made = new AccessibleItem(widget(), key);
    if (const auto oldest = items.add(key, QAccessible::registerAccessibleInterface(made)))
        QAccessible::deleteAccessibleInterface(*oldest);
    return made;
}

int AccessibleItems::indexOfChild(const QAccessibleInterface *child) const
{
    const auto *known = dynamic_cast<const AccessibleItem *>(child);
    return known ? indexOf(known->itemKey()) : -1;
}

QAccessibleInterface *AccessibleItems::cellAt(int row, int column) const
{
    const bool isThere = row >= 0 && row < rowCount() && column >= 0 && column < columnCount();
    return isThere ? item(row * columnCount() + column) : nullptr;
}

bool AccessibleItems::isRowSelected(int row) const
{
    return row >= 0 && row < rowCount() && isSelected(row * columnCount());
}

QList<QAccessibleInterface *> AccessibleItems::selectedCells() const
{
    QList<QAccessibleInterface *> cells;
    for (const int row : selectedRowsInSight())
        for (int column = 0; column < columnCount(); ++column)
            cells.append(cellAt(row, column));
    return cells;
}

void AccessibleItems::tellRows(QAccessibleTableModelChangeEvent::ModelChangeType change, int first, int last) const
{
    QAccessibleTableModelChangeEvent event(object(), change);
    if (change != QAccessibleTableModelChangeEvent::ModelReset) {
        event.setFirstRow(first);
        event.setLastRow(last);
        event.setFirstColumn(0);
        event.setLastColumn(columnCount() - 1);
    }
    QAccessible::updateAccessibility(&event);
}

void AccessibleItems::tellSelection() const
{
    QAccessibleEvent event(object(), QAccessible::SelectionWithin);
    QAccessible::updateAccessibility(&event);
    tellFocus();
}

void AccessibleItems::tellFocus() const
{
    const int current = currentIndex();
    if (current < 0 || !widget()->hasFocus())
        return;
    QAccessibleEvent event(object(), QAccessible::Focus);
    event.setChild(current);
    QAccessible::updateAccessibility(&event);
}

} // namespace KV
