#pragma once

namespace ZB {

/// Where a widget stands across the direction of its list: top, middle, bottom or all of the height in a horizontal
/// list; left, middle, right or all of the width in a vertical one.
enum EWidgetAnchor : int
{
    AnchorStart = 0,
    AnchorCentre = 1,
    AnchorEnd = 2,
    AnchorFill = 3
};

} // namespace ZB
