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
    qint64 openQuantity(qint64 id) const
    {
        const auto found = std::find_if(orders.begin(), orders.end(), [id](const Order &o) { return o.id == id; });
        return found == orders.end() ? 0 : found->quantity;
    }
    qint64 best(Side side) const
    {
        qint64 result = 0;
        for (const Order &order : orders)
            if (order.side == side && (result == 0 || (side == Side::Buy) == (order.price > result)))
                result = order.price;
        return result;
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
            for (const qint64 asked : {id, 1 + qint64(random() % quint64(id))})
                ASSERT_EQ(engine.openQuantity(asked), slow.openQuantity(asked)) << "of " << asked;
            ASSERT_EQ(engine.book().bestBid().value_or(0), slow.best(Side::Buy));
            ASSERT_EQ(engine.book().bestAsk().value_or(0), slow.best(Side::Sell));
            ASSERT_FALSE(engine.book().isCrossed());
            for (const Side checked : {Side::Buy, Side::Sell})
                ASSERT_EQ(engine.book().quantityAt(checked, price), slow.quantityAt(checked, price));
        }
    }
}
