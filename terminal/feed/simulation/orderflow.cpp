#include "feed/simulation/orderflow.h"

#include <algorithm>

namespace feed {

namespace {

// Shares of a thousand actions.
constexpr int takingShare = 170;
constexpr int burstStartShare = 4;
constexpr int wanderShare = 120;

} // namespace

OrderFlow::OrderFlow(const Rules &flowRules, quint64 seed) : rules(flowRules), random(seed), value(rules.previousClose)
{
    value = priceAt(Side::Buy, random.below(41) - 20);
}

/// A price on the worse side of the value for positive distances; inside the limits.
qint64 OrderFlow::priceAt(Side side, int ticksFromValue) const
{
    const qint64 distance = ticksFromValue * rules.tick;
    return std::clamp(side == Side::Buy ? value - distance : value + distance, rules.lowerLimit, rules.upperLimit);
}

void OrderFlow::wander()
{
    if (burstActions > 0)
        --burstActions;
    else if (random.chance(burstStartShare)) {
        burstActions = 30 + random.below(170);
        burstDirection = random.below(801) - 400;
    }
    // A tick is much for a cheap stock, which therefore moves less often.
    const int pace = int(std::clamp<qint64>(rules.previousClose / rules.tick / 3, 100, 1000));
    const int pull = burstActions > 0 ? burstDirection * pace / 1000 : 0;
    if (random.chance(std::abs(pull)))
        value += pull > 0 ? rules.tick : -rules.tick;
    if (!random.chance(wanderShare * pace / 1000))
        return;
    // The farther from yesterday's close, the more of the steps lead back.
    const qint64 away =
        (value - rules.previousClose) * 250 / std::max<qint64>(1, rules.upperLimit - rules.previousClose);
    value += random.chance(int(std::clamp<qint64>(500 - away, 100, 900))) ? rules.tick : -rules.tick;
    value = std::clamp(value, rules.lowerLimit, rules.upperLimit);
}

qint64 OrderFlow::orderQuantity(Side side)
{
    int lots = 1 + random.below(2 * rules.typicalLots - 1);
    for (int i = random.runLength(150, 3); i > 0; --i)
        lots *= 4;
    // What is left of a holding may be sold in one order that is no whole lot.
    const int oddShares = side == Side::Sell && rules.lot > 1 && random.chance(30) ? random.below(rules.lot) : 0;
    return qint64(lots) * rules.lot + oddShares;
}

int OrderFlow::cancelShare(size_t restingOrders) const
{
    return int(std::clamp<size_t>(restingOrders, 50, 550));
}

qint64 OrderFlow::pickResting(const MatchingEngine &engine)
{
    while (!placed.empty()) {
        qint64 &picked = placed[size_t(random.below(int(placed.size())))];
        const qint64 id = picked;
        picked = placed.back();
        placed.pop_back();
        if (engine.openQuantity(id) > 0)
            return id;
    }
    return 0;
}

OrderFlow::Action OrderFlow::openingOrder()
{
    Action action;
    action.side = random.chance(500) ? Side::Buy : Side::Sell;
    action.price = priceAt(action.side, 1 + random.below(25));
    action.quantity = orderQuantity(action.side);
    return action;
}

OrderFlow::Action OrderFlow::next(const MatchingEngine &engine)
{
    wander();
    Action action;
    if (random.chance(cancelShare(engine.restingOrders()))) {
        action.id = pickResting(engine);
        action.isCancel = action.id != 0;
        if (action.isCancel)
            return action;
    }
    const int buyerShare = std::clamp(500 + (burstActions > 0 ? burstDirection / 2 : 0), 200, 800);
    action.side = random.chance(buyerShare) ? Side::Buy : Side::Sell;
    const bool takes = random.chance(takingShare);
    action.price = priceAt(action.side, takes ? -1 - random.runLength(400, 4) : 1 + random.runLength(750, 60));
    action.quantity = orderQuantity(action.side);
    return action;
}

int OrderFlow::pause()
{
    const int mean = burstActions > 0 ? std::max(1, rules.meanPause / 12) : rules.meanPause;
    return random.below(2 * mean + 1);
}

} // namespace feed
