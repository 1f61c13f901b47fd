#include "feedplayer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>

using namespace feed;

namespace {

const QByteArray orderHeader =
    "MDDate,MDTime,OrderType,OrderPrice,OrderQty,OrderBSFlag,ChannelNo,ApplSeqNum,OrderNO,SecurityID\n";
const QByteArray tradeHeader = "MDDate,MDTime,TradeBuyNo,TradeSellNo,TradeBSFlag,TradePrice,TradeQty,ChannelNo,"
                               "ApplSeqNum,SecurityID\n";

QByteArray order(const char *time, int number, const char *code, int channel = 1, const char *day = "2023.07.11")
{
    const QByteArray text = QByteArray::number(number);
    return QByteArray(day) + ',' + time + ",2,10.5,100,1," + QByteArray::number(channel) + ',' + text + ',' + text +
           ',' + code + '\n';
}

QByteArray deal(const char *time, int number, int buyNo, int sellNo, int quantity)
{
    return QByteArray("2023.07.11,") + time + ',' + QByteArray::number(buyNo) + ',' + QByteArray::number(sellNo) +
           ",1,10.5," + QByteArray::number(quantity) + ",1," + QByteArray::number(number) + ",600001.SH\n";
}

/// Every change of an order as "day channel number", in the order played.
std::string playedOrder(const PlayedFeed &played)
{
    std::ostringstream out;
    for (const OrderState &update : played.updates)
        out << update.day << ' ' << update.channel << ' ' << update.orderNo << '\n';
    return out.str();
}

} // namespace

TEST(FeedOrdering, RowsPlayInOrderOfTimeAndAStocksRowsInOrderOfTheirNumbers)
{
    const ReplayFolder folder;
    const QByteArray rows[] = {
        order("09:31:00.000", 1, "600001.SH"),
        order("09:30:30.000", 2, "600001.SH"), // runs back, and counts as 09:31
        order("09:32:00.000", 9, "600001.SH"),
        order("09:30:45.000", 3, "600002.SH"), // numbers of one channel do not bind different stocks
        order("09:32:00.000", 8, "600002.SH"),
        order("09:32:00.000", 1, "600003.SH", 2),
        order("09:00:00.000", 1, "600001.SH", 1, "2023.07.12"),
        order("15:00:00.000", 1, "600001.SH", 1, "2023.07.10"),
    };
    const std::string expected = "20230710 1 1\n"
                                 "20230711 1 3\n"
                                 "20230711 1 1\n"
                                 "20230711 1 2\n"
                                 "20230711 1 8\n"
                                 "20230711 1 9\n"
                                 "20230711 2 1\n"
                                 "20230712 1 1\n";
    std::vector<int> places{0, 1, 2, 3, 4, 5, 6, 7};
    std::mt19937 random(1);
    for (int round = 0; round < 20; ++round) {
        // The same rows in any order and spread over any files.
        QByteArray first = orderHeader;
        QByteArray second = orderHeader;
        for (const int place : places)
            (random() % 2 ? first : second) += rows[place];
        const PlayedFeed played = folder.play({folder.write("a.csv", first), folder.write("b.csv", second)});
        EXPECT_EQ(playedOrder(played), expected);
        EXPECT_TRUE(std::is_sorted(played.times.begin(), played.times.end()));
        std::shuffle(places.begin(), places.end(), random);
    }
}

TEST(FeedOrdering, AnOrdersLifeIsFollowedThroughRemaindersAndNumbersThatOnlyDealsCarry)
{
    const ReplayFolder folder;
    const QByteArray orders =
        orderHeader + order("09:30:01.000", 10, "600001.SH") +
        order("09:30:03.000", 22, "600001.SH").replace("22,22", "22,20") +
        order("09:30:05.000", 30, "600001.SH").replace(",2,10.5,100,", ",10,0,70,").replace("30,30", "30,20");
    const QByteArray deals = tradeHeader + deal("09:30:03.000", 20, 20, 5, 40) + deal("09:30:03.000", 21, 20, 6, 60) +
                             deal("09:30:04.000", 25, 20, 7, 30) + deal("09:30:04.000", 26, 10, 7, 100);
    const PlayedFeed played = folder.play({folder.write("orders.csv", orders), folder.write("deals.csv", deals)});
    EXPECT_EQ(joined(played.messages), "");
    std::ostringstream life;
    for (const OrderState &update : played.updates)
        life << update.orderNo << ' ' << (update.side == Side::Buy ? "buy" : "sell") << " status "
             << char(update.status) << " at " << (update.price == absent<double> ? "-" : "10.5") << " of "
             << update.quantity << " filled " << update.filled << " cancelled " << update.cancelled << '\n';
    EXPECT_EQ(life.str(), "10 buy status 2 at 10.5 of 100 filled 0 cancelled 0\n"
                          "20 buy status 8 at - of 40 filled 40 cancelled 0\n"
                          "5 sell status 8 at - of 40 filled 40 cancelled 0\n"
                          "20 buy status 8 at - of 100 filled 100 cancelled 0\n"
                          "6 sell status 8 at - of 60 filled 60 cancelled 0\n"
                          "20 buy status 7 at 10.5 of 200 filled 100 cancelled 0\n"
                          "20 buy status 7 at 10.5 of 200 filled 130 cancelled 0\n"
                          "7 sell status 8 at - of 30 filled 30 cancelled 0\n"
                          "10 buy status 8 at 10.5 of 100 filled 100 cancelled 0\n"
                          "7 sell status 8 at - of 130 filled 130 cancelled 0\n"
                          "20 buy status 5 at 10.5 of 200 filled 130 cancelled 70\n");
    EXPECT_EQ(orderKey(played.orders[0], played.instruments[0]), "20230711.SH.1.10");
    EXPECT_EQ(dealKey(played.deals[0], played.instruments[0]), "20230711.SH.1.20");
}
