#include "popups/checklist.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QScrollBar>
#include <algorithm>

#include "zb/cstandscrollbar.h"
#include "zb/cuiresource.h"

namespace ZB {

CheckList::CheckList(const PopupLook &popupLook, QWidget *parent) : QAbstractScrollArea(parent), look(popupLook)
{
    setFrameShape(QFrame::NoFrame);
    setVerticalScrollBar(new CStandScrollBar(-1, Qt::Vertical, this));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
}

void CheckList::setItems(std::vector<CheckItem> items)
{
    list = std::move(items);
    findShown();
    setCurrentLine(shown.empty() ? -1 : std::clamp(current, 0, int(shown.size()) - 1));
}

const std::vector<CheckItem> &CheckList::items() const
{
    return list;
}

void CheckList::setSearch(const QString &text)
{
    if (searched == text)
        return;
    searched = text;
    findShown();
    verticalScrollBar()->setValue(0);
    setCurrentLine(shown.empty() ? -1 : 0);
}

QString CheckList::search() const
{
    return searched;
}

const std::vector<int> &CheckList::shownItems() const
{
    return shown;
}

void CheckList::setMovable(bool on)
{
    movable = on;
}

void CheckList::setEmptyText(const QString &text)
{
    if (emptyText == text)
        return;
    emptyText = text;
    viewport()->update();
}

int CheckList::currentLine() const
{
    return current;
}

void CheckList::setCurrentLine(int line)
{
    current = std::min(line, int(shown.size()) - 1);
    if (current >= 0) {
        QScrollBar *bar = verticalScrollBar();
        const int top = current * lineHeight();
        bar->setValue(std::max(std::min(bar->value(), top), top + lineHeight() - viewport()->height()));
    }
    viewport()->update();
}

QRect CheckList::lineRect(int line) const
{
    return QRect(0, line * lineHeight() - verticalScrollBar()->value(), viewport()->width(), lineHeight());
}

int CheckList::lineHeight() const
{
    return scaled(24);
}

void CheckList::checkShown(bool checked)
{
    for (const int index : shown)
        list[std::size_t(index)].checked = checked;
    viewport()->update();
    Q_EMIT checkChanged(-1);
}

void CheckList::invertShown()
{
    for (const int index : shown)
        list[std::size_t(index)].checked = !list[std::size_t(index)].checked;
    viewport()->update();
    Q_EMIT checkChanged(-1);
}

bool CheckList::canMove() const
{
    return movable && searched.isEmpty();
}

void CheckList::findShown()
{
    shown.clear();
    shown.reserve(list.size());
    for (std::size_t index = 0; index < list.size(); ++index)
        if (searched.isEmpty() || list[index].text.contains(searched, Qt::CaseInsensitive))
            shown.push_back(int(index));
    updateScrollBar();
    viewport()->update();
}

void CheckList::updateScrollBar()
{
    QScrollBar *bar = verticalScrollBar();
    bar->setRange(0, std::max(0, int(shown.size()) * lineHeight() - viewport()->height()));
    bar->setPageStep(viewport()->height());
    bar->setSingleStep(lineHeight());
}

void CheckList::toggle(int line)
{
    const int index = shown[std::size_t(line)];
    list[std::size_t(index)].checked = !list[std::size_t(index)].checked;
    viewport()->update();
    Q_EMIT checkChanged(index);
}

/// Only without a search, so lines and items have the same numbers.
void CheckList::moveItem(int from, int to)
{
    if (to == from || to == from + 1 || to < 0 || to > int(list.size()))
        return;
    const auto begin = list.begin();
    if (to < from)
        std::rotate(begin + to, begin + from, begin + from + 1);
    else
        std::rotate(begin + from, begin + from + 1, begin + to);
    findShown();
    setCurrentLine(to < from ? to : to - 1);
    Q_EMIT itemMoved(from, to);
}

int CheckList::lineAt(const QPoint &position) const
{
    if (!viewport()->rect().contains(position))
        return -1;
    const int line = (position.y() + verticalScrollBar()->value()) / lineHeight();
    return line < int(shown.size()) ? line : -1;
}

int CheckList::gapAt(const QPoint &position) const
{
    const int line = (position.y() + verticalScrollBar()->value() + lineHeight() / 2) / lineHeight();
    return std::clamp(line, 0, int(shown.size()));
}

void CheckList::setHovered(int line)
{
    if (hovered == line)
        return;
    hovered = line;
    viewport()->update();
}

void CheckList::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateScrollBar();
}

void CheckList::keyPressEvent(QKeyEvent *event)
{
    const int last = int(shown.size()) - 1;
    const int page = std::max(1, viewport()->height() / lineHeight() - 1);
    const bool carry = event->modifiers() & Qt::ControlModifier;
    int line = current;
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down: {
        const bool up = event->key() == Qt::Key_Up;
        if (carry && canMove() && current >= 0)
            return moveItem(current, up ? current - 1 : current + 2);
        line = current + (up ? -1 : 1);
        break;
    }
    case Qt::Key_PageUp:
        line = current - page;
        break;
    case Qt::Key_PageDown:
        line = current + page;
        break;
    case Qt::Key_Home:
        line = 0;
        break;
    case Qt::Key_End:
        line = last;
        break;
    case Qt::Key_Space:
        if (current >= 0)
            toggle(current);
        return;
    default:
        QAbstractScrollArea::keyPressEvent(event);
        event->ignore();
        return;
    }
    if (last >= 0)
        setCurrentLine(std::clamp(line, 0, last));
}

void CheckList::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    pressed = lineAt(event->pos());
    pressedAt = event->pos();
    if (pressed >= 0)
        setCurrentLine(pressed);
}

void CheckList::mouseMoveEvent(QMouseEvent *event)
{
    setHovered(lineAt(event->pos()));
    const bool far = (event->pos() - pressedAt).manhattanLength() >= QApplication::startDragDistance();
    if (pressed < 0 || !canMove() || (gap < 0 && !far))
        return;
    gap = gapAt(event->pos());
    QScrollBar *bar = verticalScrollBar();
    if (event->pos().y() < 0 || event->pos().y() >= viewport()->height())
        bar->setValue(bar->value() + (event->pos().y() < 0 ? -lineHeight() : lineHeight()));
    viewport()->update();
}

void CheckList::mouseReleaseEvent(QMouseEvent *event)
{
    const int from = std::exchange(pressed, -1);
    const int to = std::exchange(gap, -1);
    viewport()->update();
    if (event->button() != Qt::LeftButton || from < 0)
        return;
    if (to >= 0)
        moveItem(from, to);
    else if (lineAt(event->pos()) == from)
        toggle(from);
}

void CheckList::leaveEvent(QEvent *)
{
    setHovered(-1);
}

void CheckList::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    if (current < 0 && !shown.empty())
        setCurrentLine(0);
    viewport()->update();
}

void CheckList::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

} // namespace ZB
