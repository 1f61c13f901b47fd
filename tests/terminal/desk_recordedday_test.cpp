#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <cmath>
#include <gtest/gtest.h>

#include "desk/tradedesk.h"
#include "feed/instrumentrules.h"
#include "feed/replay/replayfeed.h"
#include "loggedin.h"
#include "services/accounts.h"
#include "trading/deskstore.h"
#include "window/feedpump.h"

using namespace terminal;
using namespace refhost;

namespace {

/// The program's only account, for as long as it lives.
struct OneAccount
{
    OneAccount(const char *id, kdservice::EVxTraderType type)
    {
        auto accounts = std::make_unique<Accounts>();
        accounts->putAccount({QLatin1String(id), QStringLiteral("测试"), type, {}});
        setAccountData(std::move(accounts));
    }
    ~OneAccount() { setAccountData(nullptr); }

    const LoggedIn user;
};

constexpr int recordedMorning = 10 * 60 + 30; ///< minutes after midnight at which the market is paused

/// A trader who buys at once, waits in the queue and changes his mind, by the market's clock.
class Trader : public MarketListener
{
public:
    Trader(TradeDesk &traded, FeedPump &played) : desk(traded), pump(played) {}

    void takeInstrument(const feed::Instrument &instrument) override
    {
        if (codes.size() <= size_t(instrument.index))
            codes.resize(size_t(instrument.index) + 1);
        codes[size_t(instrument.index)] = instrument.code;
    }
    void takeQuote(const feed::QuoteSnapshot &quote) override
    {
        const qint64 minute = (quote.time + feed::chinaOffset) / 60'000 % (24 * 60);
        if (minute >= recordedMorning && !pump.isPaused())
            pump.setPaused(true);
        if (minute <= lastMinute || quote.bids[4].price == feed::absent<double>)
            return;
        lastMinute = minute;
        const std::string &code = codes[size_t(quote.instrument)];
        switch (minute % 4) {
        case 0:
            send(code, quote.asks[0].price, 300);
            break;
        case 1:
            send(code, quote.bids[0].price, 200);
            break;
        case 2:
            send(code, quote.bids[4].price, 400);
            break;
        default:
            if (const auto open = desk.openOrders({}); open.size() > 3)
                desk.cancel(open.front());
        }
    }

private:
    void send(const std::string &code, double price, qint64 quantity)
    {
        desk.send({{"88001", code, feed::Side::Buy, trading::Offset::Open, price, quantity}});
    }

    TradeDesk &desk;
    FeedPump &pump;
    std::vector<std::string> codes;
    qint64 lastMinute = 0;
};

} // namespace

