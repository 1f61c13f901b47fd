#include "grid/gridmouse.h"

#include <QtCore/QPointer>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>

#include "grid/gridviewprivate.h"
#include "zb/cbasetablecolumnwidgetdelegate.h"

namespace ZB {

GridMouse::GridMouse(GridViewPrivate &owner) : view(owner), headerMouse(owner) {}

void GridMouse::press(const QMouseEvent &event)
{
    if (pressed != Qt::NoButton)
        return;
    const QPoint point = view.toDevice(event.pos());
    const GridHit hit = view.geometry.hit(point);
    pressPoint = lastPoint = point;
    pressed = event.button();
    holdRows();
    if (pressed == Qt::LeftButton)
        pressLeft(hit, point, event.modifiers());
    else if (pressed == Qt::RightButton)
        pressRight(hit);
    view.announce();
}

void GridMouse::pressLeft(const GridHit &hit, const QPoint &point, Qt::KeyboardModifiers modifiers)
{
    pressedCell = view.targetAt(hit);
    keepOthers = modifiers & Qt::ControlModifier;
    switch (hit.area) {
    case GridArea::Cell:
    case GridArea::RowRest:
    case GridArea::RowNumber:
        dragging = hit.area == GridArea::RowNumber || (modifiers & Qt::ShiftModifier) ? Drag::Rows : Drag::Click;
        toggleAtClick = dragging == Drag::Click && keepOthers && view.chooser.selection().hasBlocks();
        if (toggleAtClick)
            view.chooser.aim(pressedCell);
        else
            view.chooser.chooseRow(pressedCell, modifiers);
        if (dragging == Drag::Rows && !(modifiers & Qt::ShiftModifier))
            view.chooser.beginRows(keepOthers);
        break;
    case GridArea::Below:
        view.chooser.clearSelection();
        break;
    case GridArea::Corner:
        view.chooser.selectAll();
        break;
    case GridArea::Header:
    case GridArea::HeaderEdge:
    case GridArea::HeaderFunnel:
        dragging = Drag::Header;
        headerMouse.press(hit, point);
        break;
    default:
        break;
    }
    view.touchRows();
}

/// A menu for a record begins with showing which one is meant.
void GridMouse::pressRight(const GridHit &hit)
{
    pressedCell = view.targetAt(hit);
    if (pressedCell.row == NoGridRow)
        return;
    const GridSelection &selection = view.chooser.selection();
    if (selection.isRowSelected(pressedCell.row) || selection.isCellSelected(pressedCell.row, pressedCell.column))
        view.chooser.setCurrent(pressedCell);
    else
        view.chooser.chooseRow(pressedCell, Qt::NoModifier);
    view.touchRows();
}

void GridMouse::move(const QMouseEvent &event)
{
    const QPoint point = view.toDevice(event.pos());
    lastPoint = point;
    if (pressed != Qt::NoButton && !(event.buttons() & pressed))
        cancel(); // the release went elsewhere
    if (pressed == Qt::LeftButton)
        drag(point);
    else
        hover(point);
    view.announce();
}

void GridMouse::release(const QMouseEvent &event)
{
    if (event.button() != pressed)
        return;
    const QPoint point = view.toDevice(event.pos());
    const QPointer<GridView> guard(view.q);
    const Drag ended = dragging;
    dragging = Drag::None;
    scrollTimer.stop();
    if (ended == Drag::Header)
        headerMouse.release(point, event.modifiers());
    else if (pressed == Qt::LeftButton && (ended == Drag::Click || ended == Drag::Rows))
        click(point);
    if (!guard)
        return;
    const bool mayBecomeDouble = pressed == Qt::LeftButton && ended == Drag::Click;
    pressed = Qt::NoButton;
    if (mayBecomeDouble)
        doubleClickTimer.start(QApplication::doubleClickInterval(), view.q);
    else
        endPress();
    hover(point);
    view.announce();
}

void GridMouse::click(const QPoint &point)
{
    const GridHit hit = view.geometry.hit(point);
    const QPointer<GridView> guard(view.q);
    if (toggleAtClick) {
        view.chooser.chooseRow(pressedCell, Qt::ControlModifier);
        view.touchRows();
    }
    if (view.targetAt(hit).row != pressedCell.row || pressedCell.row == NoGridRow || clickDelegate(point) || !guard)
        return;
    Q_EMIT view.q->clicked(pressedCell.row, pressedCell.column);
}

bool GridMouse::clickDelegate(const QPoint &point)
{
    const GridHit hit = view.geometry.hit(point);
    if (hit.area != GridArea::Cell || hit.column != pressedCell.column ||
        view.delegates.size() <= static_cast<size_t>(hit.column))
        return false;
    const auto delegate = view.delegates[static_cast<size_t>(hit.column)]; // shared: it may take itself away
    const GridCell *cell = view.body.cell(static_cast<int>(hit.row - view.rows.window().first), hit.column);
    if (!delegate || !cell)
        return false;
    CTableCell told;
    told.row = static_cast<int>(hit.row);
    told.column = hit.column;
    told.text = cell->text;
    told.rect = view.toLogical(view.cells.inside(view.geometry.cellRect(hit.row, hit.column)));
    told.selected = cell->decor & GridDecorSelected;
    told.hovered = true;
    return delegate->clickCell(told, view.toLogical(QRect(point, QSize(1, 1))).topLeft());
}

void GridMouse::doubleClick(const QMouseEvent &event)
{
    const QPoint point = view.toDevice(event.pos());
    const GridHit hit = view.geometry.hit(point);
    if (event.button() == Qt::LeftButton && hit.area == GridArea::HeaderEdge) {
        headerMouse.doubleClick(hit);
        return;
    }
    // Counts as a press of its own, unless it is the second one of the record that the first one went to.
    const GridTarget first = pressedCell;
    const bool second = event.button() == Qt::LeftButton && hit.area == GridArea::Cell && doubleClickTimer.isActive() &&
                        first.row != NoGridRow && view.rows.idAt(hit.row) == first.row && hit.column == first.column;
    const QPointer<GridView> guard(view.q);
    press(event);
    if (!guard || !second)
        return;
    dragging = Drag::None;
    Q_EMIT view.q->activated(first.row, first.column);
}

void GridMouse::contextMenu(const QContextMenuEvent &event)
{
    const QPointer<GridView> guard(view.q);
    if (event.reason() != QContextMenuEvent::Mouse) {
        const GridTarget &cell = view.chooser.current();
        view.showCell(cell);
        view.takeFrame();
        const QRect rect = view.q->cellRect(cell.row, cell.column);
        const QPoint below = rect.isEmpty() ? view.q->rect().center() : rect.bottomLeft();
        Q_EMIT view.q->contextMenuRequested(view.q->currentRow(), view.currentColumn(), view.q->mapToGlobal(below));
        return;
    }
    const GridHit hit = view.geometry.hit(view.toDevice(event.pos()));
    const GridTarget cell = pressed == Qt::RightButton ? pressedCell : view.targetAt(hit);
    if (view.geometry.header().contains(view.toDevice(event.pos())))
        Q_EMIT view.q->headerMenuRequested(hit.column, event.globalPos());
    else
        Q_EMIT view.q->contextMenuRequested(cell.row, cell.column, event.globalPos());
    if (guard && pressed == Qt::RightButton)
        cancel(); // the menu has taken the mouse; whoever keeps it open holds the rows
}

void GridMouse::hover(const QPoint &point)
{
    const GridHit hit = view.geometry.hit(point);
    headerMouse.hover(hit);
    const Qt::CursorShape shape = hit.area == GridArea::HeaderEdge ? Qt::SplitHCursor : Qt::ArrowCursor;
    if (view.q->cursor().shape() != shape)
        view.q->setCursor(shape);
    setHoveredCell(hit);
}

void GridMouse::setHoveredCell(const GridHit &hit)
{
    const auto column = static_cast<size_t>(hit.column);
    const bool delegated = hit.area == GridArea::Cell && column < view.delegates.size() && view.delegates[column];
    const GridRowId row = delegated ? view.rows.idAt(hit.row) : NoGridRow;
    const int wanted = delegated ? hit.column : -1;
    if (view.hoveredRow == row && view.hoveredColumn == wanted)
        return;
    view.hoveredRow = row;
    view.hoveredColumn = wanted;
    view.touchRows();
}

void GridMouse::leave()
{
    headerMouse.hover(GridHit());
    setHoveredCell(GridHit());
    if (pressed != Qt::NoButton && QApplication::mouseButtons() == Qt::NoButton)
        cancel();
}

void GridMouse::cancel()
{
    headerMouse.cancel();
    scrollTimer.stop();
    dragging = Drag::None;
    pressed = Qt::NoButton;
    endPress();
}

void GridMouse::holdRows()
{
    doubleClickTimer.stop();
    if (!holding)
        view.hold();
    holding = true;
}

void GridMouse::endPress()
{
    doubleClickTimer.stop();
    if (holding)
        view.release();
    holding = false;
}

bool GridMouse::timer(int id)
{
    if (id == doubleClickTimer.timerId())
        endPress();
    else if (id == scrollTimer.timerId())
        scrollAlong();
    else
        return false;
    return true;
}

} // namespace ZB
