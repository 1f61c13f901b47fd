#pragma once

namespace kdservice {

/// The kind of trading account; it selects which fields exist and what they are called. The library treats values that
/// it does not know as opaque.
enum EVxTraderType : int
{
    TraderNone = 0,
    TraderStock = 1,
    TraderFuture = 2,
    TraderOption = 8,
    TraderCredit = 128,
    TraderStockOption = 16384
};

} // namespace kdservice
