#pragma once

#include <QtCore/QPointer>
#include <QtGui/QAccessible>

namespace ZB {

class GridView;
class GridViewPrivate;

/// One cell of a grid by the numbers of its row and of its column on the screen: it stays there while records move
/// through it. GUI thread.
class GridAccessibleCell : public QAccessibleInterface, public QAccessibleTableCellInterface
{
public:
    GridAccessibleCell(GridView *view, int row, int column);

    bool isValid() const override;
    QObject *object() const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::Cell; }
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    bool isSelected() const override;
    QList<QAccessibleInterface *> columnHeaderCells() const override { return {}; }
    QList<QAccessibleInterface *> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return place; }
    int rowIndex() const override { return index; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface *table() const override { return parent(); }

private:
    int modelColumn() const;
    quint64 rowId() const;

    QPointer<GridView> owner;
    int index; ///< of the shown row
    int place; ///< among the visible columns
};

} // namespace ZB
