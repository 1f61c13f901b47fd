#include "feed/batchwriter.h"
#include "feed/feedsource.h"
#include "feed/marketfeed.h"
#include "feed/playclock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

using namespace feed;

namespace {

/// Counts orders up: every event adds one and changes the one before. `taken` tells how far the feed's thread has come.
class CountingSource : public FeedSource
{
public:
    CountingSource(int count, qint64 step, std::atomic<int> *taken = nullptr)
        : eventCount(count), timeStep(step), progress(taken)
    {
    }
    std::string name() const override { return "counting"; }
    bool load(BatchWriter &, const std::function<bool()> &) override { return true; }
    qint64 nextTime() const override { return next < eventCount ? next * timeStep : absent<qint64>; }
    void step(BatchWriter &writer) override
    {
        if (next > 0)
            put(next - 1, 2, writer);
        put(next, 1, writer);
        ++next;
        if (progress)
            *progress = next;
    }
    void completeBatch(BatchWriter &) override {}

private:
    static void put(int entry, qint64 filled, BatchWriter &writer)
    {
        OrderState order;
        order.entry = entry;
        order.filled = filled;
        writer.putOrder(order);
    }

    const int eventCount;
    const qint64 timeStep;
    std::atomic<int> *progress;
    int next = 0;
};

/// Takes batches until `enough` says so, or for a minute at most.
template <typename Enough>
bool takeUntil(MarketFeed &feed, FeedBatch &batch, Enough enough)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (std::chrono::steady_clock::now() < deadline) {
        if (feed.take(batch) && enough(batch))
            return true;
        std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
    return false;
}

PlayClock::Time at(qint64 milliseconds)
{
    return PlayClock::Time() + std::chrono::hours(1) + std::chrono::milliseconds(milliseconds);
}

/// Days of three events each, which follow when the one before is ended.
class DaysSource : public FeedSource
{
public:
    std::string name() const override { return "days"; }
    bool load(BatchWriter &, const std::function<bool()> &) override { return true; }
    qint64 nextTime() const override { return next < end ? next * 1000 : absent<qint64>; }
    void step(BatchWriter &writer) override
    {
        OrderState order;
        order.entry = next++;
        order.day = day;
        writer.putOrder(order);
    }
    void completeBatch(BatchWriter &) override {}
    bool canEndDay() const override { return true; }
    void endDay(BatchWriter &writer) override
    {
        Instrument told;
        told.previousClose = ++day;
        writer.putInstrument(told);
        end = next + 3;
    }

private:
    int day = 1;
    int next = 0;
    int end = 3;
};

} // namespace

TEST(MarketFeed, ADayThatIsOverWaitsUntilItIsEndedAndTheClockMayStandStill)
{
    MarketFeed feed(std::make_unique<DaysSource>(), MarketFeed::maxSpeed);
    ASSERT_TRUE(feed.canEndDay());
    feed.start();
    std::string days;
    FeedBatch batch;
    const auto takeDay = [&](size_t count) {
        return takeUntil(feed, batch, [&](const FeedBatch &taken) {
            EXPECT_FALSE(taken.finished);
            for (const OrderState &order : taken.orders)
                days += std::to_string(order.day);
            return days.size() >= count;
        });
    };
    ASSERT_TRUE(takeDay(3));
    feed.endDay();
    ASSERT_TRUE(takeDay(6));
    EXPECT_EQ(days, "111222");
    feed.setSpeed(0);
    feed.endDay();
    ASSERT_TRUE(takeUntil(feed, batch, [](const FeedBatch &taken) { return !taken.instruments.empty(); }));
    EXPECT_EQ(batch.instruments[0].previousClose, 3);
    feed.stop();

    MarketFeed ordinary(std::make_unique<CountingSource>(1, 1), MarketFeed::maxSpeed);
    EXPECT_FALSE(ordinary.canEndDay());
}

