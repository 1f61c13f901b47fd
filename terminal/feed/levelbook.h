#pragma once

#include "feed/marketdata.h"

#include <functional>
#include <map>
#include <optional>

namespace feed {

/// Open quantity by price on both sides. Prices are whole price units. Changes cost O(log levels).
class LevelBook
{
public:
    /// Adds to a level, or takes from it with negative numbers. A level without quantity ceases.
    void change(Side side, qint64 price, qint64 quantity, int orders);
    void clear();

    std::optional<qint64> bestBid() const;
    std::optional<qint64> bestAsk() const;
    qint64 quantityAt(Side side, qint64 price) const;
    /// True when a buyer would pay what a seller asks, as happens during auctions.
    bool isCrossed() const;

    /// The best levels. Of a crossed book only what an auction shows: on both sides the price at which the most would
    /// trade, and how much that is.
    void fillLevels(QuoteSnapshot &quote) const;

private:
    struct Level
    {
        qint64 quantity = 0;
        int orders = 0;
    };
    struct AuctionPrice
    {
        qint64 price = 0;
        qint64 quantity = 0;
    };

    /// The price of the largest volume, then of the smallest rest; of several such the middle one.
    AuctionPrice auctionPrice() const;

    std::map<qint64, Level, std::greater<>> bids;
    std::map<qint64, Level> asks;
};

} // namespace feed
