#pragma once

#include "trading/tradingrules.h"

namespace terminal {

/// What the paper broker charges and binds, as its user agrees on it. Shares of amounts are in ten-thousandths
/// (万分之), as they are quoted.
struct FeeSettings
{
    double commission = 2.5;
    double leastCommission = 5; ///< yuan an order
    double stampDuty = 5;       ///< of sales
    double transferFee = 0.1;
    double futuresFactor = 1; ///< times the usual fees of each future
    double extraMargin = 0;   ///< percentage points on top of each future's margin

    /// What no broker asks for.
    static constexpr double largestShare = 100;
    static constexpr double largestLeast = 1000;
    static constexpr double largestFactor = 100;
    static constexpr double largestExtra = 80;

    trading::TradingRules rules() const;
};

} // namespace terminal
