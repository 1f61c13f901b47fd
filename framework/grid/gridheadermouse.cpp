#include "grid/gridheadermouse.h"

#include <QtWidgets/QApplication>
#include <algorithm>
#include <cmath>

#include "grid/gridviewprivate.h"

namespace ZB {

GridHeaderMouse::GridHeaderMouse(GridViewPrivate &owner) : view(owner) {}

void GridHeaderMouse::press(const GridHit &hit, const QPoint &point)
{
    grabbed = hit.column;
    pressX = point.x();
    offset = 0;
    switch (hit.area) {
    case GridArea::HeaderEdge:
        doing = Doing::Resizing;
        widthAtPress = view.geometry.columns.at(grabbed).width;
        break;
    case GridArea::HeaderFunnel:
        doing = Doing::Filtering;
        break;
    case GridArea::Header:
        doing = Doing::Pressing;
        view.headerState.pressed = grabbed;
        view.touchHeader();
        break;
    default:
        doing = Doing::Nothing;
    }
}

void GridHeaderMouse::move(const QPoint &point)
{
    offset = point.x() - pressX;
    if (doing == Doing::Pressing && std::abs(offset) > QApplication::startDragDistance() * view.ratio)
        doing = Doing::Moving;
    if (doing == Doing::Resizing)
        setWidth(offset);
    if (doing == Doing::Moving) {
        dropGap = view.geometry.gapAt(point.x());
        view.touchOverlay();
    }
}

void GridHeaderMouse::setWidth(int devicePixels)
{
    GridColumn look = view.geometry.columns.at(grabbed);
    look.width = widthAtPress + static_cast<int>(std::lround(devicePixels / view.ratio));
    if (view.geometry.columns.set(grabbed, look))
        view.touchLayout();
}

void GridHeaderMouse::release(const QPoint &point, Qt::KeyboardModifiers modifiers)
{
    const Doing done = doing;
    const int column = grabbed;
    const int gap = dropGap;
    end();
    const GridHit hit = view.geometry.hit(point);
    switch (done) {
    case Doing::Resizing:
        Q_EMIT view.q->columnResized(column, view.geometry.columns.at(column).width);
        break;
    case Doing::Moving:
        if (view.geometry.columns.move(column, gap)) {
            view.touchLayout();
            Q_EMIT view.q->columnMoved(column, view.geometry.columns.placeOf(column));
        }
        break;
    case Doing::Filtering:
        if (hit == GridHit{GridArea::HeaderFunnel, column, -1})
            Q_EMIT view.q->filterRequested(column, view.q->headerRect(column));
        break;
    case Doing::Pressing:
        if (view.geometry.header().contains(point) && hit.column == column)
            Q_EMIT view.q->headerClicked(column, modifiers);
        break;
    case Doing::Nothing:
        break;
    }
}

bool GridHeaderMouse::doubleClick(const GridHit &hit)
{
    if (hit.area != GridArea::HeaderEdge)
        return false;
    constexpr int widestFit = 400;
    view.fit(hit.column, widestFit, true);
    Q_EMIT view.q->columnResized(hit.column, view.geometry.columns.at(hit.column).width);
    return true;
}

void GridHeaderMouse::cancel()
{
    if (doing == Doing::Resizing)
        setWidth(0);
    end();
}

void GridHeaderMouse::end()
{
    if (doing == Doing::Moving)
        view.touchOverlay();
    doing = Doing::Nothing;
    dropGap = -1;
    if (view.headerState.pressed >= 0) {
        view.headerState.pressed = -1;
        view.touchHeader();
    }
}

void GridHeaderMouse::hover(const GridHit &hit)
{
    const bool onHeader = hit.area == GridArea::Header || hit.area == GridArea::HeaderFunnel;
    const int column = onHeader ? hit.column : -1;
    const bool onFunnel = hit.area == GridArea::HeaderFunnel;
    GridHeaderState &state = view.headerState;
    if (state.hovered == column && state.funnelHovered == onFunnel)
        return;
    state.hovered = column;
    state.funnelHovered = onFunnel;
    view.touchHeader();
}

} // namespace ZB
