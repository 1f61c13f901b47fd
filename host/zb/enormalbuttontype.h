#pragma once

namespace ZB {

/// What a small normal button is for, which decides how it is coloured.
enum ENormalButtonType : int
{
    NormalButtonPlain = 0,  ///< text on the window's ground
    NormalButtonRaised = 1, ///< stands out from the ground
    NormalButtonAccent = 2, ///< the one that is meant to be used
    NormalButtonRise = 3,   ///< buys
    NormalButtonFall = 4    ///< sells
};

} // namespace ZB
