#include "feed/bookbuilder.h"
#include "feed/instrumentrules.h"
#include "feedplayer.h"
#include "recordedday.h"

#include <gtest/gtest.h>

#include <QFileInfo>

#include <algorithm>
#include <map>
#include <random>
#include <sstream>

using namespace feed;

namespace {

qint64 cents(double price)
{
    return price == absent<double> ? -1 : std::llround(price * 100);
}

/// "bids | asks", each as price in cents, quantity and orders, best first.
std::string levelsText(const QuoteSnapshot &quote)
{
    std::ostringstream out;
    for (const auto *levels : {&quote.bids, &quote.asks}) {
        for (const QuoteLevel &level : *levels)
            if (level.price != absent<double>)
                out << cents(level.price) << 'x' << level.quantity << '('
                    << (level.orders == absent<int> ? -1 : level.orders) << ") ";
        if (levels == &quote.bids)
            out << "| ";
    }
    return out.str();
}

struct OpenOrder
{
    Side side;
    qint64 price; ///< cents
    qint64 quantity;
};

/// The levels by going through all orders.
std::string slowLevels(const std::vector<OpenOrder> &orders)
{
    std::map<qint64, std::pair<qint64, int>, std::greater<>> bids;
    std::map<qint64, std::pair<qint64, int>> asks;
    for (const OpenOrder &order : orders) {
        auto &level = order.side == Side::Buy ? bids[order.price] : asks[order.price];
        level.first += order.quantity;
        ++level.second;
    }
    std::ostringstream out;
    const auto write = [&](const auto &levels) {
        int count = 0;
        for (const auto &[price, level] : levels)
            if (count++ < QuoteSnapshot::depth)
                out << price << 'x' << level.first << '(' << level.second << ") ";
    };
    write(bids);
    out << "| ";
    write(asks);
    return out.str();
}

/// Volume and rest of an auction at this price, by going through all orders.
std::pair<qint64, qint64> auctionAt(const std::vector<OpenOrder> &orders, qint64 price)
{
    qint64 demand = 0;
    qint64 supply = 0;
    for (const OpenOrder &order : orders) {
        if (order.side == Side::Buy && order.price >= price)
            demand += order.quantity;
        if (order.side == Side::Sell && order.price <= price)
            supply += order.quantity;
    }
    return {std::min(demand, supply), -std::abs(demand - supply)};
}

void expectAuctionQuote(const std::vector<OpenOrder> &orders, const QuoteSnapshot &quote)
{
    std::pair<qint64, qint64> best{0, 0};
    for (const OpenOrder &order : orders)
        best = std::max(best, auctionAt(orders, order.price));
    EXPECT_EQ(auctionAt(orders, cents(quote.bids[0].price)), best);
    EXPECT_EQ(quote.bids[0].quantity, best.first);
    EXPECT_EQ(quote.asks[0].price, quote.bids[0].price);
    EXPECT_EQ(quote.asks[0].quantity, best.first);
    EXPECT_EQ(quote.bids[1].price, absent<double>);
    EXPECT_EQ(quote.asks[1].price, absent<double>);
}

OrderState orderState(Side side, double price, qint64 quantity, qint64 filled, qint64 cancelled = 0)
{
    OrderState order;
    order.side = side;
    order.price = price;
    order.quantity = quantity;
    order.filled = filled;
    order.cancelled = cancelled;
    return order;
}

} // namespace

TEST(LevelBook, AgreesWithASumOverAllOrdersAfterAnyChanges)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        // Some seeds keep the sides apart, others let them cross as in an auction.
        const bool mayCross = seed % 2 == 0;
        std::vector<OpenOrder> orders;
        LevelBook book;
        for (int step = 0; step < 400; ++step) {
            if (orders.empty() || random() % 5 < 3) {
                const Side side = random() % 2 ? Side::Buy : Side::Sell;
                const qint64 apart = mayCross ? 0 : side == Side::Buy ? -30 : 30;
                const OpenOrder order{side, qint64(1000 + random() % 25) + apart, qint64(1 + random() % 9) * 100};
                orders.push_back(order);
                book.change(side, priceUnits(double(order.price) / 100), order.quantity, 1);
            } else {
                OpenOrder &order = orders[random() % orders.size()];
                const qint64 taken = std::min<qint64>(order.quantity, qint64(1 + random() % 9) * 50);
                order.quantity -= taken;
                book.change(order.side, priceUnits(double(order.price) / 100), -taken, order.quantity == 0 ? -1 : 0);
                if (order.quantity == 0) {
                    order = orders.back();
                    orders.pop_back();
                }
            }
            QuoteSnapshot quote;
            book.fillLevels(quote);
            if (book.isCrossed())
                expectAuctionQuote(orders, quote);
            else
                ASSERT_EQ(levelsText(quote), slowLevels(orders)) << "step " << step;
        }
    }
}

