#include <gtest/gtest.h>

#include "desk/ticketorders.h"
#include "desk/tradedesk.h"
#include "kv/eselectedaccounttype.h"
#include "loggedin.h"
#include "services/accounts.h"
#include "trading_support.h"

using namespace terminal;
using namespace refhost;
using namespace tradingtest;

namespace {

/// Two accounts of each kind, in a group and composed, and a market of a stock and of a future of Shanghai, where
/// yesterday's and today's lots are closed by orders of different names.
class DeskOrders : public ::testing::Test
{
protected:
    DeskOrders()
    {
        auto accounts = std::make_unique<Accounts>();
        for (const char *id : {"S1", "S2"})
            accounts->putAccount({QLatin1String(id), {}, kdservice::TraderStock, {}});
        for (const char *id : {"F1", "F2"})
            accounts->putAccount({QLatin1String(id), {}, kdservice::TraderFuture, {}});
        accounts->putComposedAccount({QStringLiteral("Z"), {}, kdservice::TraderFuture, {"F1", "F2"}});
        accounts->putGroup(QStringLiteral("all"), {"S1", "S2", "F1"});
        setAccountData(std::move(accounts));
        desk = std::make_unique<TradeDesk>(TradeDesk::Market::Recorded);
        desk->begin();
        desk->takeInstrument(stock(0, "600000.SH"));
        desk->takeInstrument(future(1, "rb2410", "SHFE"));
        showMarket(monday);
    }
    ~DeskOrders() override
    {
        desk.reset();
        setAccountData(nullptr);
    }
    void showMarket(int day)
    {
        desk->takeQuote(quote(0, at(day, 10, 0), {{9.99, 50'000}, {9.98, 9000}}, {{10, 20'000}, {10.02, 9000}}, 10));
        desk->takeQuote(quote(1, at(day, 10, 0), {{3500, 50}}, {{3501, 50}}, 3500));
    }
    void open(const char *account, qint64 lots)
    {
        ASSERT_EQ(desk->send({{account, "rb2410", feed::Side::Buy, trading::Offset::Open, 3501, lots}}).toStdString(),
                  "");
    }
    static OrderDraft draft(kdservice::EVxTraderType trade, const char *account, qint64 quantity)
    {
        OrderDraft draft;
        draft.trade = trade;
        draft.accountKind = KV::SelectedAccount;
        draft.account = QLatin1String(account);
        draft.code = trade == kdservice::TraderFuture ? QStringLiteral("rb2410") : QStringLiteral("600000.SH");
        draft.price = trade == kdservice::TraderFuture ? 3500 : 10;
        draft.quantity = quantity;
        return draft;
    }
    /// "account side offset price quantity" a line, or what is wrong.
    std::string made(const OrderDraft &draft) const { return text(ticketorders::fromDraft(draft, *desk)); }
    static std::string text(const ticketorders::Made &made)
    {
        std::string lines;
        for (const trading::OrderRequest &request : made.requests)
            lines += request.account + ' ' + char(request.side) + ' ' + char(request.offset) + ' ' +
                     QString::number(request.price).toStdString() + ' ' + std::to_string(request.quantity) + '\n';
        return lines + made.problem.toStdString();
    }

    const LoggedIn user;
    std::unique_ptr<TradeDesk> desk;
};

} // namespace

TEST_F(DeskOrders, EveryAccountOfAChoiceGetsAnOrder)
{
    OrderDraft order = draft(kdservice::TraderStock, "S2", 100);
    EXPECT_EQ(made(order), "S2 0 0 10 100\n");
    order.accountKind = KV::SelectedAccountGroup;
    order.account = QStringLiteral("all");
    EXPECT_EQ(made(order), "S1 0 0 10 100\nS2 0 0 10 100\n");
    order.account = QStringLiteral("gone");
    EXPECT_EQ(made(order), "账户 gone 中没有可以交易的账户，请重新选择");
    OrderDraft composed = draft(kdservice::TraderFuture, "Z", 1);
    composed.accountKind = KV::SelectedComposedAccount;
    EXPECT_EQ(made(composed), "F1 0 0 3500 1\nF2 0 0 3500 1\n");
    EXPECT_EQ(made(draft(kdservice::TraderCredit, "S1", 100)), "模拟交易没有融资融券，请改用股票业务");
}

