#pragma once

#include <QtCore/QString>

#include "hostexport.h"

class QWidget;

namespace ZB {

/// An information box with one OK button, over `parent` (null for none). Does not block: it returns at once, and closes
/// with its parent. Where boxes are not shown (see setMessageBoxesShown) the text, which is plain, goes to the standard
/// logger instead. GUI thread.
HOST_API void showInformation(QWidget *parent, const QString &title, const QString &text);
/// Boxes are shown from the start; a run without a user switches them off.
HOST_API void setMessageBoxesShown(bool shown);

} // namespace ZB
