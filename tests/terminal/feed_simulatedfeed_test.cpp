#include "feed/instrumentrules.h"
#include "feed/simulation/simulatedfeed.h"
#include "feedplayer.h"

#include <QtCore/QDate>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>

using namespace feed;

namespace {

constexpr qint64 manyEvents = 60'000;

PlayedFeed playSimulation(quint64 seed, qint64 events = manyEvents)
{
    SimulatedFeed simulation(seed);
    return playFeed(simulation, events);
}

/// All changes of orders and all deals, a line each.
std::string streamText(const PlayedFeed &played)
{
    std::ostringstream out;
    out.precision(12);
    for (const OrderState &o : played.updates)
        out << "order " << o.entry << ' ' << o.instrument << ' ' << o.orderNo << ' ' << char(o.side) << char(o.status)
            << ' ' << o.price << ' ' << o.quantity << ' ' << o.filled << ' ' << o.cancelled << ' ' << o.lastTime
            << '\n';
    for (const Deal &d : played.deals)
        out << "deal " << d.entry << ' ' << d.instrument << ' ' << d.sequence << ' ' << int(d.kind) << ' ' << d.price
            << ' ' << d.quantity << ' ' << d.buyOrderNo << ' ' << d.sellOrderNo << ' ' << d.time << '\n';
    return out.str();
}

/// The first lines that differ, empty for equal texts. A diff of streams of this length would take forever.
std::string firstDifference(const std::string &a, const std::string &b)
{
    std::istringstream left(a);
    std::istringstream right(b);
    std::string leftLine;
    std::string rightLine;
    for (int line = 1;; ++line) {
        const bool hasLeft = bool(std::getline(left, leftLine));
        const bool hasRight = bool(std::getline(right, rightLine));
        if (!hasLeft && !hasRight)
            return {};
        if (hasLeft != hasRight || leftLine != rightLine)
            return "line " + std::to_string(line) + ": " + leftLine + " / " + rightLine;
    }
}

} // namespace

TEST(SimulatedFeed, TheSameSeedGivesTheSameStreamAndAnotherSeedAnother)
{
    const std::string stream = streamText(playSimulation(42));
    EXPECT_EQ(firstDifference(stream, streamText(playSimulation(42))), "");
    EXPECT_NE(firstDifference(stream, streamText(playSimulation(43))), "");
}

TEST(SimulatedFeed, WhatHappensDoesNotDependOnHowItIsBatched)
{
    SimulatedFeed source(7);
    BatchWriter writer;
    FeedBatch batch;
    source.load(writer, [] { return true; });
    std::vector<OrderState> orders;
    for (qint64 i = 0; i < manyEvents; ++i) {
        source.step(writer);
        if (i % 997 != 0 && i + 1 != manyEvents)
            continue;
        source.completeBatch(writer);
        writer.handOver(batch);
        for (const OrderState &order : batch.orders) {
            orders.resize(std::max(orders.size(), size_t(order.entry) + 1));
            orders[size_t(order.entry)] = order;
        }
    }
    PlayedFeed batched;
    batched.updates = orders;
    PlayedFeed single;
    single.updates = playSimulation(7).orders;
    EXPECT_EQ(firstDifference(streamText(batched), streamText(single)), "");
}

TEST(SimulatedFeed, KeepsTheRulesOfTheMarket)
{
    for (const quint64 seed : {1, 2, 3}) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const PlayedFeed played = playSimulation(seed);
        std::map<std::pair<int, qint64>, const OrderState *> byNumber;
        for (const OrderState &order : played.orders) {
            const Instrument &instrument = played.instruments[size_t(order.instrument)];
            ASSERT_GE(order.price, instrument.lowerLimit);
            ASSERT_LE(order.price, instrument.upperLimit);
            ASSERT_EQ(priceUnits(order.price) % priceUnits(instrument.tick), 0);
            ASSERT_TRUE(order.side == Side::Sell || order.quantity % instrument.lot == 0);
            ASSERT_LE(order.filled + order.cancelled, order.quantity);
            ASSERT_EQ(order.status, order.statusOfQuantities());
            ASSERT_TRUE(byNumber.emplace(std::make_pair(order.channel, order.orderNo), &order).second);
        }
        std::map<const OrderState *, qint64> filled;
        for (const Deal &deal : played.deals) {
            const OrderState *const buy = byNumber[{deal.channel, deal.buyOrderNo}];
            const OrderState *const sell = byNumber[{deal.channel, deal.sellOrderNo}];
            ASSERT_TRUE(buy && sell && buy->side == Side::Buy && sell->side == Side::Sell);
            ASSERT_TRUE(deal.price <= buy->price && deal.price >= sell->price);
            filled[buy] += deal.quantity;
            filled[sell] += deal.quantity;
        }
        for (const OrderState &order : played.orders)
            ASSERT_EQ(filled[&order], order.filled) << "order " << order.orderNo;
        for (const QuoteSnapshot &quote : played.quotes)
            ASSERT_LT(quote.bids[0].price == absent<double> ? 0 : quote.bids[0].price, quote.asks[0].price);
    }
}

