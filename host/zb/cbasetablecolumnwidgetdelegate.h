#pragma once

#include <QtCore/QRect>

#include "zb/ceventdeliverer.h"

class QPainter;

namespace ZB {

/// What a table tells a cell delegate about the cell that it paints.
struct CTableCell
{
    int row = -1;    ///< shown row
    int column = -1; ///< model column
    QString text;
    QRect rect; ///< the cell without its lines, device-independent pixels
    bool selected = false;
    bool hovered = false;
};

/// Paints the cells of one column in place of the table, and hears the mouse in them. GUI thread; held by the table.
class HOST_API CBaseTableColumnWidgetDelegate : public CEventDeliverer
{
public:
    /// columnId: kept for columnId() alone; the column is that of setColumnDelegate(). parent: where events of the
    /// delegate go, the table as a rule; may be null.
    CBaseTableColumnWidgetDelegate(int columnId, CEventDeliverer *parent);
    ~CBaseTableColumnWidgetDelegate() override;

    int columnId() const;

    /// Paints the whole content of a cell over its background. True when the table still has to draw the text itself.
    virtual bool paintCell(const CTableCell &cell, QPainter *painter) = 0;
    /// A left click in a cell, at a position in the coordinates of `cell.rect`; true when the delegate used it up.
    /// Ignores it unless overridden.
    virtual bool clickCell(const CTableCell &cell, const QPoint &position);

private:
    int column;
};

} // namespace ZB