TEST(MarketFeed, HandsOverEverythingOnceInBoundedBatches)
{
    constexpr int count = 100'000;
    MarketFeed feed(std::make_unique<CountingSource>(count, 1), MarketFeed::maxSpeed, 500);
    std::atomic<int> calls{0};
    feed.setReadyCallback([&] { ++calls; });
    feed.start();
    std::vector<qint64> filled;
    int batches = 0;
    FeedBatch batch;
    EXPECT_TRUE(takeUntil(feed, batch, [&](const FeedBatch &taken) {
        ++batches;
        EXPECT_LE(taken.orders.size(), 502u);
        for (const OrderState &order : taken.orders) {
            filled.resize(std::max(filled.size(), size_t(order.entry) + 1));
            filled[size_t(order.entry)] = order.filled;
        }
        return taken.finished;
    }));
    feed.stop();
    EXPECT_FALSE(batch.failed);
    EXPECT_EQ(batch.counters.orders, count);
    EXPECT_EQ(batch.counters.updates, 2 * count - 1);
    EXPECT_EQ(calls, batches);
    ASSERT_EQ(filled.size(), size_t(count));
    EXPECT_EQ(std::count(filled.begin(), filled.end(), 2), count - 1);
    EXPECT_FALSE(feed.take(batch));
    EXPECT_TRUE(batch.isEmpty());
}

TEST(MarketFeed, WaitsForATakerThatDoesNotTakeAndStopsAllTheSame)
{
    std::atomic<int> progress{0};
    MarketFeed feed(std::make_unique<CountingSource>(1'000'000, 1, &progress), MarketFeed::maxSpeed, 100);
    feed.start();
    int before = -1;
    while (progress < 190 || before != progress) {
        before = progress;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_LE(progress, 210) << "one batch ready and one full";
    feed.stop();
    FeedBatch batch;
    EXPECT_TRUE(feed.take(batch)) << "what was ready can still be taken";
    EXPECT_FALSE(feed.take(batch));
}

TEST(MarketFeed, ChangesOfAnOrderMeltTogetherWhileNobodyTakes)
{
    BatchWriter writer;
    FeedBatch batch;
    OrderState order;
    writer.putOrder(order);
    writer.handOver(batch);
    for (int i = 1; i <= 50; ++i) {
        order.filled = i;
        writer.putOrder(order);
    }
    OrderState second;
    second.entry = 1;
    writer.putOrder(second);
    writer.handOver(batch);
    ASSERT_EQ(batch.orders.size(), 2u);
    EXPECT_EQ(batch.orders[0].filled, 50);
    EXPECT_EQ(batch.orders[1].entry, 1);
    EXPECT_EQ(batch.counters.updates, 52);
}

TEST(PlayClock, PassesMarketTimeAtItsSpeed)
{
    PlayClock clock(10, 10'000'000);
    EXPECT_TRUE(clock.isDue(5000, at(0))) << "the first event starts the clock";
    EXPECT_FALSE(clock.isDue(6000, at(99)));
    EXPECT_EQ(clock.due(6000, at(99)), at(100));
    EXPECT_TRUE(clock.isDue(6000, at(100)));

    clock.setSpeed(1, at(100));
    EXPECT_FALSE(clock.isDue(7000, at(1099)));
    EXPECT_TRUE(clock.isDue(7000, at(1100)));

    clock.setSpeed(0, at(1100));
    EXPECT_FALSE(clock.isDue(7001, at(100'000)));
    EXPECT_EQ(clock.due(7001, at(100'000)), std::nullopt);

    clock.setSpeed(MarketFeed::maxSpeed, at(200'000));
    EXPECT_TRUE(clock.isDue(5'000'000, at(200'000)));
    clock.setSpeed(2, at(300'000));
    EXPECT_FALSE(clock.isDue(5'000'100, at(300'049))) << "market time goes on where the last event was";
    EXPECT_TRUE(clock.isDue(5'000'100, at(300'050)));
}

TEST(PlayClock, WaitsThroughALunchBreakButNotThroughANight)
{
    constexpr qint64 hour = 3'600'000;
    PlayClock clock(1, 3 * hour);
    EXPECT_TRUE(clock.isDue(0, at(0)));
    EXPECT_FALSE(clock.isDue(2 * hour, at(1)));
    EXPECT_TRUE(clock.isDue(2 * hour, at(2 * hour)));
    EXPECT_TRUE(clock.isDue(20 * hour, at(2 * hour)));
    EXPECT_FALSE(clock.isDue(20 * hour + 10, at(2 * hour + 9)));
    EXPECT_TRUE(clock.isDue(20 * hour + 10, at(2 * hour + 10)));
}
