#include <gtest/gtest.h>

#include "feed/instrumentrules.h"
#include "trading/paperqueue.h"
#include "trading_support.h"

using namespace tradingtest;
using feed::DealKind;
using feed::Side;
using trading::PaperQueue;

namespace {

/// A queue whose fills are written down as "order@price x quantity".
class Queue
{
public:
    std::string submit(qint64 id, Side side, double price, qint64 quantity)
    {
        fills.clear();
        queue.submit(id, side, feed::priceUnits(price), quantity, fills);
        return text();
    }
    std::string take(double price, qint64 quantity, DealKind kind)
    {
        fills.clear();
        queue.takeDeal(deal(0, 0, price, quantity, kind), fills);
        return text();
    }
    std::string take(const feed::QuoteSnapshot &snapshot)
    {
        fills.clear();
        queue.takeQuote(snapshot, fills);
        return text();
    }
    std::string quote(const Levels &bids, const Levels &asks) { return take(tradingtest::quote(0, 0, bids, asks)); }

    PaperQueue queue;

private:
    std::string text() const
    {
        std::string result;
        for (const PaperQueue::Fill &fill : fills)
            result += (result.empty() ? "" : " ") + std::to_string(fill.id) + '@' +
                      QString::number(feed::priceOfUnits(fill.price)).toStdString() + 'x' +
                      std::to_string(fill.quantity);
        return result;
    }

    std::vector<PaperQueue::Fill> fills;
};

} // namespace

TEST(TradingQueue, AnOrderTakesTheVisibleLevelsUpToItsPriceAndNothingTwice)
{
    Queue queue;
    EXPECT_EQ(queue.submit(1, Side::Buy, 10.10, 100), "") << "no book yet";
    queue.queue.cancel(1);
    queue.quote({{9.99, 500}, {9.98, 500}}, {{10.00, 300}, {10.01, 200}, {10.05, 900}});
    EXPECT_EQ(queue.submit(2, Side::Buy, 10.01, 400), "2@10x300 2@10.01x100");
    EXPECT_EQ(queue.submit(3, Side::Buy, 10.01, 300), "3@10.01x100") << "what is taken stays taken";
    // The feed does not know that its shares were sold; new ones at the price can be had, the old ones cannot.
    EXPECT_EQ(queue.quote({{9.99, 500}}, {{10.01, 350}, {10.05, 900}}), "3@10.01x150");
    EXPECT_EQ(queue.quote({{9.99, 500}}, {{10.01, 100}, {10.05, 900}}), "");
    EXPECT_EQ(queue.quote({{9.99, 500}}, {{10.01, 150}, {10.05, 900}}), "3@10.01x50");
    EXPECT_TRUE(queue.queue.isEmpty());
    EXPECT_EQ(queue.submit(4, Side::Sell, 9.98, 600), "4@9.99x500") << "the second level has gone";
}

TEST(TradingQueue, ARestingOrderWaitsBehindWhatIsSeenAtItsPrice)
{
    Queue queue;
    queue.quote({{10.00, 500}, {9.99, 100}}, {{10.01, 300}, {10.02, 100}});
    EXPECT_EQ(queue.submit(1, Side::Buy, 10.00, 200), "");
    EXPECT_EQ(queue.submit(2, Side::Buy, 10.00, 200), "");
    EXPECT_EQ(queue.take(10.00, 300, DealKind::SellerInitiated), "");
    EXPECT_EQ(queue.queue.queueAhead(1), 200);
    EXPECT_EQ(queue.take(10.00, 900, DealKind::BuyerInitiated), "") << "that deal was made with sellers' orders";
    EXPECT_EQ(queue.quote({{10.00, 150}, {9.99, 100}}, {{10.01, 300}, {10.02, 100}}), "");
    EXPECT_EQ(queue.queue.queueAhead(1), 150) << "some in front have withdrawn";
    EXPECT_EQ(queue.take(10.00, 250, DealKind::SellerInitiated), "1@10x100");
    EXPECT_EQ(queue.take(10.00, 150, DealKind::SellerInitiated), "1@10x100 2@10x50");
    EXPECT_EQ(queue.take(9.99, 80, DealKind::SellerInitiated), "2@10x80") << "the better price is met first";
    EXPECT_EQ(queue.quote({{9.98, 100}, {9.97, 1}}, {{9.99, 40}, {10.00, 500}}), "2@10x40 2@10x30");
    EXPECT_TRUE(queue.queue.isEmpty());
}

