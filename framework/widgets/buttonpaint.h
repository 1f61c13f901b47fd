#pragma once

#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QPainter>

class QKeyEvent;
class QPixmap;
class QWidget;
class QAbstractButton;

namespace ZB {

// What the painted buttons and boxes have in common.

enum ButtonState
{
    StateNormal,
    StateHover,
    StatePressed,
    StateDisabled,
    ButtonStates
};

ButtonState stateOf(const QAbstractButton &button);
/// What a theme key of an image ends with in a state: "", "_hover", "_press", "_disable".
QString keyEnding(ButtonState state);

/// A box with round corners; an invalid border: none.
void paintButtonBox(QPainter &painter, const QRect &rect, const QColor &ground, const QColor &border);
/// A line around, accent unless it is that of an error, and one of the ground inside, which keeps it visible on a fill
/// of any colour.
void paintFocusRing(QPainter &painter, const QRect &rect, bool isError = false);
/// Stretches an image over a place, its corners excepted.
void paintStretched(QPainter &painter, const QRect &rect, const QPixmap &image);
/// The arrow that says that something opens below, in the middle of a place.
void paintDropArrow(QPainter &painter, const QRect &place, const QColor &color);

/// Clicks at Enter; at Space Qt does. True when the key was that.
bool clickedByEnter(QAbstractButton &button, const QKeyEvent &event);
/// Whether an event changes what a widget painted by state looks like.
bool changesState(const QEvent &event);

} // namespace ZB
