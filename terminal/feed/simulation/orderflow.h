#pragma once

#include "feed/simulation/matchingengine.h"
#include "feed/simulation/randomnumbers.h"

#include <vector>

namespace feed {

/// What the simulated traders of one stock do next: they place orders around a value that wanders, withdraw some, now
/// and then take what is offered, and at times all come at once. Prices stay on the tick and inside the day's limits.
class OrderFlow
{
public:
    struct Rules
    {
        qint64 tick = 0; ///< all prices in price units
        qint64 previousClose = 0;
        qint64 lowerLimit = 0;
        qint64 upperLimit = 0;
        int lot = 100;
        int typicalLots = 5;
        int meanPause = 300; ///< milliseconds between two actions when nothing special happens
    };

    struct Action
    {
        bool isCancel = false;
        qint64 id = 0; ///< of the order to withdraw
        Side side = Side::Buy;
        qint64 price = 0;
        qint64 quantity = 0;
    };

    OrderFlow(const Rules &rules, quint64 seed);

    /// An order for the book before trading starts: it crosses nothing.
    Action openingOrder();
    Action next(const MatchingEngine &engine);
    /// The order that the last action placed has this number.
    void remember(qint64 id) { placed.push_back(id); }
    /// Milliseconds until the next action.
    int pause();

private:
    void wander();
    qint64 orderQuantity(Side side);
    qint64 priceAt(Side side, int ticksFromValue) const;
    int cancelShare(size_t restingOrders) const;
    /// A resting order by chance, 0 when there is none. Forgets those that rest no more on its way.
    qint64 pickResting(const MatchingEngine &engine);

    const Rules rules;
    RandomNumbers random;
    qint64 value;           ///< what the traders think the stock is worth
    int burstActions = 0;   ///< left of a burst
    int burstDirection = 0; ///< ticks per thousand that it pulls the value
    std::vector<qint64> placed;
};

} // namespace feed
