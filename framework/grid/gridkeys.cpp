#include "grid/gridkeys.h"

#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <algorithm>

#include "grid/gridviewprivate.h"

namespace ZB {

namespace {

constexpr int widthStep = 8;

bool isSideways(int key)
{
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Home || key == Qt::Key_End;
}

} // namespace

GridKeys::GridKeys(GridViewPrivate &owner) : view(owner) {}

bool GridKeys::press(const QKeyEvent &event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    const QPointer<GridView> guard(view.q);
    if (event.key() == Qt::Key_Escape && view.mouse.isPressed())
        view.mouse.cancel();
    else if (!pressColumnKey(event.key(), modifiers) && !pressCommand(event.key(), modifiers) &&
             !pressNavigation(event.key(), modifiers))
        return false;
    if (guard)
        view.announce();
    return true;
}

bool GridKeys::isColumnKey(const QKeyEvent &event) const
{
    const int key = event.key();
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    const bool lying = key == Qt::Key_Left || key == Qt::Key_Right;
    if (view.currentColumn() < 0)
        return false;
    if (modifiers == (Qt::ControlModifier | Qt::ShiftModifier))
        return lying || key == Qt::Key_S || key == Qt::Key_D;
    if (modifiers == (Qt::AltModifier | Qt::ShiftModifier))
        return lying;
    return modifiers == Qt::AltModifier && (key == Qt::Key_Down || key == Qt::Key_Up);
}

bool GridKeys::pressColumnKey(int key, Qt::KeyboardModifiers modifiers)
{
    const int column = view.currentColumn();
    const bool lying = key == Qt::Key_Left || key == Qt::Key_Right;
    const int step = key == Qt::Key_Left ? -1 : 1;
    if (column < 0)
        return false;
    if (modifiers == (Qt::ControlModifier | Qt::ShiftModifier) && (key == Qt::Key_S || key == Qt::Key_D)) {
        Q_EMIT view.q->headerClicked(column, key == Qt::Key_D ? Qt::ControlModifier : Qt::NoModifier);
    } else if (modifiers == (Qt::ControlModifier | Qt::ShiftModifier) && lying) {
        moveColumn(column, step);
    } else if (modifiers == (Qt::AltModifier | Qt::ShiftModifier) && lying) {
        view.q->setColumnWidth(column, view.geometry.columns.at(column).width + step * widthStep);
        Q_EMIT view.q->columnResized(column, view.geometry.columns.at(column).width);
    } else if (modifiers == Qt::AltModifier && key == Qt::Key_Down) {
        if (view.geometry.columns.at(column).filterable) {
            view.showColumn(column);
            Q_EMIT view.q->filterRequested(column, view.q->headerRect(column));
        }
    } else if (modifiers == Qt::AltModifier && key == Qt::Key_Up) {
        view.showColumn(column);
        Q_EMIT view.q->headerMenuRequested(column, view.q->mapToGlobal(view.q->headerRect(column).bottomLeft()));
    } else {
        return false;
    }
    return true;
}

void GridKeys::moveColumn(int column, int step)
{
    const int place = view.geometry.columns.placeOf(column);
    if (!view.geometry.columns.move(column, step < 0 ? std::max(0, place - 1) : place + 2))
        return;
    view.touchLayout();
    view.showColumn(column);
    Q_EMIT view.q->columnMoved(column, view.geometry.columns.placeOf(column));
}

bool GridKeys::pressCommand(int key, Qt::KeyboardModifiers modifiers)
{
    const bool control = modifiers & Qt::ControlModifier;
    const GridTarget current = view.chooser.current();
    if (key == Qt::Key_A && modifiers == Qt::ControlModifier) {
        view.chooser.selectAll();
    } else if (key == Qt::Key_C && control && !(modifiers & Qt::AltModifier)) {
        Q_EMIT view.q->copyRequested(modifiers & Qt::ShiftModifier);
        return true;
    } else if (key == Qt::Key_Space && view.chooser.isCurrentShown() && !(modifiers & Qt::ShiftModifier)) {
        if (control)
            view.chooser.toggleCurrent();
        else
            view.chooser.chooseRow(current, Qt::NoModifier);
    } else if ((key == Qt::Key_Return || key == Qt::Key_Enter) && modifiers == Qt::NoModifier &&
               view.chooser.isCurrentShown()) {
        Q_EMIT view.q->activated(current.row, current.column);
        return true;
    } else {
        return false;
    }
    view.touchRows();
    return true;
}

/// The row that a key leads to.
qint64 GridKeys::placeFor(int key, bool control) const
{
    const qint64 last = view.geometry.rowCount - 1;
    const qint64 here = view.chooser.cursorPlace();
    const int page = std::max(1, view.geometry.wholeRowCount() - 1);
    qint64 place = here;
    switch (key) {
    case Qt::Key_Up:
        place = here - 1;
        break;
    case Qt::Key_Down:
        // Where the current row has gone, the one that took its place comes next.
        place = view.chooser.isCurrentShown() ? here + 1 : std::max<qint64>(0, here);
        break;
    case Qt::Key_PageUp:
        place = here - page;
        break;
    case Qt::Key_PageDown:
        place = here + page;
        break;
    case Qt::Key_Home:
        place = control ? 0 : here;
        break;
    case Qt::Key_End:
        place = control ? last : here;
        break;
    default:
        break;
    }
    return std::clamp<qint64>(place, 0, last);
}

int GridKeys::columnFor(int key) const
{
    const auto &columns = view.geometry.columns.placed();
    const int place = view.geometry.columns.placeOf(view.currentColumn());
    const int last = static_cast<int>(columns.size()) - 1;
    int next = place;
    if (key == Qt::Key_Left || key == Qt::Key_Right)
        next = std::clamp(place + (key == Qt::Key_Left ? -1 : 1), 0, last);
    else if (key == Qt::Key_Home || key == Qt::Key_End)
        next = key == Qt::Key_Home ? 0 : last;
    return columns[static_cast<size_t>(next)].column;
}

bool GridKeys::pressNavigation(int key, Qt::KeyboardModifiers modifiers)
{
    const bool vertical = key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
    if ((!vertical && !isSideways(key)) || (modifiers & (Qt::AltModifier | Qt::MetaModifier)))
        return false;
    view.sync();
    if (view.geometry.columns.placed().empty())
        return true;
    if (view.geometry.rowCount == 0) {
        // Its filter, its sort and its menu are still to be reached.
        view.chooser.setCurrentColumn(columnFor(key));
        view.showColumn(view.currentColumn());
        view.touchRows();
        return true;
    }
    const bool control = modifiers & Qt::ControlModifier;
    const bool sideways = isSideways(key) && !(control && (key == Qt::Key_Home || key == Qt::Key_End));
    const int column = sideways ? columnFor(key) : view.currentColumn();
    const GridTarget cell = view.chooser.target(placeFor(key, control), column);
    if (cell.row == NoGridRow)
        return true;
    goTo(cell, sideways, control && vertical, modifiers & Qt::ShiftModifier);
    view.showCell(cell);
    view.touchRows();
    return true;
}

/// quiet: without selecting.
void GridKeys::goTo(const GridTarget &cell, bool sideways, bool quiet, bool extend)
{
    GridChooser &chooser = view.chooser;
    const bool blocks = chooser.selection().hasBlocks();
    if (extend && (sideways || blocks)) {
        if (!blocks)
            chooser.beginCellsAtCurrent();
        chooser.extendCells(cell);
    } else if (extend) {
        chooser.extendRows(cell);
    } else if (quiet || (sideways && !blocks)) {
        chooser.setCurrent(cell);
    } else {
        chooser.chooseRow(cell, Qt::NoModifier);
    }
}

} // namespace ZB
