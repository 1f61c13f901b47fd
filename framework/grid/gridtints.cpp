#include "grid/gridtints.h"

namespace ZB {

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
