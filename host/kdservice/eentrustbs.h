#pragma once

namespace kdservice {

/// Side of an order or a deal, as the exchanges code it.
enum EEntrustBS : int
{
    EntrustBuy = 48, ///< '0'
    EntrustSell = 49 ///< '1'
};

} // namespace kdservice
