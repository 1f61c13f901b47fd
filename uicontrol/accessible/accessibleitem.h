#pragma once

#include <QtCore/QPointer>
#include <QtGui/QAccessible>

class QWidget;

namespace KV {

class AccessibleItems;

/// One item of a control: a cell of its table, or something to press. It knows its key only, and asks the control's
/// AccessibleItems for everything else. GUI thread.
class AccessibleItem : public QAccessibleInterface,
                       public QAccessibleTableCellInterface,
                       public QAccessibleActionInterface
{
public:
    AccessibleItem(QWidget *control, quint64 key);

    quint64 itemKey() const { return key; }

    bool isValid() const override { return index() >= 0; }
    QObject *object() const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    bool isSelected() const override;
    QList<QAccessibleInterface *> columnHeaderCells() const override { return {}; }
    QList<QAccessibleInterface *> rowHeaderCells() const override;
    int columnIndex() const override;
    int rowIndex() const override;
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface *table() const override { return parent(); }

    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    AccessibleItems *items() const;
    int index() const;

    QPointer<QWidget> owner;
    const quint64 key;
};

} // namespace KV
