#include <QtGui/QContextMenuEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <algorithm>

#include "log/chpflogwidget.h"
#include "log/clogaccessible.h"
#include "zb/cstylesheetcenter.h"

namespace KV {

void CHpfLogWidget::wheelEvent(QWheelEvent *event)
{
    const QPoint turned = event->angleDelta();
    const bool across = std::abs(turned.x()) > std::abs(turned.y());
    const int delta = across ? turned.x() : turned.y();
    QScrollBar *bar = across ? horizontalBar : verticalBar;
    const bool scrolls = across ? horizontalBar->maximum() > drawRect.width() : lineCount > geometry.pageLines();
    const bool atEnd = (bar->value() >= bar->maximum() && delta < 0) || (bar->value() <= bar->minimum() && delta > 0);
    if (scrolls && !atEnd)
        QCoreApplication::sendEvent(bar, event);
    event->accept();
}

void CHpfLogWidget::mousePressEvent(QMouseEvent *event)
{
    keyboardFocus = false;
    if (framed) {
        framed = false;
        update();
    }
    if (event->button() != Qt::LeftButton)
        return;
    selectedLine = std::clamp(topLine + geometry.rowAt(event->pos().y()), 0, lineCount);
    foundPlace = {selectedLine, -1};
    selectAll = false;
    redraw();
}

bool CHpfLogWidget::isOnPage(int line) const
{
    return line >= topLine && line <= topLine + geometry.pageLines() - 1;
}

/// Selects a row and scrolls to it as little as needed; -1 selects none.
void CHpfLogWidget::selectRow(int row)
{
    selectedLine = row;
    foundPlace = {row, -1};
    selectAll = false;
    if (row >= 0 && !isOnPage(row))
        scrollTo(row < topLine ? row : row - geometry.pageLines() + 1);
    redraw();
}

void CHpfLogWidget::selectUp()
{
    if (isOnPage(selectedLine))
        selectedLine = std::max(selectedLine - 1, 0);
    else
        selectedLine = topLine + geometry.pageLines() - 1;
    selectedLine = std::min(selectedLine, lineCount - 1);
    if (selectedLine >= 0 && selectedLine < topLine)
        scrollTo(selectedLine);
}

void CHpfLogWidget::selectDown()
{
    selectedLine = std::min(isOnPage(selectedLine) ? selectedLine + 1 : topLine, lineCount - 1);
    if (selectedLine > topLine + geometry.pageLines() - 1)
        scrollTo(topLine + 1);
}

void CHpfLogWidget::keyPressEvent(QKeyEvent *event)
{
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier)) {
        handleModifierKey(event);
        return;
    }
    const int page = geometry.pageLines();
    const bool across = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
    switch (event->key()) {
    case Qt::Key_Up:
        selectUp();
        break;
    case Qt::Key_Down:
        selectDown();
        break;
    case Qt::Key_Left:
        scrollAcross(hOffset - horizontalBar->singleStep());
        break;
    case Qt::Key_Right:
        scrollAcross(hOffset + horizontalBar->singleStep());
        break;
    case Qt::Key_PageUp:
        scrollTo(topLine - page);
        break;
    case Qt::Key_PageDown:
        scrollTo(topLine + page);
        break;
    default:
        event->ignore();
        return;
    }
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)
        foundPlace = {selectedLine, -1};
    selectAll = selectAll && across;
    redraw();
}

void CHpfLogWidget::handleModifierKey(QKeyEvent *event)
{
    const bool control = event->modifiers() & Qt::ControlModifier;
    switch (control ? event->key() : 0) {
    case Qt::Key_A:
        slotSelectAll(true);
        break;
    case Qt::Key_C:
        onCopySelect();
        break;
    case Qt::Key_Home:
    case Qt::Key_End:
        scrollTo(event->key() == Qt::Key_Home ? 0 : lineCount);
        selectAll = false;
        redraw();
        break;
    default:
        event->ignore();
    }
}

void CHpfLogWidget::keyReleaseEvent(QKeyEvent *event)
{
    CBaseWidget::keyReleaseEvent(event);
}

void CHpfLogWidget::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setStyleSheet(ZB::CStyleSheetCenter::getStyle(QStringLiteral("QMenu")));
    connect(menu->addAction(QStringLiteral("全选")), &QAction::triggered, this, &CHpfLogWidget::slotSelectAll);
    connect(menu->addAction(QStringLiteral("复制")), &QAction::triggered, this, &CHpfLogWidget::slotCopySelect);
    QAction *wrap = menu->addAction(QStringLiteral("自动换行"));
    wrap->setCheckable(true);
    wrap->setChecked(isAutoLine());
    connect(wrap, &QAction::triggered, this, &CHpfLogWidget::slotAutoLine);
    connect(menu->addAction(QStringLiteral("清空")), &QAction::triggered, this, &CHpfLogWidget::slotClear);
    menu->popup(QCursor::pos());
    event->accept();
}

/// The focus is framed when it came by keyboard, also after another window or a menu had it; after a click the selected
/// row shows it.
void CHpfLogWidget::focusInEvent(QFocusEvent *event)
{
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
        keyboardFocus =
            reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
    framed = keyboardFocus;
    update();
    CLogAccessible::focusCame(this);
}

void CHpfLogWidget::focusOutEvent(QFocusEvent *)
{
    framed = false;
    update();
}

} // namespace KV
