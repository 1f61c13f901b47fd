#include <QtWidgets/QApplication>
#include <algorithm>

#include "grid/gridmouse.h"
#include "grid/gridviewprivate.h"

namespace ZB {

namespace {

constexpr int scrollMilliseconds = 30;

} // namespace

void GridMouse::drag(const QPoint &point)
{
    if (dragging == Drag::Header) {
        headerMouse.move(point);
    } else if (dragging == Drag::Click) {
        const bool far = (point - pressPoint).manhattanLength() > QApplication::startDragDistance() * view.ratio;
        const GridHit hit = view.geometry.hit(intoBody(point));
        if (far && (hit.row != pressedCell.place || hit.column != pressedCell.column)) {
            dragging = Drag::Cells;
            view.chooser.beginCells(keepOthers);
        }
    }
    if (dragging == Drag::Rows || dragging == Drag::Cells)
        extendTo(point);
    const bool outside = !beyondEdge().isNull();
    if (outside && !scrollTimer.isActive())
        scrollTimer.start(scrollMilliseconds, view.q);
    else if (!outside)
        scrollTimer.stop();
}

/// The nearest point at which there is a cell.
QPoint GridMouse::intoBody(const QPoint &point) const
{
    const GridGeometry &geometry = view.geometry;
    const QRect body = geometry.body();
    const int lastRow = geometry.rowRect(geometry.rowCount - 1).bottom();
    const auto &columns = geometry.shownColumns();
    const int right = columns.empty() ? body.right() : columns.back().clipRight - 1;
    return QPoint(qBound(std::min(geometry.numberWidth, right), point.x(), right),
                  qBound(body.top(), point.y(), std::max(body.top(), std::min(body.bottom(), lastRow))));
}

void GridMouse::extendTo(const QPoint &point)
{
    const GridTarget cell = view.targetAt(view.geometry.hit(intoBody(point)));
    const GridTarget &reached = view.chooser.current();
    if (cell.row == reached.row && cell.column == reached.column)
        return; // a stretch of a million rows is not gathered anew for every pixel
    if (dragging == Drag::Rows)
        view.chooser.extendRows(cell);
    else
        view.chooser.extendCells(cell);
    view.touchRows();
}

/// By how much something is dragged beyond the edges that it can be dragged over.
QPoint GridMouse::beyondEdge() const
{
    const QRect area = view.geometry.scrolledArea();
    const auto beyond = [](int position, int first, int last) {
        return position < first ? position - first : position > last ? position - last : 0;
    };
    QPoint distance;
    if (dragging == Drag::Cells || headerMouse.isMovingColumn())
        distance.setX(beyond(lastPoint.x(), area.left(), area.right()));
    if (dragging == Drag::Cells || dragging == Drag::Rows)
        distance.setY(beyond(lastPoint.y(), area.top(), area.bottom()));
    return distance;
}

/// While something is dragged beyond an edge the view follows, the faster the farther.
void GridMouse::scrollAlong()
{
    const QPoint distance = beyondEdge();
    view.scrollBy(distance.x() / 2, distance.y() / 2);
    if (headerMouse.isMovingColumn())
        headerMouse.move(lastPoint);
    else
        extendTo(lastPoint);
    view.announce();
}

} // namespace ZB
