#pragma once

#include "utils/cflags.h"

namespace utils {

/// How a number becomes text. Flags combine; a flag that makes no sense for a value is ignored.
enum EFormatNumberFlag : int
{
    FormatNone = 0,
    FormatSign = 0x1,            ///< a plus sign in front of values above zero
    FormatPercent = 0x2,         ///< the value times 100 and a "%" behind it
    FormatUnit = 0x4,            ///< values from 10,000 on in 万, from 100,000,000 on in 亿
    FormatTrimZeros = 0x8,       ///< no zeros at the end of the decimals, and no decimal point that nothing follows
    FormatZeroAsEmpty = 0x10,    ///< a value that is shown as zero becomes "-"
    FormatGroupDigits = 0x20000, ///< groups of three digits before the decimal point, separated by a comma
    FormatGroupSpace = 0x40000,  ///< with FormatGroupDigits: the groups are separated by a blank
    FormatNoGroups = 0x80000 ///< never in groups, whatever the other flags say: numbers that are names, as an order's
};

constexpr CFlags<EFormatNumberFlag> operator|(EFormatNumberFlag a, EFormatNumberFlag b)
{
    return CFlags<EFormatNumberFlag>(a) | CFlags<EFormatNumberFlag>(b);
}

} // namespace utils
