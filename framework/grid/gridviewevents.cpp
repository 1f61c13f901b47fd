#include <QtGui/QContextMenuEvent>
#include <QtGui/QHelpEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QToolTip>

#include "grid/gridview.h"
#include "grid/gridviewprivate.h"
#include "zb/cbasetablecolumnwidgetdelegate.h"

namespace ZB {

bool GridView::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::ToolTip: {
        const auto *help = static_cast<QHelpEvent *>(event);
        const QString text = d->toolTipAt(help->pos());
        if (text.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(help->globalPos(), text, this);
        return true;
    }
    case QEvent::ShortcutOverride:
        if (!d->keys.isColumnKey(*static_cast<QKeyEvent *>(event)))
            break;
        event->accept();
        return true;
    case QEvent::ContextMenu:
        d->mouse.contextMenu(*static_cast<QContextMenuEvent *>(event));
        event->accept();
        return true;
    case QEvent::Hide:
    case QEvent::WindowDeactivate:
        d->mouse.cancel();
        break;
    case QEvent::Timer:
        if (d->mouse.timer(static_cast<QTimerEvent *>(event)->timerId()))
            return true;
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void GridView::paintEvent(QPaintEvent *event)
{
    if (d->mustCatchUp()) {
        const QRegion beyond = d->takeFrame() - event->region();
        if (!beyond.isEmpty())
            update(beyond);
    }
    QPainter painter(this);
    d->paint(painter, event->region());
}

void GridView::resizeEvent(QResizeEvent *)
{
    d->touchLayout();
}

void GridView::showEvent(QShowEvent *)
{
    d->touchLayout();
}

void GridView::focusInEvent(QFocusEvent *)
{
    d->headerState.focused = true;
    d->touchHeader();
    d->touchRows();
}

void GridView::focusOutEvent(QFocusEvent *)
{
    d->headerState.focused = false;
    d->touchHeader();
    d->touchRows();
}

void GridView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange) {
        d->headerState.enabled = isEnabled();
        d->touchHeader();
    }
    QWidget::changeEvent(event);
}

void GridView::mousePressEvent(QMouseEvent *event)
{
    d->mouse.press(*event);
}

void GridView::mouseMoveEvent(QMouseEvent *event)
{
    d->mouse.move(*event);
}

void GridView::mouseReleaseEvent(QMouseEvent *event)
{
    d->mouse.release(*event);
}

void GridView::mouseDoubleClickEvent(QMouseEvent *event)
{
    d->mouse.doubleClick(*event);
}

void GridView::leaveEvent(QEvent *)
{
    d->mouse.leave();
}

void GridView::wheelEvent(QWheelEvent *event)
{
    d->mouse.wheel(*event);
}

void GridView::keyPressEvent(QKeyEvent *event)
{
    if (!d->keys.press(*event))
        event->ignore();
}

} // namespace ZB
