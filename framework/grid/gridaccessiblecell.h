#pragma once

#include <QtCore/QPointer>

#include "grid/gridaccessiblepart.h"

namespace ZB {

class GridView;
class GridViewPrivate;

/// One cell of a grid: it stays with its record and its column wherever those move, so that what was read is what a key
/// acts on. Gone once the record is not shown. GUI thread.
class GridAccessibleCell : public GridAccessiblePart, public QAccessibleTableCellInterface
{
public:
    GridAccessibleCell(GridView *view, quint64 row, int column);

    quint64 rowId() const { return row; }
    int modelColumn() const { return column; }

    bool isValid() const override;
    QAccessibleInterface *parent() const override;
    QString text(QAccessible::Text kind) const override;
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
