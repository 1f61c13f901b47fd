#pragma once

#include <QtCore/QString>

class QLabel;
class QPushButton;
class QSize;
class QWidget;

namespace KV {

/// Style sheet of the library's dialogs at the present theme and scale: the host's for stock widgets, and what labels
/// with a "look" of "title", "dim", "bold", "warning" or "error" look like.
QString dialogStyleSheet();
/// Gives a label one of these; an empty text for none.
void setLabelLook(QLabel *label, const QString &look);

/// A label whose text is shown as it stands, with a look.
QLabel *plainLabel(const QString &text, const QString &look, QWidget *parent);
/// A button that Enter presses only while it has the focus; drawn as a link where asked for.
QPushButton *dialogButton(const QString &text, bool isLink, QWidget *parent);

/// Gives a window its size when the scale has changed since the last call: at first the usual one (pixels at 100 %),
/// then the size that the user has given it, scaled.
void fitToScale(QWidget *window, const QSize &usual);

} // namespace KV