TEST(SimulatedFeed, LooksAlive)
{
    const PlayedFeed played = playSimulation(5);
    std::map<OrderStatus, int> statuses;
    for (const OrderState &order : played.orders)
        ++statuses[order.status];
    for (const OrderStatus status : {OrderStatus::Accepted, OrderStatus::PartFilled, OrderStatus::Filled,
                                     OrderStatus::Cancelled, OrderStatus::PartCancelled})
        EXPECT_GT(statuses[status], 5) << "status " << char(status);
    EXPECT_GT(played.deals.size(), played.orders.size() / 4);
    std::map<int, std::set<double>> prices;
    for (const Deal &deal : played.deals)
        prices[deal.instrument].insert(deal.price);
    EXPECT_GE(prices.size(), 6u);
    for (const auto &[instrument, traded] : prices) {
        EXPECT_GT(traded.size(), 10u) << "the price of " << played.instruments[size_t(instrument)].code << " moves";
        EXPECT_NE(played.instruments[size_t(instrument)].name, "");
    }
    const double seconds = double(played.times.back() - played.times.front()) / 1000;
    EXPECT_GT(double(manyEvents) / seconds, 10) << "events a second";
}

TEST(SimulatedFeed, ADayEndsAtTheCloseAndRestsAtNoon)
{
    SimulatedFeed simulation(11);
    BatchWriter writer;
    FeedBatch batch;
    simulation.load(writer, [] { return true; });
    const auto minuteOfDay = [](qint64 time) { return (time + chinaOffset) / 60'000 % (24 * 60); };
    qint64 last = 0;
    qint64 atNoon = 0;
    for (qint64 next; (next = simulation.nextTime()) != absent<qint64>; last = next) {
        ASSERT_GE(next, last);
        atNoon += minuteOfDay(next) >= 11 * 60 + 30 && minuteOfDay(next) < 13 * 60;
        simulation.step(writer);
        writer.handOver(batch);
    }
    EXPECT_EQ(atNoon, 0);
    EXPECT_EQ(minuteOfDay(last), 14 * 60 + 59);
}

namespace {

/// Plays so many events, and then ends the day.
void playAndEnd(SimulatedFeed &simulation, BatchWriter &writer, int events)
{
    for (int i = 0; i < events; ++i)
        simulation.step(writer);
    simulation.endDay(writer);
    simulation.completeBatch(writer);
}

int dayOf(qint64 time)
{
    const QDate date = QDate(1970, 1, 1).addDays((time + chinaOffset) / 86'400'000);
    return date.year() * 10000 + date.month() * 100 + date.day();
}

} // namespace

TEST(SimulatedFeed, TheNextDayStartsFromTheCloseOfTheOneThatWasEnded)
{
    SimulatedFeed simulation(4);
    BatchWriter writer;
    FeedBatch batch;
    ASSERT_TRUE(simulation.canEndDay());
    simulation.load(writer, [] { return true; });
    playAndEnd(simulation, writer, 40'000);
    writer.handOver(batch);
    for (const OrderState &order : batch.orders)
        ASSERT_EQ(order.openQuantity(), 0) << "what was open is withdrawn";

    std::map<int, const Deal *> closing;
    std::map<int, std::pair<qint64, qint64>> average; ///< value in price units and quantity
    for (const Deal &deal : batch.deals) {
        closing[deal.instrument] = &deal;
        average[deal.instrument].first += priceUnits(deal.price) * deal.quantity;
        average[deal.instrument].second += deal.quantity;
    }
    ASSERT_EQ(batch.instruments.size(), 10u);
    ASSERT_EQ(batch.quotes.size(), 10u);
    for (const Instrument &instrument : batch.instruments) {
        SCOPED_TRACE(instrument.code);
        const auto [value, quantity] = average[instrument.index];
        const bool isFuture = instrument.kind == InstrumentKind::Future;
        const double reference = isFuture ? instrument.previousSettlement : instrument.previousClose;
        EXPECT_EQ(instrument.previousClose, closing[instrument.index]->price);
        if (isFuture) {
            EXPECT_NEAR(reference, priceOfUnits(value / quantity), instrument.tick / 2 + 1e-9);
        }
        EXPECT_NEAR(instrument.upperLimit, reference * 1.1, instrument.tick);
        EXPECT_NEAR(instrument.lowerLimit, reference * 0.9, instrument.tick);
        const QuoteSnapshot &quote = batch.quotes[size_t(instrument.index)];
        EXPECT_EQ(quote.previousClose, instrument.previousClose);
        EXPECT_EQ(quote.upperLimit, instrument.upperLimit);
        EXPECT_EQ(quote.volume, 0);
        EXPECT_EQ(quote.last, absent<double>);
        EXPECT_EQ(dayOf(quote.time), 20240319);
    }

    const std::vector<Instrument> instruments = batch.instruments;
    for (int i = 0; i < 40'000; ++i)
        simulation.step(writer);
    writer.handOver(batch);
    ASSERT_GT(batch.deals.size(), 1000u);
    for (const OrderState &order : batch.orders) {
        ASSERT_EQ(order.day, 20240319);
        ASSERT_GE(order.price, instruments[size_t(order.instrument)].lowerLimit);
        ASSERT_LE(order.price, instruments[size_t(order.instrument)].upperLimit);
    }
}

TEST(SimulatedFeed, WeekdaysFollowEachOtherAndAClosedDayWaitsForTheNext)
{
    SimulatedFeed simulation(4);
    BatchWriter writer;
    simulation.load(writer, [] { return true; });
    for (const int day : {20240319, 20240320, 20240321, 20240322, 20240325}) {
        playAndEnd(simulation, writer, 2'000);
        EXPECT_EQ(dayOf(simulation.nextTime()), day);
    }
    FeedBatch batch;
    while (simulation.nextTime() != absent<qint64>)
        simulation.step(writer);
    simulation.completeBatch(writer);
    writer.handOver(batch);
    for (const QuoteSnapshot &quote : batch.quotes)
        EXPECT_EQ(quote.phase, TradingPhase::Closed) << quote.instrument;
    simulation.endDay(writer);
    EXPECT_EQ(dayOf(simulation.nextTime()), 20240326);
}
