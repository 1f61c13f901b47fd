#pragma once

#include <QtGui/QPixmap>

class QWidget;

namespace terminal {

/// A window as the user sees it: with its boxes, menus and tool tips at their places over it, each on top of what it
/// stands on. What reaches beyond the window makes the picture larger. GUI thread.
QPixmap windowPicture(QWidget &window);

} // namespace terminal
