#include "feed/simulation/matchingengine.h"

#include <algorithm>

namespace feed {

template <typename Queues>
qint64 MatchingEngine::match(Queues &others, qint64 id, Side otherSide, qint64 price, qint64 quantity,
                             std::vector<Fill> &fills)
{
    // The map's own order says which price is better for the one who takes: it may not stand behind `price`.
    const auto isAcceptable = [&](qint64 offered) { return !others.key_comp()(price, offered); };
    while (quantity > 0 && !others.empty() && isAcceptable(others.begin()->first)) {
        const auto level = others.begin();
        const qint64 makerId = level->second.front();
        Resting &maker = resting.at(makerId);
        const qint64 traded = std::min(quantity, maker.quantity);
        fills.push_back({id, makerId, level->first, traded});
        quantity -= traded;
        maker.quantity -= traded;
        levels.change(otherSide, level->first, -traded, maker.quantity == 0 ? -1 : 0);
        if (maker.quantity > 0)
            continue;
        level->second.pop_front();
        resting.erase(makerId);
        if (level->second.empty())
            others.erase(level);
    }
    return quantity;
}

void MatchingEngine::rest(qint64 id, Side side, qint64 price, qint64 quantity)
{
    Queue &queue = side == Side::Buy ? bids[price] : asks[price];
    resting.emplace(id, Resting{side, price, quantity, queue.insert(queue.end(), id)});
    levels.change(side, price, quantity, 1);
}

MatchingEngine::Answer MatchingEngine::submit(qint64 id, Side side, qint64 price, qint64 quantity,
                                              std::vector<Fill> &fills)
{
    if (resting.count(id) > 0)
        return Answer::KnownId;
    if (price <= 0)
        return Answer::BadPrice;
    if (quantity <= 0)
        return Answer::BadQuantity;
    const qint64 left = side == Side::Buy ? match(asks, id, Side::Sell, price, quantity, fills)
                                          : match(bids, id, Side::Buy, price, quantity, fills);
    if (left > 0)
        rest(id, side, price, left);
    return Answer::Taken;
}

qint64 MatchingEngine::cancel(qint64 id)
{
    const auto found = resting.find(id);
    if (found == resting.end())
        return 0;
    const Resting order = found->second;
    const auto remove = [&](auto &queues) {
        const auto level = queues.find(order.price);
        level->second.erase(order.place);
        if (level->second.empty())
            queues.erase(level);
    };
    if (order.side == Side::Buy)
        remove(bids);
    else
        remove(asks);
    resting.erase(found);
    levels.change(order.side, order.price, -order.quantity, -1);
    return order.quantity;
}

qint64 MatchingEngine::openQuantity(qint64 id) const
{
    const auto found = resting.find(id);
    return found == resting.end() ? 0 : found->second.quantity;
}

} // namespace feed
