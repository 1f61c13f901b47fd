#include "window/userhand.h"

#include <QtCore/QPointer>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QHelpEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>

namespace terminal {

namespace {

constexpr int dragSteps = 8;

void sendMouse(QEvent::Type type, QWidget *widget, const QPoint &position, Qt::MouseButton button,
               Qt::MouseButtons down, Qt::KeyboardModifiers modifiers)
{
    if (!widget)
        return;
    QWidget *child = widget->childAt(position);
    QWidget *receiver = child ? child : widget;
    const QPoint global = widget->mapToGlobal(position);
    QMouseEvent event(type, receiver->mapFromGlobal(global), receiver->window()->mapFromGlobal(global), global, button,
                      down, modifiers);
    const QPointer<QWidget> guard(receiver);
    QApplication::sendEvent(receiver, &event);
    if (guard && type == QEvent::MouseButtonPress && button == Qt::RightButton) {
        QContextMenuEvent menu(QContextMenuEvent::Mouse, receiver->mapFromGlobal(global), global, modifiers);
        QApplication::sendEvent(receiver, &menu);
    }
}

QWidget *keyboardOwner()
{
    if (QWidget *popup = QApplication::activePopupWidget())
        return popup->focusWidget() ? popup->focusWidget() : popup;
    return QApplication::focusWidget();
}

} // namespace

void UserHand::press(QWidget *widget, const QPoint &position, Qt::KeyboardModifiers modifiers, Qt::MouseButton button)
{
    sendMouse(QEvent::MouseButtonPress, widget, position, button, button, modifiers);
}

void UserHand::release(QWidget *widget, const QPoint &position, Qt::KeyboardModifiers modifiers, Qt::MouseButton button)
{
    sendMouse(QEvent::MouseButtonRelease, widget, position, button, Qt::NoButton, modifiers);
}

void UserHand::click(QWidget *widget, const QPoint &position, Qt::KeyboardModifiers modifiers, Qt::MouseButton button)
{
    const QPointer<QWidget> guard(widget);
    press(widget, position, modifiers, button);
    if (guard)
        release(widget, position, modifiers, button);
}

void UserHand::doubleClick(QWidget *widget, const QPoint &position)
{
    const QPointer<QWidget> guard(widget);
    click(widget, position);
    if (guard)
        sendMouse(QEvent::MouseButtonDblClick, widget, position, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    if (guard)
        release(widget, position);
}

void UserHand::drag(QWidget *widget, const QPoint &from, const QPoint &to, Qt::KeyboardModifiers modifiers)
{
    press(widget, from, modifiers);
    for (int step = 1; step <= dragSteps; ++step)
        sendMouse(QEvent::MouseMove, widget, from + (to - from) * step / dragSteps, Qt::NoButton, Qt::LeftButton,
                  modifiers);
}

void UserHand::hover(QWidget *widget, const QPoint &position)
{
    sendMouse(QEvent::MouseMove, widget, position, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
}

void UserHand::leave(QWidget *widget)
{
    QEvent event(QEvent::Leave);
    QApplication::sendEvent(widget, &event);
}

void UserHand::rest(QWidget *widget, const QPoint &position)
{
    hover(widget, position);
    QHelpEvent event(QEvent::ToolTip, position, widget->mapToGlobal(position));
    QApplication::sendEvent(widget, &event);
}

void UserHand::key(int key, Qt::KeyboardModifiers modifiers)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
        if (QWidget *owner = keyboardOwner()) {
            QKeyEvent event(type, key, modifiers);
            QApplication::sendEvent(owner, &event);
        }
}

void UserHand::type(const QString &text)
{
    for (const QChar character : text)
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
            if (QWidget *owner = keyboardOwner()) {
                QKeyEvent event(type, Qt::Key_unknown, Qt::NoModifier, QString(character));
                QApplication::sendEvent(owner, &event);
            }
}

void UserHand::pushButton(QWidget *window, const QString &text)
{
    if (!window)
        return;
    for (QAbstractButton *button : window->findChildren<QAbstractButton *>())
        if (button->isVisible() && button->text() == text)
            return click(button, button->rect().center());
}

void UserHand::choose(const QString &beginning)
{
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!menu)
        return;
    for (QAction *action : menu->actions())
        if (action->text().startsWith(beginning))
            return click(menu, menu->actionGeometry(action).center());
}

} // namespace terminal
