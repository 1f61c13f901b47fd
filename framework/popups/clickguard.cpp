#include "popups/clickguard.h"

#include <QtCore/QTimer>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>

namespace ZB {

void ClickGuard::startAt(const QPoint &place)
{
    new ClickGuard(place);
}

ClickGuard::ClickGuard(const QPoint &clicked) : QObject(qApp), place(clicked)
{
    qApp->installEventFilter(this);
    QTimer::singleShot(QApplication::doubleClickInterval(), this, [this] {
        if (!isTaking)
            end();
    });
}

void ClickGuard::end()
{
    qApp->removeEventFilter(this);
    deleteLater();
}

bool ClickGuard::takesPress(const QPoint &at)
{
    isTaking = (at - place).manhattanLength() <= QApplication::startDragDistance();
    if (!isTaking)
        end();
    return isTaking;
}

/// Windows hear of the mouse before widgets do: what is taken there never moves the keyboard focus.
bool ClickGuard::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return takesPress(static_cast<QMouseEvent *>(event)->globalPos());
    case QEvent::MouseButtonRelease:
        if (!isTaking)
            return false;
        end();
        return true;
    case QEvent::KeyPress:
        end();
        return false;
    default:
        return false;
    }
}

} // namespace ZB
