#pragma once

namespace KV {

/// The amount that an order is sized by.
enum ERateReference : int
{
    RateOfAvailable = 0, ///< funds that can be spent now
    RateOfTotal = 1      ///< everything in the account: assets, or equity
};

} // namespace KV
