#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <gtest/gtest.h>

#include "desk/desksettings.h"
#include "desk/exchangedays.h"
#include "desk/owndealspanel.h"
#include "desk/ownorderspanel.h"
#include "desk/tradedesk.h"
#include "deskrows.h"
#include "kv/caccountdata.h"
#include "loggedin.h"
#include "records/fieldids.h"
#include "services/accounts.h"
#include "services/instruments.h"
#include "table/chpfdatatable.h"
#include "trading/tradinghours.h"
#include "trading_support.h"

using namespace terminal;
using namespace refhost;
using namespace tradingtest;

namespace {

trading::OrderRequest buy(double price, qint64 quantity, const char *code = "600001.SH")
{
    return {"88001", code, feed::Side::Buy, trading::Offset::Open, price, quantity};
}

/// A desk with its orders and deals panels over a market of one stock, in continuous trading on a Monday.
class TradeDeskTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        auto accounts = std::make_unique<Accounts>();
        accounts->putAccount({QStringLiteral("88001"), QStringLiteral("股票"), kdservice::TraderStock, {}});
        accounts->putAccount({QStringLiteral("88002"), QStringLiteral("期货"), kdservice::TraderFuture, {}});
        setAccountData(std::move(accounts));
        orders = std::make_unique<OwnOrdersPanel>();
        deals = std::make_unique<OwnDealsPanel>();
        orders->show();
        deals->show();
    }
    void TearDown() override
    {
        desk.reset();
        orders.reset();
        deals.reset();
        setAccountData(nullptr);
    }
    void begin(const QString &file = {}, TradeDesk::Market market = TradeDesk::Market::Recorded)
    {
        desk = std::make_unique<TradeDesk>(market);
        orders->table().clear();
        deals->table().clear();
        QObject::connect(desk.get(), &TradeDesk::ordersChanged, orders.get(), &TablePanel::take);
        QObject::connect(desk.get(), &TradeDesk::dealsMade, deals.get(), &TablePanel::take);
        QObject::connect(desk.get(), &TradeDesk::dayBegan, orders.get(), &OwnRecordsPanel::beginDay);
        QObject::connect(desk.get(), &TradeDesk::dayBegan, deals.get(), &OwnRecordsPanel::beginDay);
        if (!file.isEmpty()) {
            ASSERT_EQ(desk->open(file).toStdString(), "");
        }
        desk->begin();
        desk->takeInstrument(stock(0, "600001.SH"));
        showMarket(monday, 0);
    }
    void showMarket(int day, int minute)
    {
        desk->takeQuote(quote(0, at(day, 10, minute), {{9.99, 500}, {9.98, 900}}, {{10, 500}, {10.01, 900}}, 10));
        settle();
    }
    void settle()
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return desk->desk().isSettled(); }));
    }
    void send(const trading::OrderRequest &request)
    {
        EXPECT_EQ(desk->send({request}).toStdString(), "");
        settle();
    }
    std::string orderRows() const
    {
        return deskRows(*orders, {OrderNumber, OrderDirection, OrderPrice, OrderQuantity, OrderFilled, OrderStatus});
    }
    std::string dealRows() const
    {
        return deskRows(*deals, {DealNumber, DealOrder, DealPrice, DealQuantity, DealAmount});
    }

    const LoggedIn user;
    std::unique_ptr<TradeDesk> desk;
    std::unique_ptr<OwnOrdersPanel> orders;
    std::unique_ptr<OwnDealsPanel> deals;
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("desk.db"));
};

} // namespace

TEST_F(TradeDeskTest, AnotherPriceThatWouldBeRefusedLeavesTheOrderWhereItStands)
{
    begin();
    send(buy(9.95, 1000));
    const std::string before = orderRows();
    const auto reprice = [&](double price) { return desk->reprice(1, price).toStdString(); };
    EXPECT_NE(reprice(11.5).find("高于涨停价"), std::string::npos);
    desk->takeQuote(quote(0, at(monday, 12, 0), {{9.99, 500}}, {{10, 500}}, 10));
    EXPECT_NE(reprice(9.97).find("未开市"), std::string::npos);
    EXPECT_EQ(orderRows(), before);
    desk->takeQuote(quote(0, at(monday, 14, 58), {{9.99, 500}}, {{10, 500}}, 10));
    EXPECT_NE(reprice(9.97).find("不能撤单"), std::string::npos);
    EXPECT_EQ(orderRows(), before);
}

