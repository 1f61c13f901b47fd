#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlQuery>
#include <QtTest/QTest>
#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

#include "trading/deskstore.h"
#include "trading/historyreader.h"
#include "trading/historysearch.h"
#include "trading_support.h"

using trading::HistoryPage;
using trading::HistoryQuery;
using trading::HistorySearch;
using trading::PaperOrder;

namespace {

/// Orders of many days, as the file keeps them.
std::vector<PaperOrder> randomOrders(int count, unsigned seed)
{
    std::mt19937 numbers(seed);
    const auto below = [&](int bound) { return int(numbers() % unsigned(bound)); };
    std::vector<PaperOrder> orders;
    for (int i = 0; i < count; ++i) {
        PaperOrder order;
        order.id = i + 1;
        order.account = below(3) == 0 ? "F1" : "S1";
        order.code = std::to_string(600001 + below(20)) + ".SH";
        order.day = 20240318 + below(5);
        order.side = below(2) == 0 ? feed::Side::Buy : feed::Side::Sell;
        order.price = 90'000 + 100 * below(50);
        order.quantity = 100 * (1 + below(9));
        order.filled.quantity = 100 * below(2);
        order.cancelled = order.quantity - order.filled.quantity;
        order.filled.amount = order.filled.quantity * order.price;
        order.charges = {below(900), below(90), below(9)};
        order.status = below(4) == 0 ? feed::OrderStatus::Cancelled : feed::OrderStatus::Filled;
        orders.push_back(order);
    }
    return orders;
}

template <typename Value>
bool passes(const std::vector<Value> &list, const Value &value)
{
    return list.empty() || std::find(list.begin(), list.end(), value) != list.end();
}

/// What a search should find, the slow way.
std::vector<qint64> expected(const std::vector<PaperOrder> &orders, const HistoryQuery &query)
{
    std::vector<const PaperOrder *> found;
    for (const PaperOrder &order : orders)
        if (passes(query.accounts, order.account) && passes(query.codes, order.code) && passes(query.days, order.day) &&
            passes(query.sides, char(order.side)) && passes(query.states, char(order.status)))
            found.push_back(&order);
    const auto compare = [&](const PaperOrder *a, const PaperOrder *b) -> qint64 {
        switch (query.sort) {
        case HistoryQuery::Sort::Code:
            return a->code.compare(b->code);
        case HistoryQuery::Sort::Price:
            return a->price - b->price;
        case HistoryQuery::Sort::Quantity:
            return a->quantity - b->quantity;
        case HistoryQuery::Sort::Day:
            return a->day - b->day;
        default:
            return a->id - b->id;
        }
    };
    std::sort(found.begin(), found.end(), [&](const PaperOrder *a, const PaperOrder *b) {
        const qint64 difference = query.isDescending ? compare(b, a) : compare(a, b);
        return difference != 0 ? difference < 0 : a->id > b->id;
    });
    std::vector<qint64> ids;
    for (const PaperOrder *order : found)
        ids.push_back(order->id);
    return ids;
}

std::vector<qint64> idsOf(const HistoryPage &page)
{
    std::vector<qint64> ids;
    for (const PaperOrder &order : page.orders)
        ids.push_back(order.id);
    return ids;
}

std::string sumsText(const HistoryPage &page)
{
    const trading::HistorySums &sums = page.sums;
    std::string text = page.hasSums ? "" : "none ";
    for (const qint64 sum : {sums.quantity, sums.filled, sums.cancelled, sums.amount, sums.charges})
        text += std::to_string(sum) + ' ';
    return text;
}

std::string expectedSums(const std::vector<PaperOrder> &orders, const std::vector<qint64> &ids)
{
    HistoryPage page;
    page.hasSums = true;
    for (const qint64 id : ids) {
        const PaperOrder &order = orders[size_t(id - 1)];
        page.sums.quantity += order.quantity;
        page.sums.filled += order.filled.quantity;
        page.sums.cancelled += order.cancelled;
        page.sums.amount += order.filled.amount;
        page.sums.charges += order.charges.total();
    }
    return sumsText(page);
}

HistoryQuery randomQuery(std::mt19937 &numbers)
{
    const auto below = [&](int bound) { return int(numbers() % unsigned(bound)); };
    HistoryQuery query;
    if (below(3) == 0)
        query.accounts = {"F1"};
    for (int i = below(4); i > 0; --i)
        query.codes.push_back(std::to_string(600001 + below(20)) + ".SH");
    for (int i = below(3); i > 0; --i)
        query.days.push_back(20240318 + below(6));
    if (below(3) == 0)
        query.sides = {'1'};
    if (below(3) == 0)
        query.states = {char(feed::OrderStatus::Cancelled)};
    using Sort = HistoryQuery::Sort;
    constexpr Sort sorts[] = {Sort::Entry, Sort::Entry, Sort::Code, Sort::Price, Sort::Quantity, Sort::Day};
    query.sort = sorts[below(6)];
    query.isDescending = below(2) == 0;
    return query;
}

class TradingHistory : public ::testing::Test
{
protected:
    /// A file with many orders, made by the database itself: a row costs a microsecond or two.
    void generate(int count)
    {
        {
            trading::DeskStore store;
            ASSERT_EQ(store.open(path).toStdString(), "");
        }
        {
            QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("generate"));
            database.setDatabaseName(path);
            ASSERT_TRUE(database.open());
            QSqlQuery query(database);
            for (const QString &statement :
                 {QStringLiteral("PRAGMA synchronous = OFF"), QStringLiteral("BEGIN"),
                  QStringLiteral("DROP INDEX orders_of_day"), QStringLiteral("DROP INDEX orders_of_code"),
                  QStringLiteral(
                      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1)"
                      " INSERT INTO orders SELECT i, 'S1', printf('%06d.SH', 600000 + i % 1000), '测试', 'SH',"
                      " 20200101 + i / 10000, 48 + i % 2, 48, 100000 + i % 97 * 100, 100, 0, 100, 1, 0, 0, 5, 0, 0, 0,"
                      " 0, 56, i, i, '' FROM n")
                      .arg(count),
                  QStringLiteral("CREATE INDEX orders_of_day ON orders(account, day)"),
                  QStringLiteral("CREATE INDEX orders_of_code ON orders(code)"), QStringLiteral("COMMIT")})
                ASSERT_TRUE(query.exec(statement)) << statement.toStdString();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("generate"));
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("desk.db"));
};

