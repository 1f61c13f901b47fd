#pragma once

#include <limits>

namespace kdservice {

/// What the trading day fixes for an instrument. A plain value, never changed once it is shared. What is not known is
/// the largest double.
struct CInstrumentDetail
{
    double upperLimitPrice = std::numeric_limits<double>::max();
    double lowerLimitPrice = std::numeric_limits<double>::max();
    double priceTick = std::numeric_limits<double>::max();
};

} // namespace kdservice
