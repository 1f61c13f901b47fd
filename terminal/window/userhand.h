#pragma once

#include <QtCore/QPoint>
#include <QtCore/QString>
#include <QtCore/Qt>

class QAction;
class QWidget;

namespace terminal {

/// Does with mouse and keyboard what a user does: every action is an event to the widget that the user would reach.
/// Nothing is done where that widget is not there. Receivers may be deleted by what they are sent. GUI thread.
class UserHand
{
public:
    /// Positions are those of the widget; the event goes to its child at the position.
    static void press(QWidget *widget, const QPoint &position, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                      Qt::MouseButton button = Qt::LeftButton);
    static void release(QWidget *widget, const QPoint &position, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                        Qt::MouseButton button = Qt::LeftButton);
    static void click(QWidget *widget, const QPoint &position, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                      Qt::MouseButton button = Qt::LeftButton);
    static void doubleClick(QWidget *widget, const QPoint &position);
    /// With the left button down, in steps, as a hand does; the button stays down.
    static void drag(QWidget *widget, const QPoint &from, const QPoint &to,
                     Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Moves there without a button, as far as hovering needs.
    static void hover(QWidget *widget, const QPoint &position);
    /// The mouse is elsewhere.
    static void leave(QWidget *widget);
    /// Stays there until the tool tip comes.
    static void rest(QWidget *widget, const QPoint &position);

    /// To the widget with the keyboard: of the open popup or menu, else of the active window.
    static void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    static void type(const QString &text);

    /// Clicks the button with this text in a window.
    static void pushButton(QWidget *window, const QString &text);
    /// Clicks the entry of the open menu whose text begins so.
    static void choose(const QString &beginning);
};

} // namespace terminal