TEST(BookBuilder, AnOrderThatTradesAsItArrivesStandsInTheBookWithItsRemainderOnly)
{
    BookBuilder builder;
    builder.startDay(20230711);
    const auto text = [&] { return levelsText(builder.quote(0, 0)); };
    builder.changeOrder(0, orderState(Side::Sell, 10.01, 300, 0));
    builder.changeOrder(0, orderState(Side::Sell, 10.010000000000002, 200, 0));
    EXPECT_EQ(text(), "| 1001x500(2) ");
    // A buy of 1000 takes both; its own line comes only after its deals.
    builder.changeOrder(300, orderState(Side::Sell, 10.01, 300, 300));
    builder.changeOrder(0, orderState(Side::Buy, absent<double>, 300, 300));
    builder.changeOrder(200, orderState(Side::Sell, 10.010000000000002, 200, 200));
    builder.changeOrder(0, orderState(Side::Buy, absent<double>, 500, 500));
    EXPECT_EQ(text(), "| ");
    builder.changeOrder(0, orderState(Side::Buy, 10.01, 1000, 500));
    EXPECT_EQ(text(), "1001x500(1) | ");
    builder.changeOrder(500, orderState(Side::Buy, 10.01, 1000, 500, 500));
    EXPECT_EQ(text(), "| ");
}

TEST(BookBuilder, AQuoteHasTheDaysFiguresAndWhatItCannotKnowIsAbsent)
{
    BookBuilder builder;
    const auto text = [&builder] {
        const QuoteSnapshot quote = builder.quote(3, 1689039000000);
        std::ostringstream out;
        out << quote.instrument << " phase " << int(quote.phase);
        for (const double price : {quote.open, quote.high, quote.low, quote.last, quote.previousClose})
            out << ' ' << cents(price);
        out << " volume " << quote.volume << " for " << std::llround(quote.turnover);
        return out.str();
    };
    builder.startDay(20230711);
    EXPECT_EQ(text(), "3 phase 3 -1 -1 -1 -1 -1 volume 0 for 0");
    for (const double price : {10.0, 10.5, 9.8, 10.1}) {
        Deal deal;
        deal.price = price;
        deal.quantity = 100;
        deal.amount = price * 100;
        builder.addDeal(deal);
    }
    EXPECT_EQ(text(), "3 phase 3 1000 1050 980 1010 -1 volume 400 for 4040");
    builder.startDay(20230712);
    EXPECT_EQ(text(), "3 phase 3 -1 -1 -1 -1 -1 volume 0 for 0");
}

TEST(BookBuilder, ARecordedDaysBooksAreNeverCrossedOutsideAuctions)
{
    const QStringList paths = recordedDay();
    if (paths.isEmpty())
        GTEST_SKIP() << "no recorded data in " << SHARED_DATA_DIR;
    ReplayFeed replay(paths);
    const PlayedFeed played = playFeed(replay);
    std::map<TradingPhase, int> crossed;
    std::map<int, QuoteSnapshot> last;
    for (const QuoteSnapshot &quote : played.quotes) {
        const QuoteLevel &bid = quote.bids[0];
        const QuoteLevel &ask = quote.asks[0];
        if (bid.price != absent<double> && ask.price != absent<double> && bid.price >= ask.price)
            ++crossed[quote.phase];
        last[quote.instrument] = quote;
    }
    EXPECT_EQ(crossed[TradingPhase::Continuous], 0);
    EXPECT_EQ(crossed[TradingPhase::LunchBreak], 0);
    EXPECT_GT(crossed[TradingPhase::OpeningAuction], 1000) << "auctions collect orders before they match";
    std::map<int, qint64> volumes;
    for (const Deal &deal : played.deals)
        volumes[deal.instrument] += deal.quantity;
    ASSERT_EQ(last.size(), 3u);
    for (const auto &[instrument, quote] : last) {
        EXPECT_LT(quote.bids[0].price, quote.asks[0].price) << "matched at the close";
        EXPECT_EQ(quote.volume, volumes[instrument]);
    }
}
