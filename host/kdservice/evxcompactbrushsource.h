#pragma once

namespace kdservice {

/// Where the shares or the money of a contract come from. Controls treat values that they do not know as opaque.
enum EVXCompactBrushSource : int
{
    CompactSourceOrdinary = 0, ///< the pool that every customer draws from
    CompactSourceSpecial = 1,  ///< set apart for one customer
    CompactSourceNone = 32
};

} // namespace kdservice