TEST(TradingQueue, APriceOutOfSightIsJoinedWhenItComesInSight)
{
    Queue queue;
    feed::QuoteSnapshot full = quote(0, 0, {}, {{20, 1}});
    for (int i = 0; i < feed::QuoteSnapshot::depth; ++i)
        full.bids[size_t(i)] = {10 - i * 0.01, 100, 1};
    queue.take(full);
    queue.submit(1, Side::Buy, 9.90, 100);
    EXPECT_EQ(queue.queue.queueAhead(1), feed::absent<qint64>);
    EXPECT_EQ(queue.take(9.90, 1000, DealKind::SellerInitiated), "");
    queue.quote({{9.91, 100}, {9.90, 700}}, {{20, 1}});
    EXPECT_EQ(queue.queue.queueAhead(1), 700);
    queue.submit(2, Side::Buy, 9.95, 100);
    EXPECT_EQ(queue.queue.queueAhead(2), 0) << "a new best price";
    queue.submit(3, Side::Sell, 30, 100);
    EXPECT_EQ(queue.queue.queueAhead(3), 0) << "fewer levels than the feed can show: nothing is behind them";
}

TEST(TradingQueue, BehindAsManyLevelsAsTheFeedEverShowsNobodyKnowsWhatStands)
{
    Queue five;
    five.quote({{10.00, 1}, {9.99, 1}, {9.98, 1}, {9.97, 1}, {9.96, 1}}, {{10.01, 1}});
    five.submit(1, Side::Buy, 9.95, 100);
    EXPECT_EQ(five.queue.queueAhead(1), feed::absent<qint64>);
    five.quote({{9.99, 1}, {9.98, 1}, {9.97, 1}, {9.96, 1}, {9.95, 700}}, {{10.01, 1}});
    EXPECT_EQ(five.queue.queueAhead(1), 700);
    Queue one;
    one.quote({{10.00, 1}}, {{10.01, 1}});
    one.submit(1, Side::Sell, 10.02, 100);
    EXPECT_EQ(one.queue.queueAhead(1), feed::absent<qint64>);
}

TEST(TradingQueue, WhatDealsTookSinceTheSnapshotAndWhatALunchHidesIsNotSoldAgain)
{
    Queue queue;
    const Levels bids = {{9.99, 100}, {9.98, 100}};
    const Levels asks = {{10.00, 500}, {10.01, 100}, {10.02, 100}};
    queue.quote(bids, asks);
    queue.take(10.00, 400, DealKind::BuyerInitiated);
    EXPECT_EQ(queue.submit(1, Side::Buy, 10.00, 500), "1@10x100");
    queue.queue.cancel(1);
    queue.take(10.01, 30, DealKind::BuyerInitiated);
    EXPECT_EQ(queue.submit(2, Side::Buy, 10.01, 500), "2@10.01x70");
    queue.queue.cancel(2);

    queue.quote(bids, {{10.00, 300}, {10.01, 100}, {10.02, 100}});
    EXPECT_EQ(queue.submit(3, Side::Buy, 10.00, 200), "3@10x200");
    feed::QuoteSnapshot lunch = tradingtest::quote(0, 0, {}, {});
    lunch.phase = feed::TradingPhase::LunchBreak;
    queue.take(lunch);
    queue.quote(bids, {{10.00, 350}, {10.01, 100}, {10.02, 100}});
    EXPECT_EQ(queue.submit(4, Side::Buy, 10.00, 300), "4@10x50");
}

TEST(TradingQueue, AnOrderThatMeetsItsFirstBookLatePaysTheLevelsPrices)
{
    Queue queue;
    queue.submit(1, Side::Buy, 11, 150);
    feed::QuoteSnapshot before = tradingtest::quote(0, 0, {{9.99, 1}}, {{10.00, 1}});
    before.phase = feed::TradingPhase::BeforeContinuous;
    EXPECT_EQ(queue.take(before), "");
    EXPECT_EQ(queue.quote({{9.99, 500}}, {{10.00, 100}, {10.05, 100}}), "1@10x100 1@10.05x50");

    queue.submit(2, Side::Buy, 9.99, 100);
    queue.queue.close();
    EXPECT_EQ(queue.submit(3, Side::Sell, 9.00, 100), "") << "after the hours nothing trades";
    EXPECT_EQ(queue.quote({{9.99, 500}}, {{10.10, 100}}), "3@9.99x100");
}

