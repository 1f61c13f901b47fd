#include "account/caccountcolumnlist.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QScrollBar>
#include <algorithm>

#include "zb/cstylesheetcenter.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

using Part = CAccountColumnDelegate::Part;

constexpr int scrollMs = 30;
constexpr int scrollEdge = 18; ///< pixels at 100 % from the top and the bottom
constexpr int markHeight = 2;

} // namespace

CAccountColumnList::CAccountColumnList(QWidget *parent) : QListWidget(parent), lines(new CAccountColumnDelegate(this))
{
    setItemDelegate(lines);
    setUniformItemSizes(true);
    setMouseTracking(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    viewport()->setAttribute(Qt::WA_Hover);
    scrollTimer.setInterval(scrollMs);
    connect(&scrollTimer, &QTimer::timeout, this, &CAccountColumnList::slotScroll);
    applyLook();
}

CAccountColumnList::~CAccountColumnList() = default;

void CAccountColumnList::applyLook()
{
    look = AccountColumnLook::fromResources();
    lines->setLook(look);
    setStyleSheet(ZB::CStyleSheetCenter::getStyle(QStringLiteral("QListWidget")));
    setFont(look.font);
    scheduleDelayedItemsLayout();
    viewport()->update();
}

/// Lines are changed in place, so that neither the scroll position nor the current line is lost.
void CAccountColumnList::showColumns(const QVector<CAccountListColumn> &columns)
{
    while (count() > columns.size())
        delete takeItem(count() - 1);
    while (count() < columns.size())
        addItem(new QListWidgetItem);
    for (int line = 0; line < count(); ++line) {
        const CAccountListColumn &column = columns[line];
        item(line)->setText(column.name);
        item(line)->setToolTip(
            column.locked ? QStringLiteral("%1（已锁定：固定在最前，不能隐藏或移动）").arg(column.name) : column.name);
        item(line)->setCheckState(column.visible ? Qt::Checked : Qt::Unchecked);
        item(line)->setData(CAccountColumnDelegate::LockedRole, column.locked);
        item(line)->setData(Qt::AccessibleTextRole, column.locked    ? QStringLiteral("%1，已锁定").arg(column.name)
                                                    : column.visible ? column.name
                                                                     : QStringLiteral("%1，未显示").arg(column.name));
    }
    if (currentRow() < 0 && count() > 0)
        setCurrentRow(0);
}

QRect CAccountColumnList::partArea(int line, Part part) const
{
    return CAccountColumnDelegate::partArea(visualItemRect(item(line)), part);
}

void CAccountColumnList::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || isDragging())
        return;
    const QListWidgetItem *pressed = itemAt(event->pos());
    pressedLine = pressed == nullptr ? -1 : row(pressed);
    pressedAt = event->pos();
    if (pressedLine < 0)
        return;
    pressedPart = CAccountColumnDelegate::partAt(visualItemRect(pressed), event->pos());
    setCurrentRow(pressedLine);
}

/// The second press of a double-click is a press like any other: two quick clicks turn a box twice.
void CAccountColumnList::mouseDoubleClickEvent(QMouseEvent *event)
{
    mousePressEvent(event);
}

void CAccountColumnList::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton)) {
        QListWidget::mouseMoveEvent(event);
        return;
    }
    const bool movable = pressedLine >= lockedLines() && pressedPart == Part::Name;
    const bool far = (event->pos() - pressedAt).manhattanLength() >= QApplication::startDragDistance();
    if (isDragging() || (movable && far))
        dragTo(event->pos());
}

void CAccountColumnList::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const int line = std::exchange(pressedLine, -1);
    if (isDragging()) {
        const int wanted = gap;
        endDrag();
        Q_EMIT sigMoveWanted(line, wanted);
        return;
    }
    if (line < 0 || line >= count() || pressedPart == Part::Name || !partArea(line, pressedPart).contains(event->pos()))
        return;
    if (pressedPart == Part::Check)
        Q_EMIT sigCheckWanted(line);
    else
        Q_EMIT sigLockWanted(line);
}