/// Of the recorded days every sixtieth level is no whole lot.
TEST_F(TradeDeskTest, ARestThatIsNoWholeLotIsLeftOutAtAnotherPrice)
{
    begin();
    send(buy(9.98, 1000));
    desk->takeDeal(deal(0, at(monday, 10, 1), 9.97, 137, feed::DealKind::SellerInitiated));
    EXPECT_EQ(desk->reprice(1, 9.95).toStdString(), "");
    EXPECT_EQ(orderRows(), "2 买入 9.95 800 0 已报 \n1 买入 9.98 1,000 137 部撤 \n");
    desk->takeDeal(deal(0, at(monday, 10, 2), 9.94, 763, feed::DealKind::SellerInitiated));
    EXPECT_EQ(desk->reprice(2, 9.96).toStdString(), "委托 2 的剩余数量不足一手，不能改价，请撤单");
    EXPECT_EQ(desk->openOrders({}), (std::vector<qint64>{2}));
}

TEST_F(TradeDeskTest, OrdersThatBelongTogetherGoOutTogetherOrNotAtAll)
{
    begin();
    EXPECT_NE(desk->send({buy(9.9, 100), buy(9.9, 150)}).toStdString(), "");
    EXPECT_EQ(orderRows(), "");
    EXPECT_NE(desk->send({buy(10, 60'000), buy(10, 60'000)}).toStdString().find("可用资金"), std::string::npos)
        << "each by itself could be paid";
    EXPECT_EQ(orderRows(), "");
}

TEST_F(TradeDeskTest, OpenOrdersAreWithdrawnBySideAndPriceAndRepriced)
{
    begin();
    send(buy(10, 500));
    showMarket(tuesday, 0);
    send({"88001", "600001.SH", feed::Side::Sell, trading::Offset::Close, 10.1, 200});
    send(buy(9.9, 100));
    send(buy(9.8, 100));
    EXPECT_EQ(desk->openOrders({}), (std::vector<qint64>{2, 3, 4}));
    EXPECT_EQ(desk->openOrders({"600001.SH", feed::Side::Buy, 0}), (std::vector<qint64>{3, 4}));
    EXPECT_EQ(desk->openOrders({"600001.SH", feed::Side::Buy, feed::priceUnits(9.8)}), (std::vector<qint64>{4}));
    EXPECT_TRUE(desk->openOrders({"600002.SH", {}, 0}).empty());

    EXPECT_EQ(desk->reprice(4, 9.95).toStdString(), "");
    EXPECT_EQ(orderRows(), "5 买入 9.95 100 0 已报 \n4 买入 9.80 100 0 已撤 \n3 买入 9.90 100 0 已报 \n"
                           "2 卖出 10.10 200 0 已报 \n");
    EXPECT_EQ(desk->reprice(4, 9.9).toStdString(), "委托 4 已经结束，不能改价");
    EXPECT_EQ(desk->cancel(4).toStdString(), "委托 4 已经结束，不能撤单");
    for (const qint64 order : desk->openOrders({}))
        EXPECT_EQ(desk->cancel(order).toStdString(), "");
    EXPECT_TRUE(desk->openOrders({}).empty());
    EXPECT_NE(desk->reprice(5, 9.9).toStdString(), "");
}

