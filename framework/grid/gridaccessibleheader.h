#pragma once

#include <QtCore/QPointer>
#include <QtGui/QAccessible>

namespace ZB {

class GridView;

/// The header of one column, which its cells name as theirs. The description says how the column is sorted and what its
/// statistics are; pressing sorts like a click. GUI thread.
class GridAccessibleHeader : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    GridAccessibleHeader(GridView *view, int column);

    /// The column's place on the screen; -1 while it is not shown.
    int columnIndex() const;

    bool isValid() const override { return columnIndex() >= 0; }
    QObject *object() const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::ColumnHeader; }
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    QString description() const;

    QPointer<GridView> owner;
    const int column; ///< of the model
};

} // namespace ZB