void CAccountColumnList::keyPressEvent(QKeyEvent *event)
{
    const bool carries = event->modifiers() & Qt::ControlModifier;
    if (isDragging()) {
        if (event->key() == Qt::Key_Escape) {
            pressedLine = -1;
            endDrag();
        }
    } else if (carries && event->key() == Qt::Key_Up) {
        Q_EMIT sigMoveWanted(currentRow(), currentRow() - 1);
    } else if (carries && event->key() == Qt::Key_Down) {
        Q_EMIT sigMoveWanted(currentRow(), currentRow() + 2);
    } else if (event->key() == Qt::Key_Space) {
        Q_EMIT sigCheckWanted(currentRow());
    } else if (event->key() == Qt::Key_L && event->modifiers() == Qt::NoModifier) {
        Q_EMIT sigLockWanted(currentRow());
    } else if (event->key() == Qt::Key_Escape) {
        event->ignore();
    } else {
        QListWidget::keyPressEvent(event);
    }
}

void CAccountColumnList::hideEvent(QHideEvent *event)
{
    pressedLine = -1;
    endDrag();
    QListWidget::hideEvent(event);
}

void CAccountColumnList::dragTo(const QPoint &place)
{
    draggedTo = place;
    setGap(gapAt(place.y()));
    if (scrollStep() == 0)
        scrollTimer.stop();
    else if (!scrollTimer.isActive())
        scrollTimer.start();
}

void CAccountColumnList::endDrag()
{
    scrollTimer.stop();
    setGap(-1);
}

void CAccountColumnList::setGap(int newGap)
{
    if (gap == newGap)
        return;
    gap = newGap;
    viewport()->update();
    viewport()->setCursor(isDragging() ? Qt::ClosedHandCursor : Qt::ArrowCursor);
}

/// Behind a line from its middle on; never among the locked ones.
int CAccountColumnList::gapAt(int y) const
{
    const int height = CAccountColumnDelegate::lineHeight();
    const int inContents = y + verticalScrollBar()->value();
    return std::clamp((inContents + height / 2) / height, lockedLines(), count());
}

int CAccountColumnList::lockedLines() const
{
    int locked = 0;
    while (locked < count() && item(locked)->data(CAccountColumnDelegate::LockedRole).toBool())
        ++locked;
    return locked;
}

/// Pixels per step of the timer, faster the farther the mouse is from where it would stand still; 0 there.
int CAccountColumnList::scrollStep() const
{
    const int edge = ZB::scaled(scrollEdge);
    const int above = edge - draggedTo.y();
    const int below = draggedTo.y() - (viewport()->height() - edge);
    const int longest = CAccountColumnDelegate::lineHeight();
    if (above > 0)
        return -std::min(longest, 2 + above);
    return below > 0 ? std::min(longest, 2 + below) : 0;
}

void CAccountColumnList::slotScroll()
{
    verticalScrollBar()->setValue(verticalScrollBar()->value() + scrollStep());
    setGap(gapAt(draggedTo.y()));
    viewport()->update();
}

QRect CAccountColumnList::markArea() const
{
    const int thickness = ZB::scaled(markHeight);
    const int y = gap * CAccountColumnDelegate::lineHeight() - verticalScrollBar()->value();
    const int top = std::clamp(y - thickness / 2, 0, std::max(0, viewport()->height() - thickness));
    return QRect(0, top, viewport()->width(), thickness);
}

void CAccountColumnList::paintEvent(QPaintEvent *event)
{
    QListWidget::paintEvent(event);
    if (!isDragging())
        return;
    QPainter painter(viewport());
    const QRect mark = markArea();
    const int knob = 3 * mark.height();
    painter.fillRect(mark, look.accent);
    painter.fillRect(QRect(mark.left(), mark.center().y() - knob / 2, mark.height(), knob), look.accent);
    painter.fillRect(QRect(mark.right() + 1 - mark.height(), mark.center().y() - knob / 2, mark.height(), knob),
                     look.accent);
}

} // namespace KV
