#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <random>

#include "feed/batchwriter.h"
#include "feed/feedsource.h"
#include "kdservice/idata.h"
#include "records/fieldids.h"
#include "window/feedpump.h"

using namespace terminal;

namespace {

/// Events of a list, a millisecond of market time apart.
class ScriptedSource : public feed::FeedSource
{
public:
    using Event = std::function<void(feed::BatchWriter &)>;

    explicit ScriptedSource(std::vector<Event> script) : events(std::move(script)) {}

    std::string name() const override { return "scripted"; }
    bool load(feed::BatchWriter &writer, const std::function<bool()> &) override
    {
        for (int i = 0; i < 2; ++i) {
            feed::Instrument instrument;
            instrument.index = i;
            instrument.code = i == 0 ? "600000.SH" : "000001.SZ";
            writer.putInstrument(instrument);
        }
        return true;
    }
    qint64 nextTime() const override { return next < events.size() ? qint64(next) : feed::absent<qint64>; }
    void step(feed::BatchWriter &writer) override
    {
        writer.setTime(qint64(next));
        events[next++](writer);
    }
    void completeBatch(feed::BatchWriter &) override {}

private:
    std::vector<Event> events;
    size_t next = 0;
};

std::unique_ptr<FeedPump> makePump(std::vector<ScriptedSource::Event> script)
{
    return std::make_unique<FeedPump>(std::make_unique<feed::MarketFeed>(
        std::make_unique<ScriptedSource>(std::move(script)), feed::MarketFeed::maxSpeed, 64));
}

feed::OrderState makeOrder(int entry, qint64 filled)
{
    feed::OrderState order;
    order.entry = entry;
    order.instrument = entry % 2;
    order.day = 20230711;
    order.orderNo = entry;
    order.quantity = 1'000'000;
    order.filled = filled;
    return order;
}

std::vector<ScriptedSource::Event> newOrders(int count)
{
    std::vector<ScriptedSource::Event> script;
    for (int i = 0; i < count; ++i)
        script.emplace_back([i](feed::BatchWriter &writer) { writer.putOrder(makeOrder(i, 0)); });
    return script;
}

/// Writes down what it hears, in order.
class Notes : public MarketListener
{
public:
    void takeInstrument(const feed::Instrument &instrument) override { lines.push_back("i " + instrument.code); }
    void takeOrder(const feed::OrderState &order) override { lines.push_back("o " + std::to_string(order.filled)); }
    void takeDeal(const feed::Deal &deal) override { lines.push_back("d " + std::to_string(deal.sequence)); }
    void takeQuote(const feed::QuoteSnapshot &quote) override { lines.push_back("q " + std::to_string(quote.time)); }

    std::vector<std::string> lines;
};

bool waitUntilFinished(FeedPump &pump)
{
    return QTest::qWaitFor([&] { return pump.isFinished(); }, 30000);
}

} // namespace

TEST(FeedPump, TablesEndWithTheLastStateOfEveryOrderAndWithEachDealOnce)
{
    const unsigned seed = 20230711;
    std::mt19937 random(seed);
    std::vector<ScriptedSource::Event> script;
    std::map<int, qint64> expected;
    int deals = 0;
    for (int i = 0; i < 20000; ++i) {
        if (random() % 3 == 0) {
            feed::Deal deal;
            deal.entry = deals++;
            deal.instrument = deal.entry % 2;
            deal.sequence = deal.entry;
            script.emplace_back([deal](feed::BatchWriter &writer) { writer.addDeal(deal); });
            continue;
        }
        const bool isNew = expected.empty() || random() % 2 == 0;
        const int entry = isNew ? int(expected.size()) : int(random() % expected.size());
        const qint64 filled = expected[entry] + random() % 100;
        expected[entry] = filled;
        const feed::OrderState order = makeOrder(entry, filled);
        script.emplace_back([order](feed::BatchWriter &writer) { writer.putOrder(order); });
    }

    const auto pump = makePump(std::move(script));
    std::map<int, qint64> taken;
    std::map<std::string, int> takenDeals;
    pump->setOrderSink([&](const FeedPump::Records &records) {
        for (const auto &record : records)
            taken[record->getInt(refhost::OrderSequence)] = record->getLong(refhost::OrderFilled);
    });
    pump->setDealSink([&](const FeedPump::Records &records) {
        for (const auto &record : records)
            ++takenDeals[record->getKey()];
    });
    QSignalSpy finished(pump.get(), &FeedPump::finished);
    pump->start();
    ASSERT_TRUE(waitUntilFinished(*pump));

    EXPECT_EQ(taken, expected) << "seed " << seed;
    EXPECT_EQ(int(takenDeals.size()), deals);
    for (const auto &[key, times] : takenDeals)
        EXPECT_EQ(times, 1) << key;
    qint64 sum = 0;
    for (const auto &[entry, filled] : expected)
        sum += filled;
    EXPECT_EQ(pump->sharesFilled(), sum);
    EXPECT_EQ(pump->counters().orders, qint64(expected.size()));
    EXPECT_EQ(pump->counters().deals, deals);
    EXPECT_EQ(pump->marketTime(), 19999);
    EXPECT_FALSE(pump->hasFailed());
    EXPECT_EQ(finished.count(), 1);
}

