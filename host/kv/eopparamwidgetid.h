#pragma once

namespace KV {

/// The fields of an order ticket. Which of them carry a direction, and in which words, is told by their ids alone:
/// 1 to 4 and 18 to 21 do, 1, 2, 18 and 19 as long and short, the others as opening and closing.
enum EOpParamWidgetID : int
{
    OpParamNone = 0,
    OpParamFirstLegLong = 1,
    OpParamSecondLegLong = 2,
    OpParamFirstLegOpen = 3,
    OpParamSecondLegOpen = 4,
    OpParamCode = 5,
    OpParamPrice = 6,
    OpParamQuantity = 7,
    OpParamQuotes = 8,
    OpParamAccount = 9,
    OpParamThirdLegLong = 18,
    OpParamFourthLegLong = 19,
    OpParamThirdLegOpen = 20,
    OpParamFourthLegOpen = 21
};

} // namespace KV