TEST(TradingQueue, AuctionsFillBetterPricesOnlyAndAtTheirOwnPrice)
{
    Queue queue;
    feed::QuoteSnapshot auction = quote(0, 0, {{10, 5000}}, {{10, 5000}});
    auction.phase = feed::TradingPhase::OpeningAuction;
    queue.take(auction);
    EXPECT_EQ(queue.submit(1, Side::Buy, 10.50, 200) + queue.submit(2, Side::Buy, 10.00, 200) +
                  queue.submit(3, Side::Sell, 9.50, 400),
              "");
    EXPECT_EQ(queue.take(10.00, 300, DealKind::Auction), "1@10x200 3@10x300");
    EXPECT_EQ(queue.quote({{9.99, 10}, {9.98, 10}}, {{10.00, 50}, {10.01, 50}}), "2@10x50 3@9.99x10 3@9.98x10")
        << "what the auction left over meets the book like an order that arrives";
}

TEST(TradingQueue, WithoutDealsAGrowingVolumeCountsAsOneAtTheLastPrice)
{
    Queue queue;
    const auto tick = [](qint64 volume, double last) {
        feed::QuoteSnapshot snapshot = quote(0, 0, {{8000, 5}}, {{8001, 5}}, last);
        snapshot.phase = feed::TradingPhase::Unknown;
        snapshot.volume = volume;
        return snapshot;
    };
    queue.take(tick(1000, 8000));
    queue.submit(1, Side::Buy, 8000, 4);
    queue.submit(2, Side::Sell, 8001, 4);
    EXPECT_EQ(queue.take(tick(1004, 8000)), "");
    EXPECT_EQ(queue.take(tick(1007, 8000)), "1@8000x2");
    EXPECT_EQ(queue.take(tick(1007, 8000)), "");
    EXPECT_EQ(queue.take(tick(1015, 8001)), "2@8001x3");
    EXPECT_EQ(queue.take(tick(10, 8002)), "") << "a volume that starts anew is no deal";
}

TEST(TradingQueue, WithoutDealsAnAuctionShowsInTheVolumeToo)
{
    const auto shown = [](feed::TradingPhase phase, qint64 volume, double last) {
        feed::QuoteSnapshot snapshot = quote(0, 0, {{9.98, 300}}, {{10.02, 300}}, last);
        snapshot.phase = phase;
        snapshot.volume = volume;
        snapshot.open = volume == 0 ? feed::absent<double> : 10.00;
        return snapshot;
    };
    using feed::TradingPhase;
    Queue queue;
    queue.submit(1, Side::Buy, 10.50, 400);
    queue.submit(2, Side::Buy, 10.00, 400);
    queue.submit(3, Side::Sell, 9.90, 100);
    queue.take(shown(TradingPhase::OpeningAuction, 0, feed::absent<double>));
    EXPECT_EQ(queue.take(shown(TradingPhase::BeforeContinuous, 300, 10.00)), "1@10x300 3@10x100");
    EXPECT_EQ(queue.take(shown(TradingPhase::Continuous, 400, 10.00)), "1@10.02x100");
    EXPECT_EQ(queue.take(shown(TradingPhase::Continuous, 1300, 9.98)), "2@10x400");

    queue.submit(4, Side::Sell, 10.01, 100);
    EXPECT_EQ(queue.take(shown(TradingPhase::ClosingAuction, 1400, 10.02)), "4@10.01x100") << "sold before the auction";
    queue.submit(5, Side::Sell, 10.00, 100);
    queue.submit(6, Side::Sell, 10.05, 100);
    EXPECT_EQ(queue.take(shown(TradingPhase::Closed, 2000, 10.04)), "5@10.04x100");
}

TEST(TradingQueue, SenselessQuotesAndDealsAreNoMarket)
{
    Queue queue;
    queue.quote({{10, 100}}, {{10.01, 100}});
    queue.submit(1, Side::Buy, 10, 100);
    queue.submit(2, Side::Sell, 11, 100);
    EXPECT_EQ(
        queue.quote({{0, 100}, {-5, 100}, {feed::absent<double>, 7}}, {{0, 1}, {9, 0}, {9, feed::absent<qint64>}}), "");
    EXPECT_EQ(queue.quote({{12, 100}}, {{9, 100}}), "") << "crossed: prices of an auction";
    EXPECT_EQ(queue.take(0, 100, DealKind::SellerInitiated) + queue.take(9, -100, DealKind::SellerInitiated), "");
}
