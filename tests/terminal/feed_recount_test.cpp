#include "feedplayer.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <sstream>

// Recorded files are counted here a second time, as plainly as can be and sharing no code with the replay, and every
// order's final numbers are compared.

namespace {

std::vector<std::string> splitLine(const std::string &line)
{
    std::vector<std::string> fields(1);
    for (const char c : line) {
        if (c == ',')
            fields.emplace_back();
        else
            fields.back() += c;
    }
    return fields;
}

using Columns = std::shared_ptr<std::map<std::string, size_t>>;

struct Values
{
    Columns columns;
    std::vector<std::string> fields;

    bool has(const std::string &name) const { return columns->count(name) > 0; }
    const std::string &at(const std::string &name) const { return fields.at(columns->at(name)); }
};

/// A line of a file, split only when it is used.
struct Row
{
    Columns columns;
    std::string line;

    Values values() const { return {columns, splitLine(line)}; }
};

std::vector<Row> readRows(const QString &path)
{
    std::vector<Row> rows;
    Columns columns;
    char buffer[8192];
    gzFile file = gzopen(path.toUtf8().constData(), "rb");
    while (file && gzgets(file, buffer, sizeof(buffer))) {
        std::string line = buffer;
        line.erase(line.find_last_not_of("\r\n") + 1);
        if (columns) {
            rows.push_back({columns, line});
            continue;
        }
        columns = std::make_shared<std::map<std::string, size_t>>();
        for (const std::string &name : splitLine(line))
            columns->emplace(name, columns->size());
    }
    if (file)
        gzclose(file);
    return rows;
}

struct CountedOrder
{
    std::string code;
    char side = '?';
    double price = feed::absent<double>;
    long long listed = -1; ///< quantity of its line
    long long tradedBefore = 0;
    long long filled = 0;
    long long cancelled = 0;
    double amount = 0;

    long long quantity() const { return listed < 0 ? filled + cancelled : tradedBefore + listed; }
    char status() const
    {
        const long long left = quantity() - filled - cancelled;
        if (left > 0)
            return filled > 0 ? '7' : '2';
        return cancelled == 0 ? '8' : filled > 0 ? '5' : '6';
    }
};

using CountedOrders = std::map<long long, CountedOrder>;

CountedOrders countShanghai(const QString &orderPath, const QString &tradePath)
{
    std::map<long long, Row> rows; // in order of the channel's numbers
    for (const QString &path : {orderPath, tradePath})
        for (const Row &row : readRows(path))
            rows[std::stoll(row.values().at("ApplSeqNum"))] = row;
    CountedOrders orders;
    for (const auto &[sequence, recorded] : rows) {
        const Values row = recorded.values();
        if (row.has("TradeQty")) {
            for (const auto &[column, side] : {std::make_pair("TradeBuyNo", '0'), std::make_pair("TradeSellNo", '1')}) {
                CountedOrder &order = orders[std::stoll(row.at(column))];
                order.code = row.at("SecurityID");
                order.side = side;
                order.filled += std::stoll(row.at("TradeQty"));
                order.amount += std::stod(row.at("TradeMoney"));
            }
            continue;
        }
        CountedOrder &order = orders[std::stoll(row.at("OrderNO"))];
        if (row.at("OrderType") == "10") {
            order.cancelled += std::stoll(row.at("OrderQty"));
            continue;
        }
        order.code = row.at("SecurityID");
        order.side = row.at("OrderBSFlag") == "1" ? '0' : '1';
        order.price = std::stod(row.at("OrderPrice"));
        order.listed = std::stoll(row.at("OrderQty"));
        order.tradedBefore = order.filled;
    }
    return orders;
}

CountedOrders countShenzhen(const QString &path)
{
    CountedOrders orders;
    for (const Row &recorded : readRows(path)) {
        const Values row = recorded.values();
        for (const auto &[column, side] :
             {std::make_pair("BidApplSeqNum", '0'), std::make_pair("OfferApplSeqNum", '1')}) {
            const long long number = std::stoll(row.at(column));
            if (number == 0)
                continue;
            CountedOrder &order = orders[number];
            order.code = row.at("SecurityID") + ".SZ";
            order.side = side;
            const long long quantity = std::stoll(row.at("TradeQty"));
            (row.at("ExecType") == "F" ? order.filled : order.cancelled) += quantity;
            if (row.at("ExecType") == "F")
                order.amount += double(quantity) * std::stod(row.at("TradePrice"));
        }
    }
    return orders;
}

template <typename Order>
std::string orderLine(long long number, const std::string &code, char side, char status, const Order &order,
                      long long quantity)
{
    std::ostringstream out;
    out << number << ' ' << code << " side " << side << " status " << status << " price " << order.price << " quantity "
        << quantity << " filled " << order.filled << " cancelled " << order.cancelled << " amount "
        << std::llround(order.amount * 100);
    return out.str();
}

/// Lines of the orders that differ, at most ten.
std::string differences(const CountedOrders &counted, const PlayedFeed &played)
{
    std::map<long long, std::string> playedLines;
    for (const auto &order : played.orders)
        playedLines[order.orderNo] = orderLine(order.orderNo, played.instruments[size_t(order.instrument)].code,
                                               char(order.side), char(order.status), order, order.quantity);
    std::string result;
    int count = 0;
    for (const auto &[number, order] : counted) {
        const std::string line = orderLine(number, order.code, order.side, order.status(), order, order.quantity());
        if (playedLines[number] != line && ++count <= 10)
            result += "counted " + line + "\nplayed  " + playedLines[number] + '\n';
    }
    return result;
}

QString dataPath(const char *name)
{
    return QDir(QStringLiteral(SHARED_DATA_DIR)).filePath(QString::fromUtf8(name));
}

long long filledShares(const PlayedFeed &played)
{
    long long sum = 0;
    for (const auto &order : played.orders)
        sum += order.filled;
    return sum;
}

const char *const shanghaiOrders = "orders_trades/sse_orders_2023-07-11_3stocks.csv.gz";
const char *const shanghaiTrades = "orders_trades/sse_trades_2023-07-11_3stocks.csv.gz";
const char *const shenzhenTrades = "orders_trades/szse_trades_2023-02-01_000001.csv.gz";

class FeedRecount : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (!QFileInfo(dataPath(shanghaiOrders)).exists())
            GTEST_SKIP() << "no recorded data in " << SHARED_DATA_DIR;
    }
};

} // namespace