/// Resident memory of the program in MB.
int memory()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return int(file.readAll().split(' ')[1].toLongLong() * 4096 / 1'000'000);
}

} // namespace

TEST_F(TradingHistory, FindsWhatALookAtEveryRowFindsPageByPage)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    const std::vector<PaperOrder> orders = randomOrders(2000, seed);
    trading::DeskStore store;
    ASSERT_EQ(store.open(path).toStdString(), "");
    trading::DeskChange change;
    change.orders = orders;
    ASSERT_EQ(store.apply({change}).toStdString(), "");

    HistorySearch search;
    ASSERT_EQ(search.open(path).toStdString(), "");
    std::mt19937 numbers(seed);
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const HistoryQuery query = round == 0 ? HistoryQuery() : randomQuery(numbers);
        search.begin(query);
        while (!search.isSummed())
            search.step();
        const std::vector<qint64> ids = expected(orders, query);
        EXPECT_EQ(sumsText(search.page(0, 0)), expectedSums(orders, ids));
        std::vector<qint64> read;
        for (qint64 start = 0; start <= qint64(ids.size()); start += 300) {
            const HistoryPage page = search.page(start, 300);
            EXPECT_EQ(page.problem.toStdString(), "");
            EXPECT_EQ(page.total, qint64(ids.size()));
            const std::vector<qint64> more = idsOf(page);
            read.insert(read.end(), more.begin(), more.end());
        }
        EXPECT_EQ(read, ids);
        EXPECT_TRUE(search.page(qint64(ids.size()) + 5, 100).orders.empty());
    }
    const trading::HistoryChoices choices = search.choices();
    EXPECT_EQ(choices.accounts, (std::vector<std::string>{"F1", "S1"}));
    EXPECT_EQ(choices.days, (std::vector<int>{20240318, 20240319, 20240320, 20240321, 20240322}));
    EXPECT_EQ(choices.codes.size(), 20u);
}

