#include "grid/gridtints.h"

#include <algorithm>

namespace ZB {

namespace {

/// Two channels at once: each 16-bit half by 255, rounded.
quint32 divideHalves(quint32 halves)
{
    return ((halves + ((halves >> 8) & 0x00ff00ffu) + 0x00800080u) >> 8) & 0x00ff00ffu;
}

} // namespace

QRgb mixColors(QRgb ground, QRgb color, int coverage)
{
    const auto over = static_cast<quint32>(std::clamp(coverage, 0, 255));
    const quint32 under = 255 - over;
    const quint32 even = divideHalves((color & 0x00ff00ffu) * over + (ground & 0x00ff00ffu) * under);
    const quint32 odd = divideHalves(((color >> 8) & 0x00ff00ffu) * over + ((ground >> 8) & 0x00ff00ffu) * under);
    return 0xff000000u | even | (odd << 8);
}

const GridTint &GridTints::tint(QRgb ground, QRgb color)
{
    // The channels of the usual colours differ in all bits, so that any mixture of them spreads well.
    const quint32 mixture = (ground ^ (color << 1)) * 0x9e3779b1u;
    GridTint &tint = tints[mixture >> 26];
    if (tint.ground == ground && tint.color == color)
        return tint;
    tint.ground = ground;
    tint.color = color;
    for (int coverage = 0; coverage < 256; ++coverage)
        tint.mixed[static_cast<size_t>(coverage)] = mixColors(ground, color, coverage);
    return tint;
}

} // namespace ZB
