#pragma once

#include <QtGui/QColor>
#include <QtGui/QPixmap>

#include "theme/themedefinition.h"

namespace refhost {

/// Draws an image of a theme in a colour, sharp at a scale and a pixel ratio. A drawing that is missing or broken gives
/// a null pixmap. border: of a box; invalid for none. GUI thread.
QPixmap paintThemeImage(const ThemeImage &image, const QColor &colour, const QColor &border, double scale,
                        double pixelRatio);

/// What stands where an image is missing: a chequered square.
QPixmap missingImage(double scale, double pixelRatio);

} // namespace refhost
