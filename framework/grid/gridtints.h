#pragma once

#include <QtGui/QRgb>
#include <array>

#include "frameworkexport.h"

namespace ZB {

/// A colour on a ground, at every coverage.
struct GridTint
{
    QRgb ground = 0;
    QRgb color = 0;
    std::array<QRgb, 256> mixed{}; ///< by coverage, opaque
};

/// `color` at `coverage` of 255 on `ground`, opaque and rounded: how all text of the grid is mixed.
FRAMEWORK_API QRgb mixColors(QRgb ground, QRgb color, int coverage);

/// The tints that were used lately. Text nearly always stands on one plain colour, so that a pixel of it is looked up
/// instead of mixed; this halves what text costs.
class FRAMEWORK_API GridTints
{
public:
    /// Valid until the next call.
    const GridTint &tint(QRgb ground, QRgb color);

private:
    static constexpr unsigned kept = 64; ///< flashes alone take sixteen grounds
    std::array<GridTint, kept> tints;
};

} // namespace ZB
