#include <algorithm>
#include <gtest/gtest.h>
#include <list>
#include <map>
#include <random>
#include <set>

#include "feed/instrumentrules.h"
#include "trading/paperqueue.h"
#include "trading_support.h"

using namespace tradingtest;
using feed::Side;
using trading::PaperQueue;

namespace {

constexpr double tick = 0.01;

/// An exchange in which every order is known: limit orders, withdrawals and deals by price and time. Beside it stands
/// the place that a single paper order would really have in its queues, and what it would have got there at most.
class Exchange
{
public:
    struct Order
    {
        qint64 id;
        qint64 quantity;
    };

    explicit Exchange(unsigned seed) : numbers(seed) {}

    int below(int bound) { return int(numbers() % unsigned(bound)); }

    /// A random event; its deals, in order.
    std::vector<feed::Deal> step()
    {
        const Side side = below(2) == 0 ? Side::Buy : Side::Sell;
        if (below(4) == 0) {
            withdraw(side);
            return {};
        }
        middle += below(40) == 0 ? below(5) - 2 : 0;
        const int sign = side == Side::Buy ? 1 : -1;
        return enter(side, middle + sign * (below(9) - 5), 100 * (1 + below(8)));
    }

    feed::QuoteSnapshot shown(int depth) const
    {
        Levels bids;
        Levels asks;
        for (auto it = sides[0].rbegin(); it != sides[0].rend() && int(bids.size()) < depth; ++it)
            bids.emplace_back(double(it->first) * tick, sum(it->second));
        for (auto it = sides[1].begin(); it != sides[1].end() && int(asks.size()) < depth; ++it)
            asks.emplace_back(double(it->first) * tick, sum(it->second));
        return quote(0, 0, bids, asks);
    }

    /// Follows a paper order from here on, in place of any before.
    void follow(Side side, qint64 price)
    {
        ownSide = side;
        ownPrice = price;
        ahead.clear();
        most = 0;
        for (const auto &[level, orders] : sides[side == Side::Buy ? 1 : 0])
            if (isAtLeast(price, level))
                most += sum(orders);
        const auto &own = sides[side == Side::Buy ? 0 : 1];
        if (const auto found = own.find(price); found != own.end())
            for (const Order &order : found->second)
                ahead.insert(order.id);
    }

    /// What the followed order can have got by now.
    qint64 most = 0;

private:
    using Orders = std::list<Order>;

    static qint64 sum(const Orders &orders)
    {
        qint64 total = 0;
        for (const Order &order : orders)
            total += order.quantity;
        return total;
    }

    /// An order of the followed side at price a trades with one of the other side at price b.
    bool isAtLeast(qint64 a, qint64 b) const { return ownSide == Side::Buy ? a >= b : a <= b; }

    void withdraw(Side side)
    {
        auto &levels = sides[side == Side::Buy ? 0 : 1];
        if (levels.empty())
            return;
        auto level = std::next(levels.begin(), below(int(levels.size())));
        auto order = std::next(level->second.begin(), below(int(level->second.size())));
        ahead.erase(order->id);
        level->second.erase(order);
        if (level->second.empty())
            levels.erase(level);
    }

    std::vector<feed::Deal> enter(Side side, qint64 price, qint64 quantity)
    {
        std::vector<feed::Deal> deals;
        auto &other = sides[side == Side::Buy ? 1 : 0];
        const auto crosses = [&](qint64 level) { return side == Side::Buy ? price >= level : price <= level; };
        while (quantity > 0 && !other.empty()) {
            const auto level = side == Side::Buy ? other.begin() : std::prev(other.end());
            if (!crosses(level->first))
                break;
            Order &met = level->second.front();
            const qint64 traded = std::min(quantity, met.quantity);
            deals.push_back(deal(0, 0, double(level->first) * tick, traded,
                                 side == Side::Buy ? feed::DealKind::BuyerInitiated : feed::DealKind::SellerInitiated));
            if (side != ownSide && isAtLeast(ownPrice, level->first) &&
                (level->first != ownPrice || ahead.count(met.id) == 0))
                most += traded; // the paper order stood before the one that was met
            quantity -= traded;
            met.quantity -= traded;
            if (met.quantity == 0) {
                ahead.erase(met.id);
                level->second.pop_front();
            }
            if (level->second.empty())
                other.erase(level);
        }
        if (quantity == 0)
            return deals;
        sides[side == Side::Buy ? 0 : 1][price].push_back({++lastId, quantity});
        if (side != ownSide && isAtLeast(ownPrice, price))
            most += quantity; // would have met the paper order before it came to rest
        return deals;
    }

    std::mt19937 numbers;
    std::map<qint64, Orders> sides[2]; ///< bids and asks by price in ticks
    qint64 middle = 1000;
    qint64 lastId = 0;
    Side ownSide = Side::Buy;
    qint64 ownPrice = 0;
    std::set<qint64> ahead; ///< orders at the paper order's price that came before it
};

struct Sums
{
    qint64 fills = 0;
    qint64 rested = 0;
};

/// One paper order after the other, in a feed that shows so many levels after every event.
Sums trade(unsigned seed, int depth)
{
    SCOPED_TRACE("seed " + std::to_string(seed) + ", depth " + std::to_string(depth));
    Exchange exchange(seed);
    PaperQueue queue;
    std::vector<PaperQueue::Fill> fills;
    Sums sums;
    qint64 id = 0;
    qint64 wanted = 0;
    qint64 filled = 0;
    qint64 limit = 0;
    Side side = Side::Buy;
    for (int event = 0; event < 4000 && !testing::Test::HasFailure(); ++event) {
        fills.clear();
        for (const feed::Deal &deal : exchange.step())
            queue.takeDeal(deal, fills);
        queue.takeQuote(exchange.shown(depth), fills);
        if (event % 25 == 24) {
            queue.cancel(id);
            EXPECT_TRUE(queue.isEmpty());
            side = exchange.below(2) == 0 ? Side::Buy : Side::Sell;
            limit = 1000 + exchange.below(13) - 6;
            wanted = 100 * (1 + exchange.below(12));
            filled = 0;
            exchange.follow(side, limit);
            const size_t before = fills.size();
            queue.submit(++id, side, feed::priceUnits(double(limit) * tick), wanted, fills);
            sums.rested += fills.size() == before;
        }
        for (const PaperQueue::Fill &fill : fills) {
            if (fill.id != id)
                continue;
            const qint64 ticks = qRound64(feed::priceOfUnits(fill.price) / tick);
            EXPECT_TRUE(side == Side::Buy ? ticks <= limit : ticks >= limit) << ticks << " of " << limit;
            filled += fill.quantity;
            ++sums.fills;
        }
        EXPECT_LE(filled, wanted);
        EXPECT_LE(filled, exchange.most) << "event " << event << ", order " << id;
    }
    return sums;
}

} // namespace

TEST(TradingQueueRandom, APaperOrderIsNeverFilledBeforeARealOneInItsPlace)
{
    Sums all;
    for (unsigned seed = 1; seed <= 12; ++seed) {
        for (const int depth : {1, 5, 10}) {
            const Sums sums = trade(seed, depth);
            all.fills += sums.fills;
            all.rested += sums.rested;
        }
    }
    EXPECT_GT(all.fills, 3000);
    EXPECT_GT(all.rested, 1000);
}
