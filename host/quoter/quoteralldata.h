#pragma once

#include <QtCore/qglobal.h>

#include <array>
#include <limits>

namespace quoter {

/// One quote of one instrument, as the host's quote service hands it on. A plain value, never changed once it is
/// shared. A price that is not known is the largest double, a volume the largest 64-bit integer; best levels first.
struct QuoterAllData
{
    static constexpr int depth = 5;

    double latestPrice = std::numeric_limits<double>::max();
    double previousClose = std::numeric_limits<double>::max();
    std::array<double, depth> askPrices = unknown(std::numeric_limits<double>::max());
    std::array<double, depth> bidPrices = unknown(std::numeric_limits<double>::max());
    std::array<qint64, depth> askVolumes = unknown(std::numeric_limits<qint64>::max());
    std::array<qint64, depth> bidVolumes = unknown(std::numeric_limits<qint64>::max());

private:
    template <typename T>
    static constexpr std::array<T, depth> unknown(T value)
    {
        return {value, value, value, value, value};
    }
};

} // namespace quoter