TEST_F(TradingHistory, ReadsEveryColumnOfADeal)
{
    using namespace tradingtest;
    trading::PaperBroker broker;
    broker.openAccount(stockAccount());
    broker.takeInstrument(stock(0, "600001.SH"));
    broker.takeQuote(quote(0, at(monday, 10, 0), {{9.99, 1000}}, {{10, 1000}}));
    send(broker, {"S1", "600001.SH", feed::Side::Buy, trading::Offset::Open, 10, 300});
    broker.takeQuote(quote(0, at(tuesday, 10, 0), {{10.99, 1000}}, {{11, 1000}}));
    send(broker, {"S1", "600001.SH", feed::Side::Sell, trading::Offset::Close, 10.99, 200});
    const trading::DeskChange change = broker.takeChanges();
    trading::DeskStore store;
    ASSERT_EQ(store.open(path).toStdString(), "");
    ASSERT_EQ(store.apply({change}).toStdString(), "");

    HistorySearch search;
    ASSERT_EQ(search.open(path).toStdString(), "");
    HistoryQuery query;
    query.kind = HistoryQuery::Kind::Deals;
    search.begin(query);
    const HistoryPage page = search.page(0, 10);
    EXPECT_FALSE(page.hasSums) << "the page does not wait for them";
    const auto fields = [](const trading::PaperDeal &deal) {
        return std::tie(deal.id, deal.order, deal.account, deal.code, deal.name, deal.exchange, deal.day, deal.side,
                        deal.offset, deal.price, deal.quantity, deal.amount, deal.realised, deal.time,
                        deal.charges.commission, deal.charges.stampDuty, deal.charges.transferFee);
    };
    ASSERT_EQ(page.deals.size(), 2u);
    for (const size_t newest : {0u, 1u})
        EXPECT_EQ(fields(page.deals[newest]), fields(change.deals.at(1 - newest)));
    search.step();
    EXPECT_EQ(sumsText(search.page(0, 10)), "500 0 0 51980000 111500 ");
}

TEST_F(TradingHistory, OnlyTheLastQuestionIsAnsweredAndNewRowsComeWhenAskedAnew)
{
    trading::DeskStore store;
    ASSERT_EQ(store.open(path).toStdString(), "");
    std::vector<PaperOrder> orders = randomOrders(50, 1);
    trading::DeskChange change;
    change.orders = {orders.begin(), orders.begin() + 40};
    ASSERT_EQ(store.apply({change}).toStdString(), "");

    trading::HistoryReader reader(path);
    qint64 answered = 0;
    HistoryPage last;
    QObject::connect(&reader, &trading::HistoryReader::pageRead, &reader, [&](qint64 number, const HistoryPage &page) {
        EXPECT_GE(number, answered);
        answered = number;
        last = page;
    });
    HistoryQuery query;
    query.accounts = {"S1"};
    for (int i = 0; i < 20; ++i)
        reader.ask(query, i, 5, i == 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return answered == 20 && last.isComplete; }));
    EXPECT_EQ(last.start, 19);
    const qint64 before = last.total;

    change.orders = {orders.begin() + 40, orders.end()};
    ASSERT_EQ(store.apply({change}).toStdString(), "");
    reader.ask(query, 0, 5, false);
    ASSERT_TRUE(QTest::qWaitFor([&] { return answered == 21; }));
    EXPECT_EQ(last.total, before);
    reader.ask(query, 0, 5, true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return answered == 22; }));
    EXPECT_EQ(last.total, qint64(expected(orders, query).size()));
}

