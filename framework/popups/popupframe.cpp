#include "popups/popupframe.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QScreen>
#include <algorithm>

namespace ZB {

QRect placedAt(const QRect &anchor, const QSize &size, const QRect &screen)
{
    QRect place(QPoint(anchor.left(), anchor.bottom() + 1), size);
    if (place.bottom() > screen.bottom() && anchor.top() - size.height() >= screen.top())
        place.moveBottom(anchor.top() - 1);
    place.moveTop(std::max(screen.top(), std::min(place.top(), screen.bottom() + 1 - size.height())));
    place.moveLeft(std::max(screen.left(), std::min(place.left(), screen.right() + 1 - size.width())));
    return place;
}

PopupFrame::PopupFrame(QWidget *parent)
    : QFrame(parent, Qt::Popup | Qt::FramelessWindowHint), look(PopupLook::fromResources())
{
    setAttribute(Qt::WA_DeleteOnClose);
    setFont(look.font);
    setStyleSheet(look.sheet());
}

PopupFrame::~PopupFrame() = default;

void PopupFrame::showAt(const QRect &anchor, Qt::Edge edge)
{
    anchored = anchor;
    anchoredEdge = edge;
    fit();
    show();
}

void PopupFrame::fit()
{
    adjustSize();
    const QScreen *screen = QGuiApplication::screenAt(anchored.bottomLeft());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    QRect side = anchored;
    if (anchoredEdge == Qt::RightEdge)
        side.setLeft(anchored.right() + 1 - width());
    setGeometry(placedAt(side, size(), screen->availableGeometry()));
}

void PopupFrame::abandon()
{
    close();
    deleteLater();
}

void PopupFrame::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), mixed(look.border, look.dimText, 400));
    painter.fillRect(rect().adjusted(1, 1, -1, -1), look.background);
}

void PopupFrame::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QFrame::keyPressEvent(event);
}

} // namespace ZB
