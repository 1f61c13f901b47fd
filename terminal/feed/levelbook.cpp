#include "feed/levelbook.h"

#include "feed/instrumentrules.h"

#include <algorithm>
#include <vector>

namespace feed {

namespace {

template <typename Levels>
void changeLevel(Levels &levels, qint64 price, qint64 quantity, int orders)
{
    const auto level = levels.try_emplace(price).first;
    level->second.quantity += quantity;
    level->second.orders += orders;
    if (level->second.quantity <= 0)
        levels.erase(level);
}

template <typename Levels>
void copyBest(const Levels &levels, std::array<QuoteLevel, QuoteSnapshot::depth> &shown)
{
    auto level = levels.begin();
    for (QuoteLevel &to : shown) {
        if (level == levels.end()) {
            to = {};
            continue;
        }
        to = {priceOfUnits(level->first), level->second.quantity, level->second.orders};
        ++level;
    }
}

} // namespace

void LevelBook::change(Side side, qint64 price, qint64 quantity, int orders)
{
    if (side == Side::Buy)
        changeLevel(bids, price, quantity, orders);
    else
        changeLevel(asks, price, quantity, orders);
}

void LevelBook::clear()
{
    bids.clear();
    asks.clear();
}

std::optional<qint64> LevelBook::bestBid() const
{
    return bids.empty() ? std::nullopt : std::make_optional(bids.begin()->first);
}

std::optional<qint64> LevelBook::bestAsk() const
{
    return asks.empty() ? std::nullopt : std::make_optional(asks.begin()->first);
}

qint64 LevelBook::quantityAt(Side side, qint64 price) const
{
    if (side == Side::Buy) {
        const auto level = bids.find(price);
        return level == bids.end() ? 0 : level->second.quantity;
    }
    const auto level = asks.find(price);
    return level == asks.end() ? 0 : level->second.quantity;
}

bool LevelBook::isCrossed() const
{
    return !bids.empty() && !asks.empty() && bids.begin()->first >= asks.begin()->first;
}

LevelBook::AuctionPrice LevelBook::auctionPrice() const
{
    struct Candidate
    {
        qint64 price;
        qint64 demand;
        qint64 supply;
    };
    const qint64 lowest = asks.begin()->first;
    const qint64 highest = bids.begin()->first;
    std::vector<Candidate> candidates;
    for (auto bid = bids.begin(); bid != bids.end() && bid->first >= lowest; ++bid)
        candidates.push_back({bid->first, 0, 0});
    for (auto ask = asks.begin(); ask != asks.end() && ask->first <= highest; ++ask)
        candidates.push_back({ask->first, 0, 0});
    std::sort(candidates.begin(), candidates.end(),
              [](const Candidate &a, const Candidate &b) { return a.price < b.price; });

    qint64 sum = 0;
    auto ask = asks.begin();
    for (Candidate &candidate : candidates) {
        for (; ask != asks.end() && ask->first <= candidate.price; ++ask)
            sum += ask->second.quantity;
        candidate.supply = sum;
    }
    sum = 0;
    auto bid = bids.begin();
    for (auto candidate = candidates.rbegin(); candidate != candidates.rend(); ++candidate) {
        for (; bid != bids.end() && bid->first >= candidate->price; ++bid)
            sum += bid->second.quantity;
        candidate->demand = sum;
    }

    const auto merit = [](const Candidate &c) {
        return std::make_pair(std::min(c.demand, c.supply), -std::abs(c.demand - c.supply));
    };
    const auto isWorse = [&](const Candidate &a, const Candidate &b) { return merit(a) < merit(b); };
    const auto best = merit(*std::max_element(candidates.begin(), candidates.end(), isWorse));
    std::vector<qint64> prices;
    for (const Candidate &candidate : candidates)
        if (merit(candidate) == best)
            prices.push_back(candidate.price);
    return {prices[prices.size() / 2], best.first};
}

void LevelBook::fillLevels(QuoteSnapshot &quote) const
{
    if (isCrossed()) {
        const AuctionPrice auction = auctionPrice();
        quote.bids.fill({});
        quote.asks.fill({});
        quote.bids[0] = quote.asks[0] = {priceOfUnits(auction.price), auction.quantity, absent<int>};
        return;
    }
    copyBest(bids, quote.bids);
    copyBest(asks, quote.asks);
}

} // namespace feed
