#include "feed/simulation/matchingengine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>

using namespace feed;

namespace {

using Fill = MatchingEngine::Fill;

std::string fillsText(const std::vector<Fill> &fills)
{
    std::ostringstream out;
    for (const Fill &fill : fills)
        out << fill.takerId << " takes " << fill.quantity << " of " << fill.makerId << " at " << fill.price << '\n';
    return out.str();
}

/// The same rules in the plainest form: all orders in one list in order of arrival, searched anew for every fill.
class SlowMatcher
{
public:
    void submit(qint64 id, Side side, qint64 price, qint64 quantity, std::vector<Fill> &fills)
    {
        for (;;) {
            auto best = orders.end();
            for (auto order = orders.begin(); order != orders.end(); ++order) {
                const bool crosses = side == Side::Buy ? order->price <= price : order->price >= price;
                if (order->side == side || !crosses)
                    continue;
                const bool isBetter = best == orders.end() ||
                                      (side == Side::Buy ? order->price < best->price : order->price > best->price);
                if (isBetter)
                    best = order;
            }
            if (quantity == 0 || best == orders.end())
                break;
            const qint64 traded = std::min(quantity, best->quantity);
            fills.push_back({id, best->id, best->price, traded});
            quantity -= traded;
            best->quantity -= traded;
            if (best->quantity == 0)
                orders.erase(best);
        }
        if (quantity > 0)
            orders.push_back({id, side, price, quantity});
    }
    qint64 cancel(qint64 id)
    {
        const auto found = std::find_if(orders.begin(), orders.end(), [id](const Order &o) { return o.id == id; });
        if (found == orders.end())
            return 0;
        const qint64 quantity = found->quantity;
        orders.erase(found);
        return quantity;
    }
    qint64 quantityAt(Side side, qint64 price) const
    {
        qint64 sum = 0;
        for (const Order &order : orders)
            if (order.side == side && order.price == price)
                sum += order.quantity;
        return sum;
    }
    size_t size() const { return orders.size(); }

private:
    struct Order
    {
        qint64 id;
        Side side;
        qint64 price;
        qint64 quantity;
    };
    std::vector<Order> orders;
};

} // namespace

TEST(MatchingEngine, TradesAtTheBestPriceFirstAndWithTheEarliestOrderThere)
{
    MatchingEngine engine;
    std::vector<Fill> fills;
    engine.submit(1, Side::Sell, 102, 300, fills);
    engine.submit(2, Side::Sell, 101, 200, fills);
    engine.submit(3, Side::Sell, 101, 200, fills);
    engine.submit(4, Side::Buy, 99, 100, fills);
    EXPECT_EQ(fillsText(fills), "");

    engine.submit(5, Side::Buy, 101, 250, fills);
    EXPECT_EQ(fillsText(fills), "5 takes 200 of 2 at 101\n5 takes 50 of 3 at 101\n");
    EXPECT_EQ(engine.openQuantity(3), 150);
    EXPECT_EQ(engine.openQuantity(5), 0);

    fills.clear();
    engine.submit(6, Side::Buy, 103, 1000, fills);
    EXPECT_EQ(fillsText(fills), "6 takes 150 of 3 at 101\n6 takes 300 of 1 at 102\n");
    EXPECT_EQ(engine.book().bestBid(), 103) << "what is left rests at its own price";
    EXPECT_EQ(engine.openQuantity(6), 550);
    EXPECT_EQ(engine.book().bestAsk(), std::nullopt);

    fills.clear();
    engine.submit(7, Side::Sell, 99, 600, fills);
    EXPECT_EQ(fillsText(fills), "7 takes 550 of 6 at 103\n7 takes 50 of 4 at 99\n");
}

TEST(MatchingEngine, AnOrderThatWasCutKeepsItsPlaceAndACancelTakesOnlyTheRest)
{
    MatchingEngine engine;
    std::vector<Fill> fills;
    engine.submit(1, Side::Buy, 100, 500, fills);
    engine.submit(2, Side::Buy, 100, 500, fills);
    engine.submit(3, Side::Sell, 100, 200, fills);
    engine.submit(4, Side::Sell, 100, 200, fills);
    EXPECT_EQ(fillsText(fills), "3 takes 200 of 1 at 100\n4 takes 200 of 1 at 100\n");
    EXPECT_EQ(engine.cancel(1), 100);
    EXPECT_EQ(engine.cancel(1), 0);
    EXPECT_EQ(engine.cancel(77), 0);
    EXPECT_EQ(engine.book().quantityAt(Side::Buy, 100), 500);
    EXPECT_EQ(engine.restingOrders(), 1u);
}

TEST(MatchingEngine, RefusesWhatCannotBeAnOrderAndChangesNothing)
{
    MatchingEngine engine;
    std::vector<Fill> fills;
    EXPECT_EQ(engine.submit(1, Side::Buy, 100, 500, fills), MatchingEngine::Answer::Taken);
    EXPECT_EQ(engine.submit(1, Side::Sell, 100, 500, fills), MatchingEngine::Answer::KnownId);
    EXPECT_EQ(engine.submit(2, Side::Sell, 0, 500, fills), MatchingEngine::Answer::BadPrice);
    EXPECT_EQ(engine.submit(2, Side::Sell, -5, 500, fills), MatchingEngine::Answer::BadPrice);
    EXPECT_EQ(engine.submit(2, Side::Sell, 100, 0, fills), MatchingEngine::Answer::BadQuantity);
    EXPECT_EQ(engine.submit(2, Side::Sell, 100, -1, fills), MatchingEngine::Answer::BadQuantity);
    EXPECT_TRUE(fills.empty());
    EXPECT_EQ(engine.openQuantity(1), 500);
}

TEST(MatchingEngine, AgreesWithThePlainestMatcherOverRandomOrders)
{
    for (unsigned seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        MatchingEngine engine;
        SlowMatcher slow;
        const qint64 spread = 1 + seed % 20;
        for (qint64 id = 1; id <= 600; ++id) {
            if (random() % 4 == 0) {
                const qint64 cancelled = 1 + qint64(random() % quint64(id));
                ASSERT_EQ(engine.cancel(cancelled), slow.cancel(cancelled)) << "cancel of " << cancelled;
            }
            const Side side = random() % 2 ? Side::Buy : Side::Sell;
            const qint64 price = 100 + qint64(random() % quint64(spread)) - (side == Side::Buy ? spread / 2 : 0);
            const qint64 quantity = 1 + qint64(random() % 1000);
            std::vector<Fill> fills;
            std::vector<Fill> slowFills;
            engine.submit(id, side, price, quantity, fills);
            slow.submit(id, side, price, quantity, slowFills);
            ASSERT_EQ(fillsText(fills), fillsText(slowFills)) << "order " << id;
            ASSERT_EQ(engine.restingOrders(), slow.size());
            ASSERT_FALSE(engine.book().isCrossed());
            for (const Side checked : {Side::Buy, Side::Sell})
                ASSERT_EQ(engine.book().quantityAt(checked, price), slow.quantityAt(checked, price));
        }
    }
}
