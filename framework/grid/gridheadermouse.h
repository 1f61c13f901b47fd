#pragma once

#include <QtCore/QPoint>
#include <QtCore/Qt>

#include "grid/gridgeometry.h"

namespace ZB {

class GridViewPrivate;

/// What the mouse does with the headers: sort by a click, move a column by dragging it, resize it at its edge, open its
/// filter. GUI thread.
class GridHeaderMouse
{
public:
    explicit GridHeaderMouse(GridViewPrivate &view);

    void press(const GridHit &hit, const QPoint &point);
    void move(const QPoint &point);
    /// The view may be gone afterwards.
    void release(const QPoint &point, Qt::KeyboardModifiers modifiers);
    /// True when the double-click was one on an edge; others count as presses.
    bool doubleClick(const GridHit &hit);
    void cancel();
    void hover(const GridHit &hit);

    bool isActive() const { return doing != Doing::Nothing; }
    bool isMovingColumn() const { return doing == Doing::Moving; }
    int column() const { return grabbed; }
    /// While a column is moved: the gap that it would go to, and by how much it has been dragged.
    int gap() const { return dropGap; }
    int draggedBy() const { return offset; }

private:
    enum class Doing
    {
        Nothing,
        Pressing,
        Filtering,
        Resizing,
        Moving
    };

    void setWidth(int devicePixels);
    void end();

    GridViewPrivate &view;
    Doing doing = Doing::Nothing;
    int grabbed = -1; ///< model column
    int pressX = 0;
    int widthAtPress = 0; ///< device-independent pixels
    int dropGap = -1;
    int offset = 0;
};

} // namespace ZB
