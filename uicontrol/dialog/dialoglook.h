#pragma once

#include <QtCore/QString>

class QLabel;

namespace KV {

/// Style sheet of the library's dialogs at the present theme and scale: the host's for stock widgets, and what labels
/// with a "look" of "title", "dim", "bold", "warning" or "error" look like.
QString dialogStyleSheet();
/// Gives a label one of these; an empty text for none.
void setLabelLook(QLabel *label, const QString &look);

} // namespace KV
