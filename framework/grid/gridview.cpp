#include "grid/gridview.h"

#include <QtCore/QTimer>
#include <algorithm>
#include <utility>

#include "grid/gridaccessible.h"
#include "grid/gridviewprivate.h"
#include "zb/cbasetablecolumnwidgetdelegate.h"

namespace ZB {

GridHold::GridHold(GridView *held) : view(held)
{
    if (view)
        view->d->hold();
}

GridHold::~GridHold()
{
    release();
}

GridHold::GridHold(GridHold &&other) noexcept : view(std::exchange(other.view, nullptr)) {}

GridHold &GridHold::operator=(GridHold &&other) noexcept
{
    if (this != &other) {
        release();
        view = std::exchange(other.view, nullptr);
    }
    return *this;
}

void GridHold::release()
{
    if (view)
        view->d->release();
    view.clear();
}

GridView::GridView(QWidget *parent) : QWidget(parent), d(std::make_unique<GridViewPrivate>(this))
{
    GridAccessible::install();
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    d->applyLook();
}

GridView::~GridView() = default;

void GridView::setSource(GridSource *source)
{
    if (d->source == source)
        return;
    d->mouse.cancel();
    d->source = source;
    d->rows.reset();
    d->chooser.setSource(source);
    d->delegates.clear();
    d->headerState.sorts.clear();
    d->geometry.columns.reset(source ? source->columnCount() : 0);
    d->geometry.rowCount = 0;
    d->geometry.scrollX = d->geometry.scrollY = 0;
    d->touchSource();
    d->announce();
}

GridSource *GridView::source() const
{
    return d->source;
}

void GridView::refresh()
{
    d->requestFrame();
}

void GridView::refreshNow()
{
    d->showFrame(true);
}

quint64 GridView::frameCount() const
{
    return d->frames;
}

void GridView::setLook(const GridLook &look)
{
    d->look = look;
    d->applyLook();
}

const GridLook &GridView::look() const
{
    return d->look;
}

void GridView::setRowNumbersVisible(bool visible)
{
    if (std::exchange(d->numbersVisible, visible) != visible)
        d->touchLayout();
}

bool GridView::rowNumbersVisible() const
{
    return d->numbersVisible;
}

void GridView::setFirstRowNumber(qint64 number)
{
    if (std::exchange(d->firstNumber, number) != number)
        d->touchLayout();
}

void GridView::setStatisticsVisible(bool visible)
{
    if (std::exchange(d->statisticsVisible, visible) != visible)
        d->touchLayout();
}

bool GridView::statisticsVisible() const
{
    return d->statisticsVisible;
}

void GridView::setStatisticsTitle(const QString &title)
{
    if (std::exchange(d->statisticsTitle, title) != title)
        d->touchHeader();
}

void GridView::setEmptyText(const QString &text)
{
    if (std::exchange(d->emptyText, text) != text)
        d->touchOverlay();
}

void GridView::setMarkedText(const QString &text)
{
    d->cells.setMarkedText(text);
    d->touchColumns();
}

void GridView::setFollow(GridFollow follow)
{
    d->rows.setFollow(follow, d->geometry);
}

GridFollow GridView::follow() const
{
    return d->rows.follow();
}

bool GridView::isAtFollowedEdge() const
{
    return d->rows.isAtEdge();
}

void GridView::scrollToFollowedEdge()
{
    if (d->rows.follow() == GridFollow::None)
        return;
    const bool top = d->rows.follow() == GridFollow::Top;
    d->sync();
    d->scrollTo(d->geometry.scrollX, top ? 0 : d->geometry.maximumScrollY());
    d->announce();
}

qint64 GridView::unseenRows() const
{
    return d->rows.unseen();
}

void GridView::scrollTo(GridRowId row, bool center)
{
    if (d->source && row != NoGridRow)
        scrollToRow(d->source->rowOf(row), center);
}

void GridView::scrollToRow(qint64 row, bool center)
{
    if (d->isTakingFrame()) { // a cell is being filled: rows that have come with it are not known yet
        QTimer::singleShot(0, this, [this, row, center] { scrollToRow(row, center); });
        return;
    }
    d->sync();
    if (row < 0 || row >= d->geometry.rowCount)
        return;
    d->scrollTo(d->geometry.scrollX, d->geometry.scrollYFor(row, center));
    d->announce();
}

void GridView::scrollToColumn(int column)
{
    d->showColumn(column);
    d->announce();
}

qint64 GridView::firstVisibleRow() const
{
    return d->rows.window().first;
}

int GridView::visibleRowCount() const
{
    return d->geometry.wholeRowCount();
}

QRect GridView::cellRect(GridRowId row, int column) const
{
    const int index = d->rows.indexOf(row);
    const GridShownColumn where = d->geometry.shownColumn(column);
    if (index < 0 || where.column < 0)
        return QRect();
    const QRect cell = d->geometry.cellRect(d->rows.window().first + index, column) & d->geometry.body();
    return d->toLogical(QRect(where.clipLeft, cell.top(), where.clipRight - where.clipLeft, cell.height()));
}

QRect GridView::wholeCellRect(GridRowId row, int column) const
{
    const int index = d->rows.indexOf(row);
    if (index < 0 || d->geometry.columns.placeOf(column) < 0)
        return QRect();
    return d->toLogical(d->geometry.cellRect(d->rows.window().first + index, column));
}

QRect GridView::headerRect(int column) const
{
    const GridShownColumn where = d->geometry.shownColumn(column);
    if (where.column < 0)
        return QRect();
    return d->toLogical(QRect(where.clipLeft, 0, where.clipRight - where.clipLeft, d->geometry.header().height()));
}

std::pair<GridRowId, int> GridView::cellAt(const QPoint &position) const
{
    const GridHit hit = d->geometry.hit(d->toDevice(position));
    if (hit.area != GridArea::Cell)
        return {NoGridRow, -1};
    return {d->rows.idAt(hit.row), hit.column};
}

QSize GridView::sizeHint() const
{
    return QSize(640, 20 * d->look.rowHeight + d->look.headerHeight);
}

} // namespace ZB
