#pragma once

#include <QtCore/QPointer>
#include <QtGui/QAccessible>

namespace ZB {

class GridView;
class GridViewPrivate;

/// One cell of a grid: it stays with its record and its column wherever those move, so that what was read is what a key
/// acts on. Gone once the record is not shown. GUI thread.
class GridAccessibleCell : public QAccessibleInterface, public QAccessibleTableCellInterface
{
public:
    GridAccessibleCell(GridView *view, quint64 row, int column);

    quint64 rowId() const { return row; }
    int modelColumn() const { return column; }

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
    QList<QAccessibleInterface *> columnHeaderCells() const override;
    QList<QAccessibleInterface *> rowHeaderCells() const override { return {}; }
    int columnIndex() const override;
    int rowIndex() const override;
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface *table() const override { return parent(); }

private:
    QPointer<GridView> owner;
    const quint64 row;
    const int column; ///< of the model
};

} // namespace ZB