TEST_F(FeedRecount, EveryShanghaiOrderEndsAsTheFilesSay)
{
    feed::ReplayFeed replay({dataPath(shanghaiOrders), dataPath(shanghaiTrades)});
    const PlayedFeed played = playFeed(replay);
    const CountedOrders counted = countShanghai(dataPath(shanghaiOrders), dataPath(shanghaiTrades));
    EXPECT_EQ(joined(played.messages), "");
    EXPECT_EQ(differences(counted, played), "");
    EXPECT_EQ(counted.size(), played.orders.size());
    EXPECT_EQ(played.orders.size(), 121840u);
    EXPECT_EQ(played.deals.size(), 79486u);
    EXPECT_EQ(filledShares(played), 115836344);
    EXPECT_EQ(played.counters.records, 110596 + 79486);
    for (const auto &update : played.updates)
        ASSERT_LE(update.filled + update.cancelled, update.quantity) << "order " << update.orderNo;
}

TEST_F(FeedRecount, EveryShenzhenOrderEndsAsItsDealsAndCancelsSay)
{
    feed::ReplayFeed replay({dataPath(shenzhenTrades)});
    const PlayedFeed played = playFeed(replay);
    const CountedOrders counted = countShenzhen(dataPath(shenzhenTrades));
    EXPECT_EQ(joined(played.messages), "");
    EXPECT_EQ(differences(counted, played), "");
    EXPECT_EQ(counted.size(), played.orders.size());
    EXPECT_EQ(played.deals.size(), 133815u);
}

TEST_F(FeedRecount, ARowCountsOnceInWhateverFilesItStands)
{
    feed::ReplayFeed threeStocks({dataPath(shanghaiOrders), dataPath(shanghaiTrades)});
    const PlayedFeed expected = playFeed(threeStocks);
    feed::ReplayFeed everything({dataPath("orders_trades/sse_trades_2023-07-11_605580.csv"), dataPath(shanghaiTrades),
                                 dataPath(shanghaiOrders), dataPath("orders_trades/sse_orders_2023-07-11_605580.csv")});
    const PlayedFeed played = playFeed(everything);
    EXPECT_EQ(played.counters.duplicates, 25537 + 16996);
    EXPECT_EQ(played.counters.records, expected.counters.records);
    ASSERT_EQ(played.updates.size(), expected.updates.size());
    for (size_t i = 0; i < played.updates.size(); ++i)
        ASSERT_EQ(played.updates[i].orderNo, expected.updates[i].orderNo) << "update " << i;
    EXPECT_EQ(filledShares(played), filledShares(expected));
}

TEST_F(FeedRecount, AllRecordedDaysPlayInOrderOfTimeAndEachStockInOrderOfItsNumbers)
{
    feed::ReplayFeed replay({dataPath("orders_trades"), dataPath("snapshots")});
    const PlayedFeed played = playFeed(replay);
    EXPECT_EQ(joined(played.messages), "");
    EXPECT_TRUE(std::is_sorted(played.times.begin(), played.times.end()));
    std::map<int, qint64> lastNumber;
    qint64 lastTime = 0;
    for (const auto &deal : played.deals) {
        ASSERT_GE(deal.time, lastTime);
        lastTime = deal.time;
        ASSERT_GT(deal.sequence, lastNumber[deal.instrument]);
        lastNumber[deal.instrument] = deal.sequence;
    }
    // 12,515 + 2,386 + 12,651 snapshots, one future row twice, and one stock also in a file of its own.
    EXPECT_EQ(played.counters.records, 110596 + 79486 + 166811 + 12514 + 2386 + 12651);
}
