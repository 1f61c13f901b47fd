#pragma once

#include <QtCore/QBasicTimer>
#include <QtCore/QPoint>
#include <QtCore/Qt>

#include "grid/gridchooser.h"
#include "grid/gridheadermouse.h"

class QContextMenuEvent;
class QMouseEvent;
class QWheelEvent;

namespace ZB {

class GridViewPrivate;

/// Turns what the mouse does over a grid into choices and requests. Rows stay in place from a press to its release, and
/// on to a double-click that may follow. GUI thread; the view may be deleted by what a request sets off.
class GridMouse
{
public:
    explicit GridMouse(GridViewPrivate &view);

    void press(const QMouseEvent &event);
    void move(const QMouseEvent &event);
    void release(const QMouseEvent &event);
    void doubleClick(const QMouseEvent &event);
    void contextMenu(const QContextMenuEvent &event);
    void wheel(QWheelEvent &event);
    void leave();
    /// Gives up whatever is going on (escape, the window lost the mouse).
    void cancel();
    /// True when the timer was one of its own.
    bool timer(int id);

    const GridHeaderMouse &header() const { return headerMouse; }
    bool isPressed() const { return pressed != Qt::NoButton; }

private:
    enum class Drag
    {
        None,
        Click, ///< a press that is a click until the mouse reaches another cell
        Rows,
        Cells,
        Header
    };

    void pressLeft(const GridHit &hit, const QPoint &point, Qt::KeyboardModifiers modifiers);
    void pressRight(const GridHit &hit);
    void drag(const QPoint &point);
    void extendTo(const QPoint &point);
    void hover(const QPoint &point);
    void setHoveredCell(const GridHit &hit);
    void click(const QPoint &point);
    bool clickDelegate(const QPoint &point);
    void holdRows();
    void endPress();
    QPoint beyondEdge() const;
    void scrollAlong();
    QPoint intoBody(const QPoint &point) const;

    GridViewPrivate &view;
    GridHeaderMouse headerMouse;
    Qt::MouseButton pressed = Qt::NoButton;
    Drag dragging = Drag::None;
    bool keepOthers = false;    ///< Control was down at the press
    bool toggleAtClick = false; ///< until it is known whether a further block of cells begins
    GridTarget pressedCell;     ///< at the first press, for what comes of it
    QPoint pressPoint;
    QPoint lastPoint;
    bool holding = false;
    QBasicTimer doubleClickTimer;
    QBasicTimer scrollTimer;
    QPoint wheelRest; ///< eighths of a degree that made no whole pixel yet
};

} // namespace ZB
