#pragma once

#include <QtCore/QPointer>

#include "grid/gridaccessiblepart.h"

namespace ZB {

class GridView;

/// The header of one column, which its cells name as theirs. The description says how the column is sorted and what its
/// statistics are; pressing sorts like a click. GUI thread.
class GridAccessibleHeader : public GridAccessiblePart, public QAccessibleActionInterface
{
public:
    GridAccessibleHeader(GridView *view, int column);

    /// The column's place on the screen; -1 while it is not shown.
    int columnIndex() const;

    bool isValid() const override { return columnIndex() >= 0; }
    QAccessibleInterface *parent() const override;
    QString text(QAccessible::Text kind) const override;
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