TEST_F(DeskOrders, PricesOfTheMarketComeFromTheLatestQuote)
{
    OrderDraft order = draft(kdservice::TraderStock, "S1", 100);
    order.priceType = KV::PriceOpposite;
    EXPECT_EQ(made(order), "S1 0 0 10 100\n");
    order.priceType = KV::PriceBestFive;
    EXPECT_EQ(made(order), "S1 0 0 10.02 100\n") << "the last level that there is";
    order.priceType = KV::PriceOwnBest;
    EXPECT_EQ(made(order), "S1 0 0 9.99 100\n");
    desk->takeQuote(quote(0, at(monday, 10, 1), {}, {{10, 100}}, 10));
    EXPECT_EQ(made(order), "600000.SH 现在没有本方最优，请改用限价");
}

TEST_F(DeskOrders, ClosingTakesTodaysLotsWhereThoseFromBeforeDoNotSuffice)
{
    open("F1", 3);
    showMarket(tuesday);
    open("F1", 2);
    OrderDraft order = draft(kdservice::TraderFuture, "F1", 2);
    order.isLong = true;
    order.isOpen = false;
    EXPECT_EQ(made(order), "F1 1 1 3500 2\n");
    order.quantity = 4;
    EXPECT_EQ(made(order), "F1 1 1 3500 3\nF1 1 3 3500 1\n");
    EXPECT_EQ(ticketorders::funds(order, *desk).sellable, 5);
    EXPECT_EQ(text(ticketorders::closeAll(*desk, {})), "F1 1 1 3500 3\nF1 1 3 3500 2\n");
    desk->takeQuote(quote(1, at(tuesday, 10, 1), {}, {{3501, 5}}, 3500));
    EXPECT_EQ(text(ticketorders::closeAll(*desk, {})), "rb2410 没有对手价，未平");
}

TEST_F(DeskOrders, WhatIsClosedGoesOutInPiecesThatTheUserLetsGoOut)
{
    open("F1", 8);
    showMarket(tuesday);
    DeskSettings settings;
    settings.mostLots = 3;
    EXPECT_EQ(text(ticketorders::closeAll(*desk, settings)), "F1 1 1 3500 3\nF1 1 1 3500 3\nF1 1 1 3500 2\n");
    settings.mostLots = 100;
    settings.mostAmount = 180'000; // five lots of 35,000
    EXPECT_EQ(text(ticketorders::closeAll(*desk, settings)), "F1 1 1 3500 5\nF1 1 1 3500 3\n");
    desk->send({{"F1", "rb2410", feed::Side::Sell, trading::Offset::Close, 3600, 6}});
    EXPECT_EQ(text(ticketorders::closeAll(*desk, {})), "F1 1 1 3500 2\nrb2410 另有 6 已在平仓委托中");
}

TEST_F(DeskOrders, MoneyIsToldAsWhatItBuysChargesAndMarginIncluded)
{
    const TicketFunds money = ticketorders::funds(draft(kdservice::TraderStock, "S1", 0), *desk);
    EXPECT_EQ(money.available, 999'000) << "a hundred shares more would not leave the charges";
    EXPECT_EQ(money.sellable, 0);
    OrderDraft order = draft(kdservice::TraderFuture, "F1", 0);
    const TicketFunds margin = ticketorders::funds(order, *desk);
    const qint64 lots = qint64(margin.available / 35'000);
    EXPECT_FALSE(desk->desk().broker().check({"F1", "rb2410", feed::Side::Buy, trading::Offset::Open, 3500, lots}));
    EXPECT_TRUE(desk->desk().broker().check({"F1", "rb2410", feed::Side::Buy, trading::Offset::Open, 3500, lots + 1}));
    order.account = QStringLiteral("nobody");
    EXPECT_EQ(ticketorders::funds(order, *desk).available, feed::absent<double>);
}