TEST(FeedPump, EveryListenerHearsAllEventsOfABatchInOrder)
{
    feed::Deal deal;
    deal.sequence = 5;
    feed::QuoteSnapshot quote;
    quote.time = 77;
    const auto pump = makePump({[=](feed::BatchWriter &writer) {
        writer.putQuote(quote);
        writer.addDeal(deal);
        writer.putOrder(makeOrder(0, 300));
    }});
    Notes first;
    Notes second;
    pump->addListener(first);
    pump->addListener(second);
    pump->start();
    ASSERT_TRUE(waitUntilFinished(*pump));
    EXPECT_EQ(first.lines, (std::vector<std::string>{"i 600000.SH", "i 000001.SZ", "o 300", "d 5", "q 77"}));
    EXPECT_EQ(second.lines, first.lines);
}

TEST(FeedPump, TheEventLoopHasItsTurnsWhileMuchIsWaiting)
{
    const auto pump = makePump(newOrders(64 * 40));
    int calls = 0;
    std::vector<int> callsAtTurn;
    pump->setOrderSink([&](const FeedPump::Records &) {
        ++calls;
        QTest::qSleep(6);
        const auto turn = [&] { callsAtTurn.push_back(calls); };
        QMetaObject::invokeMethod(pump.get(), turn, Qt::QueuedConnection);
    });
    pump->start();
    ASSERT_TRUE(waitUntilFinished(*pump));
    QTest::qWait(1);
    EXPECT_GE(calls, 10);
    ASSERT_EQ(int(callsAtTurn.size()), calls);
    for (size_t i = 0; i < callsAtTurn.size(); ++i)
        EXPECT_EQ(callsAtTurn[i], int(i) + 1) << "a slice of 6 ms was not the last before the event loop's turn";
}

TEST(FeedPump, APausedFeedStandsStillAndGoesOnWhereItWas)
{
    const auto pump = makePump(newOrders(200));
    pump->setPaused(true);
    pump->setSpeed(0.1);
    pump->start();
    QTest::qWait(50);
    const qint64 before = pump->counters().orders;
    QTest::qWait(50);
    EXPECT_EQ(pump->counters().orders, before);
    EXPECT_LT(before, 200);
    EXPECT_EQ(pump->speed(), 0.1);
    pump->setSpeed(feed::MarketFeed::maxSpeed);
    pump->setPaused(false);
    ASSERT_TRUE(waitUntilFinished(*pump));
    EXPECT_EQ(pump->counters().orders, 200);
}

TEST(FeedPump, DeletingAPumpInTheMiddleEndsItsFeed)
{
    auto pump = makePump(newOrders(100000));
    int taken = 0;
    pump->setOrderSink([&](const FeedPump::Records &records) { taken += records.size(); });
    pump->start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return taken > 0; }, 30000));
    pump.reset();
    const int atTheEnd = taken;
    QTest::qWait(20);
    EXPECT_EQ(taken, atTheEnd);
}
