#pragma once

namespace ZB {

/// How a column filter compares a cell's text with its set of strings.
enum EFilterType : int
{
    FilterExact = 0,    ///< the set holds exactly the text
    FilterContains = 1, ///< the text contains at least one non-empty string of the set, ignoring case
    FilterExcept = 2    ///< the set does not hold the text
};

} // namespace ZB
