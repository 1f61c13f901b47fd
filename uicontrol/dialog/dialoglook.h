#pragma once

#include <QtCore/QString>

class QLabel;
class QSize;
class QWidget;

namespace KV {

/// Style sheet of the library's dialogs at the present theme and scale: the host's for stock widgets, and what labels
/// with a "look" of "title", "dim", "bold", "warning" or "error" look like.
QString dialogStyleSheet();
/// Gives a label one of these; an empty text for none.
void setLabelLook(QLabel *label, const QString &look);

/// Gives a window its size when the scale has changed since the last call: at first the usual one (pixels at 100 %),
/// then the size that the user has given it, scaled.
void fitToScale(QWidget *window, const QSize &usual);

} // namespace KV