TEST_F(TradingHistory, AFileThatCannotBeReadIsSaidSo)
{
    trading::HistoryReader reader(folder.filePath(QStringLiteral("none/desk.db")));
    QString problem;
    QObject::connect(&reader, &trading::HistoryReader::pageRead, &reader,
                     [&](qint64, const HistoryPage &page) { problem = page.problem; });
    reader.ask({}, 0, 100, true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !problem.isEmpty(); }));
    EXPECT_EQ(problem.toStdString(), "打不开或建不了这个文件，请检查文件夹和权限");
}

TEST_F(TradingHistory, ASortIsManyStepsAndEndsBetweenTwoOfThem)
{
    constexpr int count = 300'000;
    generate(count);
    if (HasFatalFailure())
        return;
    std::vector<qint64> cheapestFirst(count);
    std::iota(cheapestFirst.begin(), cheapestFirst.end(), 1);
    const auto price = [](qint64 id) { return id % 97; };
    std::sort(cheapestFirst.begin(), cheapestFirst.end(),
              [&](qint64 a, qint64 b) { return price(a) != price(b) ? price(a) < price(b) : a > b; });
    std::vector<qint64> dearestFirst = cheapestFirst;
    std::stable_sort(dearestFirst.begin(), dearestFirst.end(), [&](qint64 a, qint64 b) { return price(a) > price(b); });

    HistorySearch search;
    ASSERT_EQ(search.open(path).toStdString(), "");
    HistoryQuery query;
    query.sort = HistoryQuery::Sort::Price;
    for (const bool isDescending : {false, true}) {
        query.isDescending = isDescending;
        search.begin(query);
        for (int i = 0; i < 6; ++i) // another search begins in the middle of taking the rows out
            search.step();
        EXPECT_FALSE(search.isComplete());
        search.begin(query);
        int steps = 0;
        for (; !search.isComplete(); ++steps)
            search.step();
        EXPECT_EQ(steps, 3 + 2 + 2) << "looked through, keys gathered, rows taken";
        EXPECT_EQ(search.page(0, 0).problem.toStdString(), "");
        EXPECT_EQ(search.page(0, 0).total, count);
        const std::vector<qint64> &expected = isDescending ? dearestFirst : cheapestFirst;
        for (const qint64 start : {0, 249'950, count - 100})
            EXPECT_EQ(idsOf(search.page(start, 100)),
                      (std::vector<qint64>(expected.begin() + start, expected.begin() + start + 100)))
                << "from row " << start;
    }
}

/// HISTORY_ROWS=10000000 for ten million.
TEST_F(TradingHistory, APageFarBehindCostsNoMoreThanTheFirstAndMemoryHoldsPagesOnly)
{
    const int count =
        qEnvironmentVariableIsSet("HISTORY_ROWS") ? qEnvironmentVariableIntValue("HISTORY_ROWS") : 300'000;
    generate(count);
    if (HasFatalFailure())
        return;
    HistorySearch search;
    ASSERT_EQ(search.open(path).toStdString(), "");
    const int before = memory();
    std::mt19937 numbers(1);
    const auto expectQuickPages = [&](const HistoryQuery &query, qint64 total) {
        QElapsedTimer time;
        time.start();
        search.begin(query);
        while (!search.isComplete())
            search.step();
        const qint64 searched = time.elapsed();
        EXPECT_EQ(search.page(0, 1).total, total);
        double slowest = 0;
        for (int i = 0; i < 30; ++i) {
            const qint64 start = i == 0 ? total - 100 : qint64(numbers() % unsigned(total - 100));
            time.start();
            EXPECT_EQ(search.page(start, 100).orders.size(), 100u);
            slowest = std::max(slowest, double(time.nsecsElapsed()) / 1e6);
        }
        std::printf("%lld of %d rows: searched in %lld ms, slowest page %.2f ms\n", total, count, searched, slowest);
        EXPECT_LT(slowest, 50) << "milliseconds; usually under one";
    };
    HistoryQuery query;
    expectQuickPages(query, count);
    query.sides = {'0'};
    expectQuickPages(query, count / 2);
    query.codes = {"600007.SH", "600008.SH"};
    query.sort = HistoryQuery::Sort::Price;
    expectQuickPages(query, count / 1000);
    EXPECT_LT(memory() - before, 60);
}
