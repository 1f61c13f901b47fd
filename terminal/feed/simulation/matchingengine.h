#pragma once

#include "feed/levelbook.h"
#include "feed/marketdata.h"

#include <functional>
#include <list>
#include <map>
#include <unordered_map>
#include <vector>

namespace feed {

/// Matches limit orders of one instrument by price, then time. An order trades at the prices of those that rest, and
/// rests with what is left. Prices are whole price units. Knows neither ticks, limits nor accounts: who sends orders
/// checks them.
class MatchingEngine
{
public:
    enum class Answer
    {
        Taken,
        KnownId,
        BadPrice,
        BadQuantity
    };

    struct Fill
    {
        qint64 takerId = 0; ///< the order that arrived
        qint64 makerId = 0; ///< the order that rested
        qint64 price = 0;
        qint64 quantity = 0;
    };

    /// Enters an order; its fills are appended to `fills`. An order that is refused changes nothing. Numbers may be
    /// used again once their order rests no more.
    Answer submit(qint64 id, Side side, qint64 price, qint64 quantity, std::vector<Fill> &fills);
    /// Withdraws an order. Returns the quantity that was open, 0 when no such order rests.
    qint64 cancel(qint64 id);

    qint64 openQuantity(qint64 id) const;
    size_t restingOrders() const { return resting.size(); }
    /// What rests, by price; never crossed.
    const LevelBook &book() const { return levels; }

private:
    using Queue = std::list<qint64>; ///< ids in order of arrival
    using Bids = std::map<qint64, Queue, std::greater<>>;
    using Asks = std::map<qint64, Queue>;

    struct Resting
    {
        Side side;
        qint64 price;
        qint64 quantity;
        Queue::iterator place;
    };

    /// Trades against the other side as far as the price allows. Returns what is left.
    template <typename Queues>
    qint64 match(Queues &others, qint64 id, Side otherSide, qint64 price, qint64 quantity, std::vector<Fill> &fills);
    void rest(qint64 id, Side side, qint64 price, qint64 quantity);

    Bids bids;
    Asks asks;
    std::unordered_map<qint64, Resting> resting;
    LevelBook levels;
};

} // namespace feed