TEST_F(TradeDeskTest, TheExchangesNextDaySettlesAndLetsSellWhatWasBought)
{
    begin(path, TradeDesk::Market::Simulated);
    send(buy(10, 300));
    send(buy(9.9, 100));
    const trading::OrderRequest sale{"88001", "600001.SH", feed::Side::Sell, trading::Offset::Close, 10.55, 300};
    EXPECT_NE(desk->send({sale}).toStdString(), "") << "bought today";
    EXPECT_NE(desk->send({buy(11.5, 100)}).toStdString(), "") << "above the limit";

    feed::Instrument next = stock(0, "600001.SH", 10.6); // the close
    desk->takeInstrument(next);
    desk->takeQuote(quote(0, at(tuesday, 9, 40), {{10.55, 500}}, {{10.6, 500}}, 10.6));
    settle();
    EXPECT_EQ(desk->books().at("88001").account().day, tuesday);
    EXPECT_EQ(desk->desk().broker().orders().size(), 0u) << "what was open has ended";
    EXPECT_EQ(orderRows(), "");
    send(buy(11.5, 100)); // within the limits of the new day
    send(sale);
    EXPECT_EQ(orderRows(), "4 卖出 10.55 300 300 已成 \n3 买入 11.50 100 100 已成 \n");
    desk.reset();

    begin(path, TradeDesk::Market::Simulated);
    EXPECT_EQ(desk->books().at("88001").account().day, tuesday) << "Monday once more would be time running back";
    showMarket(tuesday, 0);
    EXPECT_EQ(desk->books().at("88001").account().day, tuesday + 1);
    settle();
}

TEST(ExchangeDays, TheFirstIsTheDesksAndEachThatFollowsTheNextWeekday)
{
    const auto dayOf = [](qint64 time) { return trading::TradingHours::dayOf(trading::AccountKind::Stock, time); };
    ExchangeDays fresh;
    EXPECT_EQ(fresh.moved(at(monday, 10, 0), 0), at(monday, 10, 0));
    ExchangeDays days;
    EXPECT_EQ(days.moved(at(monday, 10, 0), friday), at(friday, 10, 0));
    EXPECT_EQ(days.moved(at(monday, 15, 0), friday), at(friday, 15, 0));
    EXPECT_EQ(days.moved(at(tuesday, 9, 30), friday), at(nextMonday, 9, 30)) << "no weekend";
    EXPECT_EQ(dayOf(days.moved(at(tuesday, 9, 29), friday)), nextMonday);
    EXPECT_EQ(days.moved(at(friday, 9, 30), friday), at(nextMonday + 1, 9, 30)) << "days between are not played";
}

TEST_F(TradeDeskTest, KnowsHowLongACodeHasBeenSilent)
{
    begin();
    EXPECT_EQ(desk->silence("600002.SH"), feed::absent<qint64>);
    QTest::qWait(60);
    const qint64 silent = desk->silence("600001.SH");
    EXPECT_GE(silent, 50);
    showMarket(monday, 1);
    EXPECT_LT(desk->silence("600001.SH"), silent);
}

TEST_F(TradeDeskTest, OpensTheAccountsOfTheProgramAndTellsWhatChangesAboutThem)
{
    begin();
    ASSERT_EQ(desk->books().size(), 2u);
    EXPECT_EQ(desk->books().at("88002").account().kind, trading::AccountKind::Future);
    ToldAccounts &told = desk->toldAccounts();
    EXPECT_EQ(told.takeChanges().accounts, (std::set<std::string>{"88001", "88002"})) << "all, at first";
    EXPECT_TRUE(told.takeChanges().accounts.empty());
    send(buy(10, 300));
    const trading::AccountChanges bought = told.takeChanges();
    EXPECT_EQ(bought.accounts, (std::set<std::string>{"88001"}));
    EXPECT_EQ(bought.positions.count({"88001", {"600001.SH", trading::PositionSide::Long}}), 1u);
    desk->takeQuote(quote(0, at(monday, 10, 1), {{10.1, 500}}, {{10.2, 500}}, 10.2));
    EXPECT_EQ(told.takeChanges().accounts, (std::set<std::string>{"88001"})) << "its stock has another price";
    EXPECT_EQ(told.books().at("88001").funds().total, desk->books().at("88001").funds().total);
}

TEST_F(TradeDeskTest, SenselessSettingsAreNotKept)
{
    DeskSettings settings;
    settings.mostLots = -1;
    settings.mostAmount = -5;
    settings.save();
    EXPECT_EQ(DeskSettings::load().mostLots, DeskSettings().mostLots);
    EXPECT_EQ(DeskSettings::load().mostAmount, DeskSettings().mostAmount);
}