TEST(DeskRecordedDay, FundsPositionsAndDealsReconcileInTheMiddleOfIt)
{
    const QString recorded = QStringLiteral(SHARED_DATA_DIR "/snapshots/szse_snapshot_2022-06-01_3stocks.csv.gz");
    if (!QFileInfo::exists(recorded))
        GTEST_SKIP() << "no recorded data";
    const OneAccount account("88001", kdservice::TraderStock);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("desk.db"));
    {
        constexpr double speed = 2000;
        FeedPump pump(
            std::make_unique<feed::MarketFeed>(std::make_unique<feed::ReplayFeed>(QStringList{recorded}), speed));
        TradeDesk desk(TradeDesk::Market::Recorded);
        pump.addListener(desk);
        ASSERT_EQ(desk.open(path).toStdString(), "");
        desk.begin();
        Trader trader(desk, pump);
        pump.addListener(trader);
        pump.start();
        ASSERT_TRUE(QTest::qWaitFor([&] { return pump.isPaused() || pump.isFinished(); }, 60'000));
        ASSERT_TRUE(QTest::qWaitFor([&] { return desk.desk().isSettled(); }));
        pump.stop();
    }

    trading::DeskStore store;
    trading::DeskState state;
    ASSERT_EQ(store.open(path).toStdString(), "");
    ASSERT_EQ(store.load(state).toStdString(), "");
    ASSERT_GT(state.orders.size(), 20u);
    ASSERT_GT(state.deals.size(), 10u);
    trading::Money cash = 1'000'000 * trading::yuan;
    std::map<std::string, qint64> shares;
    std::map<qint64, qint64> filled;
    for (const trading::PaperDeal &deal : state.deals) {
        cash -= deal.amount + deal.charges.total();
        shares[deal.code] += deal.quantity;
        filled[deal.order] += deal.quantity;
    }
    EXPECT_EQ(state.accounts.at(0).balance, cash);
    EXPECT_EQ(state.positions.size(), shares.size());
    for (const trading::Position &position : state.positions)
        EXPECT_EQ(position.quantity(), shares[position.code]) << position.code;
    for (const trading::PaperOrder &order : state.orders)
        EXPECT_EQ(order.filled.quantity, filled[order.id]) << order.id;
}

namespace {

/// Opens and closes both sides of a future, a step a minute, at the price that the other side asks.
class FuturesTrader : public MarketListener
{
public:
    explicit FuturesTrader(TradeDesk &traded) : desk(traded) {}

    void takeInstrument(const feed::Instrument &instrument) override
    {
        code = instrument.code;
        multiplier = instrument.multiplier;
    }
    void takeQuote(const feed::QuoteSnapshot &quote) override
    {
        if (quote.last != feed::absent<double> && quote.last > 0)
            last = quote.last;
        const qint64 minute = quote.time / 60'000;
        if (minute <= lastMinute || quote.bids[0].price == feed::absent<double> ||
            quote.asks[0].price == feed::absent<double>)
            return;
        lastMinute = minute;
        const struct
        {
            feed::Side side;
            trading::Offset offset;
            qint64 quantity;
        } steps[] = {{feed::Side::Buy, trading::Offset::Open, 2},
                     {feed::Side::Sell, trading::Offset::Open, 1},
                     {feed::Side::Sell, trading::Offset::Close, 1},
                     {feed::Side::Buy, trading::Offset::Close, 1}};
        const auto &step = steps[minute % 4];
        desk.send({{"88002", code, step.side, step.offset,
                    step.side == feed::Side::Buy ? quote.asks[0].price : quote.bids[0].price, step.quantity}});
    }

    std::string code;
    int multiplier = 1;
    double last = 0;

private:
    TradeDesk &desk;
    qint64 lastMinute = 0;
};

} // namespace

/// Apples: five yuan a lot, twenty for one that is closed on the day on which it was opened, and ten tonnes a lot.
TEST(DeskRecordedDay, AFuturesAccountComesToWhatItsDealsAndTheTableOfFeesSay)
{
    const QString recorded = QStringLiteral(SHARED_DATA_DIR "/snapshots/ctp_tick_2020-08-03_AP010.csv.gz");
    if (!QFileInfo::exists(recorded))
        GTEST_SKIP() << "no recorded data";
    const OneAccount account("88002", kdservice::TraderFuture);
    {
        FeedPump pump(std::make_unique<feed::MarketFeed>(std::make_unique<feed::ReplayFeed>(QStringList{recorded}),
                                                         feed::MarketFeed::maxSpeed, 1));
        TradeDesk desk(TradeDesk::Market::Recorded);
        FuturesTrader trader(desk);
        std::vector<trading::PaperDeal> deals;
        QObject::connect(&desk, &TradeDesk::filled, [&](const trading::PaperDeal &deal) { deals.push_back(deal); });
        pump.addListener(desk);
        pump.addListener(trader);
        desk.begin();
        pump.start();
        ASSERT_TRUE(QTest::qWaitFor([&] { return pump.isFinished(); }, 60'000));

        long long cents = 100'000'000;
        long long lots = 0;
        int closed = 0;
        for (const trading::PaperDeal &deal : deals) {
            const bool isBuy = deal.side == feed::Side::Buy;
            const long long amount = std::llround(feed::priceOfUnits(deal.price) * 100) * deal.quantity * 10;
            cents += isBuy ? -amount : amount;
            cents -= (deal.offset == trading::Offset::Open ? 500 : 2000) * deal.quantity;
            lots += isBuy ? deal.quantity : -deal.quantity;
            closed += deal.offset != trading::Offset::Open;
        }
        cents += std::llround(trader.last * 100) * lots * 10;
        ASSERT_EQ(trader.multiplier, 10);
        EXPECT_GT(deals.size(), 40u);
        EXPECT_GT(closed, 10);
        const trading::Funds funds = desk.books().at("88002").funds();
        EXPECT_EQ(funds.total, cents * trading::cent);
        EXPECT_EQ(desk.toldAccounts().books().at("88002").funds().total, cents * trading::cent);
        qint64 held = 0;
        trading::Money margin = 0;
        for (const auto &[key, position] : desk.books().at("88002").positions()) {
            held += key.second == trading::PositionSide::Long ? position.quantity() : -position.quantity();
            margin += position.basis() / 10;
        }
        EXPECT_EQ(held, lots);
        EXPECT_NEAR(double(funds.margin), double(margin), double(2 * trading::cent)) << "a tenth";
        pump.stop();
    }
}
