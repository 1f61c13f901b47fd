#pragma once

#include <vector>

#include "frameworkexport.h"
#include "grid/gridsource.h"

namespace ZB {

/// What is known when rows on the screen stand elsewhere than before.
struct GridAnchorCase
{
    qint64 first = 0;           ///< where the rows on the screen began
    std::vector<qint64> places; ///< where each of them is now; -1: not shown any more
    int current = -1;           ///< index of the current row among them; -1 when it is not on the screen
    bool sortedByUser = false;  ///< the user has asked for another order
};

/// By how many rows the view has to scroll so that it stays on its rows.
///
/// Rows that moved together (rows came or went elsewhere) are followed, whatever single rows among them do. Where the
/// rows scatter but keep their order (a filter was taken off), the view stays on the current row, if that is on the
/// screen, otherwise on the topmost row that is left. Where they scatter by themselves it stays where it is. When the
/// user sorts, the current row keeps its place in any case.
FRAMEWORK_API qint64 anchorShift(const GridAnchorCase &change);

} // namespace ZB
