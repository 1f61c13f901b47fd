#pragma once

#include <QtGui/QRgb>
#include <algorithm>
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

/// Two channels at once: each 16-bit half by 255, rounded.
inline quint32 divideHalves(quint32 halves)
{
    return ((halves + ((halves >> 8) & 0x00ff00ffu) + 0x00800080u) >> 8) & 0x00ff00ffu;
}

/// `color` at `coverage` of 255 on `ground`, opaque and rounded: how all text of the grid is mixed.
inline QRgb mixColors(QRgb ground, QRgb color, int coverage)
{
    const auto over = static_cast<quint32>(std::clamp(coverage, 0, 255));
    const quint32 under = 255 - over;
    const quint32 even = divideHalves((color & 0x00ff00ffu) * over + (ground & 0x00ff00ffu) * under);
    const quint32 odd = divideHalves(((color >> 8) & 0x00ff00ffu) * over + ((ground >> 8) & 0x00ff00ffu) * under);
    return 0xff000000u | even | (odd << 8);
}

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
