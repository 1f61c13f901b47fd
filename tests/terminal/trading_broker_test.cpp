#include <gtest/gtest.h>

#include "trading/tradinghours.h"
#include "trading_support.h"

using namespace tradingtest;
using feed::DealKind;
using feed::Side;
using trading::Offset;
using trading::OrderRequest;
using trading::PaperBroker;
using trading::TradingHours;
using Reason = trading::Refusal::Reason;

namespace {

constexpr int shares = 0;
constexpr int rebar = 1;
constexpr int index300 = 2;

std::string money(trading::Money amount)
{
    return trading::moneyText(amount).toStdString();
}

/// A stock and two futures in the middle of Monday morning.
class TradingBroker : public ::testing::Test
{
protected:
    TradingBroker()
    {
        broker.openAccount(stockAccount());
        broker.openAccount(futureAccount());
        broker.takeInstrument(stock(shares, "600001.SH"));
        broker.takeInstrument(future(rebar, "rb2410"));
        broker.takeInstrument(future(index300, "IF2404"));
        show(monday, 10, 0);
    }

    /// The same books at another moment.
    void show(int day, int hour, int minute, double price = 10.00)
    {
        const qint64 time = at(day, hour, minute);
        broker.takeQuote(quote(shares, time, {{price - 0.01, 10000}}, {{price, 10000}}, price));
        broker.takeQuote(quote(rebar, time, {{3499, 100}}, {{3500, 100}}, 3500));
        broker.takeQuote(quote(index300, time, {{3599.8, 50}}, {{3600, 50}}, 3600));
    }

    qint64 stocks(Side side, double price, qint64 quantity)
    {
        return send(broker, stockRequest(side, price, quantity));
    }
    qint64 futures(Side side, Offset offset, double price, qint64 quantity, const char *code = "rb2410")
    {
        return send(broker, {"F1", code, side, offset, price, quantity});
    }
    static OrderRequest stockRequest(Side side, double price, qint64 quantity)
    {
        return {"S1", "600001.SH", side, Offset::Open, price, quantity};
    }
    Reason reasonOf(const OrderRequest &request) const { return broker.check(request).reason; }
    std::string charges(qint64 order) const
    {
        const trading::Charges &sum = broker.orders().at(order).charges;
        return money(sum.commission) + ' ' + money(sum.stampDuty) + ' ' + money(sum.transferFee);
    }

    PaperBroker broker;
};

} // namespace

TEST_F(TradingBroker, AStockIsPaidWithChargesAndSoldFromTheNextDayOn)
{
    const qint64 bought = stocks(Side::Buy, 10.00, 1000);
    EXPECT_EQ(charges(bought), "5.00 0.00 0.10") << "the least commission";
    EXPECT_EQ(positionsText(broker, "S1"), "600001.SH long 0+1000 10005.10\n");
    EXPECT_EQ(fundsText(broker, "S1"), "999994.90 989994.90 0.00");

    const trading::Refusal refusal = broker.check(stockRequest(Side::Sell, 9.99, 500));
    EXPECT_EQ(refusal.reason, Reason::NotEnoughPosition);
    EXPECT_EQ(refusal.text.toStdString(),
              "账户 S1 的 测试 600001.SH 可卖 0 股，少于委托的 500 股（持仓 1000 股，其中今日买入 1000 "
              "股，下一交易日才可卖出），请减少数量");
    show(tuesday, 10, 0, 11.00);
    const qint64 sold = stocks(Side::Sell, 10.99, 500);
    EXPECT_EQ(charges(sold), "5.00 2.75 0.05");
    EXPECT_EQ(fundsText(broker, "S1"), "1000982.10 995482.10 0.00");
    EXPECT_EQ(money(broker.accounts().at("S1").funds().withdrawable), "989994.90")
        << "proceeds can be traded at once, and withdrawn from the next day on";
    EXPECT_EQ(money(broker.accounts().at("S1").funds().profitToday), "987.20");
}

TEST_F(TradingBroker, LowerFeesPayNothingBackOfAnOrderThatIsUnderWay)
{
    const qint64 waiting = stocks(Side::Buy, 9.99, 3000);
    broker.takeDeal(deal(shares, at(monday, 10, 1), 9.98, 1000, DealKind::SellerInitiated));
    EXPECT_EQ(charges(waiting), "5.00 0.00 0.10");
    trading::TradingRules free;
    free.stocks = {0, 0, 0, 0};
    broker.setRules(free);
    broker.takeDeal(deal(shares, at(monday, 10, 2), 9.98, 2000, DealKind::SellerInitiated));
    EXPECT_EQ(charges(waiting), "5.00 0.00 0.10");
    EXPECT_EQ(money(broker.accounts().at("S1").account().balance), "970024.90");
}

TEST_F(TradingBroker, OpenOrdersSetMoneyAndSharesAsideUntilTheyEnd)
{
    const qint64 waiting = stocks(Side::Buy, 9.50, 10000);
    EXPECT_EQ(fundsText(broker, "S1"), "1000000.00 904975.30 95024.70");
    broker.takeDeal(deal(shares, at(monday, 10, 1), 9.49, 4000, DealKind::SellerInitiated));
    EXPECT_EQ(broker.orders().at(waiting).status, feed::OrderStatus::PartFilled);
    EXPECT_FALSE(broker.cancel(waiting));
    EXPECT_EQ(broker.orders().at(waiting).status, feed::OrderStatus::PartCancelled);
    EXPECT_EQ(broker.orders().at(waiting).cancelled, 6000);
    EXPECT_EQ(money(broker.accounts().at("S1").funds().frozen), "0.00");
    EXPECT_EQ(broker.cancel(waiting).reason, Reason::OrderEnded);
    EXPECT_EQ(broker.cancel(77).reason, Reason::UnknownOrder);

    show(tuesday, 10, 0);
    EXPECT_NE(stocks(Side::Sell, 10.50, 3000), 0);
    EXPECT_EQ(reasonOf(stockRequest(Side::Sell, 10.50, 1100)), Reason::NotEnoughPosition);
    EXPECT_EQ(broker.largestQuantity(stockRequest(Side::Sell, 10.50, 0)), 1000);
    show(20240320, 9, 30);
    EXPECT_EQ(broker.largestQuantity(stockRequest(Side::Sell, 10.50, 0)), 4000) << "orders end with their day";
    EXPECT_TRUE(broker.orders().empty());
}

TEST_F(TradingBroker, ClosingTodaysLotsIsAnOrderOfItsOwnInShanghaiOnly)
{
    futures(Side::Sell, Offset::Open, 3499, 5);
    show(tuesday, 9, 30);
    futures(Side::Sell, Offset::Open, 3499, 3);
    futures(Side::Sell, Offset::Open, 3599.8, 1, "IF2404");
    EXPECT_EQ(positionsText(broker, "F1"), "IF2404 short 0+1 1079940.00\nrb2410 short 5+3 279970.00\n");

    const auto largest = [this](const char *code, Offset offset) {
        return broker.largestQuantity({"F1", code, Side::Buy, offset, 3500, 0});
    };
    EXPECT_EQ(largest("rb2410", Offset::Close), 5);
    EXPECT_EQ(largest("rb2410", Offset::CloseToday), 3);
    EXPECT_EQ(largest("rb2410", Offset::CloseYesterday), 5);
    EXPECT_EQ(largest("IF2404", Offset::Close), 1);
    EXPECT_EQ(largest("IF2404", Offset::CloseYesterday), 0);
    EXPECT_EQ(reasonOf({"F1", "rb2410", Side::Buy, Offset::Close, 3500, 6}), Reason::NotEnoughPosition);
    EXPECT_TRUE(broker.check({"F1", "rb2410", Side::Buy, Offset::Close, 3500, 6}).text.contains("今仓请用平今"));

    const qint64 index = futures(Side::Buy, Offset::Close, 3600, 1, "IF2404");
    EXPECT_EQ(charges(index), "248.40 0.00 0.00") << "0.023 % where the lots are of the same day";
    EXPECT_NE(futures(Side::Buy, Offset::CloseToday, 3500, 3), 0);
    EXPECT_EQ(positionsText(broker, "F1"), "rb2410 short 5+0 175000.00\n");
    EXPECT_EQ(largest("rb2410", Offset::CloseToday), 0);
}

TEST_F(TradingBroker, TheNightSessionBelongsToTheNextTradingDay)
{
    futures(Side::Buy, Offset::Open, 3500, 2);
    show(monday, 21, 30);
    EXPECT_EQ(broker.accounts().at("F1").account().day, tuesday);
    EXPECT_EQ(broker.accounts().at("S1").account().day, monday);
    EXPECT_EQ(positionsText(broker, "F1"), "rb2410 long 2+0 70000.00\n") << "Monday is settled";
    futures(Side::Buy, Offset::Open, 3500, 1);
    EXPECT_EQ(reasonOf(stockRequest(Side::Buy, 10, 100)), Reason::MarketClosed);
    EXPECT_EQ(reasonOf({"F1", "IF2404", Side::Buy, Offset::Open, 3600, 1}), Reason::MarketClosed) << "no night there";
    show(tuesday, 10, 0);
    EXPECT_EQ(positionsText(broker, "F1"), "rb2410 long 2+1 105000.00\n") << "still the same trading day";
}

TEST(TradingHours, DaysAndSessionsFollowTheExchangesClocks)
{
    using State = TradingHours::State;
    EXPECT_EQ(TradingHours::dayOf(trading::AccountKind::Future, at(friday, 21, 0)), nextMonday);
    EXPECT_EQ(TradingHours::dayOf(trading::AccountKind::Future, at(20240323, 1, 0)), nextMonday);
    EXPECT_EQ(TradingHours::dayOf(trading::AccountKind::Future, at(friday, 15, 0)), friday);
    EXPECT_EQ(TradingHours::dayOf(trading::AccountKind::Stock, at(friday, 21, 0)), friday);

    struct Case
    {
        feed::Instrument instrument;
        qint64 time;
        State state;
    };
    const feed::Instrument share = stock(0, "000001.SZ");
    const feed::Instrument gold = future(0, "au2406");
    const feed::Instrument apple = future(0, "AP010");
    const Case cases[] = {
        {share, at(monday, 9, 14, 59), State::Closed},    {share, at(monday, 9, 15), State::Open},
        {share, at(monday, 9, 20), State::NoCancelling},  {share, at(monday, 9, 25), State::Closed},
        {share, at(monday, 12, 0), State::Closed},        {share, at(monday, 14, 56, 59), State::Open},
        {share, at(monday, 14, 57), State::NoCancelling}, {share, at(monday, 15, 0), State::Closed},
        {share, at(20240323, 10, 0), State::Closed},      {gold, at(friday, 23, 30), State::Open},
        {gold, at(20240323, 2, 29), State::Open},         {gold, at(20240323, 2, 30), State::Closed},
        {gold, at(monday, 1, 0), State::Closed},          {gold, at(monday, 10, 20), State::Closed},
        {apple, at(monday, 21, 30), State::Closed},       {apple, at(monday, 14, 58), State::Open}};
    for (const Case &each : cases)
        EXPECT_EQ(TradingHours::stateOf(each.instrument, each.time), each.state)
            << each.instrument.code << ' ' << each.time;
    EXPECT_EQ(TradingHours::text(gold), "21:00-2:30、9:00-10:15、10:30-11:30、13:30-15:00");
}

TEST_F(TradingBroker, WhatIsWrongIsRefusedWithItsReasonAndChangesNothing)
{
    broker.takeInstrument(stock(3, "688001.SH"));
    broker.takeChanges();
    struct Case
    {
        OrderRequest request;
        Reason reason;
        const char *words; ///< that its text contains
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Case cases[] = {
        {{"", "600001.SH", Side::Buy, Offset::Open, 10, 100}, Reason::NoAccount, "请先选择账户"},
        {{"X9", "600001.SH", Side::Buy, Offset::Open, 10, 100}, Reason::NoAccount, "X9"},
        {{"S1", "", Side::Buy, Offset::Open, 10, 100}, Reason::UnknownCode, "请填写代码"},
        {{"S1", "600009.SH", Side::Buy, Offset::Open, 10, 100}, Reason::UnknownCode, "600009.SH"},
        {{"F1", "600001.SH", Side::Buy, Offset::Open, 10, 100}, Reason::WrongAccountKind, "请改选股票账户"},
        {{"S1", "rb2410", Side::Buy, Offset::Open, 3500, 1}, Reason::WrongAccountKind, "请改选期货账户"},
        {stockRequest(Side::Buy, 0, 100), Reason::NoPrice, "请填写价格"},
        {stockRequest(Side::Buy, -10, 100), Reason::NoPrice, "请填写价格"},
        {stockRequest(Side::Buy, nan, 100), Reason::NoPrice, "请填写价格"},
        {stockRequest(Side::Buy, feed::absent<double>, 100), Reason::NoPrice, "请填写价格"},
        {stockRequest(Side::Buy, 10.005, 100), Reason::OffTick, "请改为 10.00 或 10.01"},
        {stockRequest(Side::Buy, 11.01, 100), Reason::OutsideLimits, "高于涨停价 11.00"},
        {stockRequest(Side::Buy, 8.99, 100), Reason::OutsideLimits, "低于跌停价 9.00"},
        {stockRequest(Side::Buy, 10, 0), Reason::NoQuantity, "请填写数量"},
        {stockRequest(Side::Buy, 10, -100), Reason::NoQuantity, "请填写数量"},
        {stockRequest(Side::Buy, 10, 150), Reason::NotInLots, "须为 100 股的整数倍"},
        {stockRequest(Side::Buy, 10, 1'000'100), Reason::TooMuch, "单笔上限 1000000 股"},
        {stockRequest(Side::Buy, 10, feed::absent<qint64>), Reason::TooMuch, "请分笔委托"},
        {stockRequest(Side::Buy, 10, 100'000), Reason::NotEnoughFunds, "可用资金 1000000.00 元"},
        {stockRequest(Side::Sell, 10, 100), Reason::NotEnoughPosition, "没有持仓"},
        {{"S1", "688001.SH", Side::Buy, Offset::Open, 10, 199}, Reason::NotInLots, "不得少于 200 股"},
        {{"F1", "rb2410", Side::Buy, Offset::Open, 3500.5, 1}, Reason::OffTick, "最小变动价位 1"},
        {{"F1", "rb2410", Side::Buy, Offset::Open, 1e300, 1}, Reason::NoPrice, "请填写价格"},
        {{"F1", "rb2410", Side::Buy, Offset::Open, 9e8, 500}, Reason::NotEnoughFunds, "请减少数量"},
        {{"F1", "rb2410", Side::Sell, Offset::Open, 3500, 300}, Reason::NotEnoughFunds, "请减少数量"},
        {{"F1", "rb2410", Side::Sell, Offset::CloseToday, 3500, 1}, Reason::NotEnoughPosition, "没有持仓"},
    };
    for (const Case &each : cases) {
        const PaperBroker::Answer answer = broker.submit(each.request);
        EXPECT_EQ(answer.order, 0);
        EXPECT_EQ(int(answer.refusal.reason), int(each.reason)) << answer.refusal.text.toStdString();
        EXPECT_TRUE(answer.refusal.text.contains(QString::fromUtf8(each.words))) << answer.refusal.text.toStdString();
    }
    show(monday, 11, 30);
    EXPECT_EQ(reasonOf(stockRequest(Side::Buy, 10, 100)), Reason::MarketClosed);
    EXPECT_EQ(PaperBroker().submit(stockRequest(Side::Buy, 10, 100)).refusal.reason, Reason::NoAccount);
    EXPECT_TRUE(broker.takeChanges().isEmpty());
    EXPECT_EQ(fundsText(broker, "S1"), "1000000.00 1000000.00 0.00");
}

TEST_F(TradingBroker, OddSharesAreSoldInOneGo)
{
    trading::DeskState state;
    state.accounts = {stockAccount()};
    state.accounts[0].balance = 0;
    trading::Position odd;
    odd.account = "S1";
    odd.code = "600001.SH";
    odd.old.quantity = 350;
    state.positions = {odd};
    PaperBroker other;
    ASSERT_TRUE(other.restore(state));
    other.takeInstrument(stock(shares, "600001.SH"));
    other.takeQuote(quote(shares, at(monday, 10, 0), {{10, 10000}}, {{10.01, 100}}));
    const auto reason = [&](qint64 quantity) { return other.check(stockRequest(Side::Sell, 10, quantity)).reason; };
    EXPECT_EQ(reason(120), Reason::NotInLots);
    EXPECT_EQ(reason(50), Reason::None);
    EXPECT_EQ(reason(150), Reason::None);
    EXPECT_EQ(reason(200), Reason::None);
    EXPECT_EQ(reason(350), Reason::None);
    EXPECT_NE(send(other, stockRequest(Side::Sell, 10, 350)), 0);
    EXPECT_EQ(positionsText(other, "S1"), "");
}

TEST_F(TradingBroker, AnOrderTradesOnlyOnceItIsConfirmedAndTheMarketIsOpen)
{
    const auto submitted = [this] { return broker.submit(stockRequest(Side::Buy, 10, 100)).order; };
    const auto status = [this](qint64 order) { return broker.orders().at(order).status; };
    const qint64 rejected = submitted();
    show(monday, 10, 1);
    EXPECT_EQ(status(rejected), feed::OrderStatus::Sending);
    EXPECT_EQ(positionsText(broker, "S1"), "");
    broker.reject(rejected, "磁盘已满");
    broker.confirm(rejected);
    EXPECT_EQ(status(rejected), feed::OrderStatus::Rejected);
    EXPECT_EQ(fundsText(broker, "S1"), "1000000.00 1000000.00 0.00");

    const qint64 late = submitted();
    broker.takeTime(at(monday, 11, 30));
    broker.confirm(late);
    EXPECT_EQ(status(late), feed::OrderStatus::Accepted) << "stored after the close";
    show(monday, 13, 0);
    EXPECT_EQ(status(late), feed::OrderStatus::Filled);
}

/// 37 shares at 1.234 cost 45.658: what moves is cents, and the pieces of an order come to what the whole costs.
TEST_F(TradingBroker, AmountsMoveInCents)
{
    constexpr int fund = 3;
    feed::Instrument traded = stock(fund, "510300.SH", 1.234);
    traded.kind = feed::InstrumentKind::Fund;
    traded.tick = 0.001;
    broker.takeInstrument(traded);
    const auto offer = [&](qint64 quantity) {
        broker.takeQuote(quote(fund, at(monday, 10, 1), {{1.233, 500}}, {{1.234, quantity}}, 1.234));
    };
    offer(37);
    const qint64 order = send(broker, {"S1", "510300.SH", Side::Buy, Offset::Open, 1.234, 100});
    EXPECT_EQ(fundsText(broker, "S1"), "999995.00 999871.60 77.74");
    EXPECT_EQ(broker.accounts().at("S1").account().balance % trading::cent, 0);
    offer(0);
    offer(63);
    EXPECT_EQ(broker.orders().at(order).status, feed::OrderStatus::Filled);
    EXPECT_EQ(fundsText(broker, "S1"), "999995.00 999871.60 0.00");
    trading::Money amount = 0;
    for (const trading::PaperDeal &deal : broker.takeChanges().deals)
        amount += deal.amount;
    EXPECT_EQ(money(amount), "123.40");
}

TEST_F(TradingBroker, AReplacementCountsWhatTheOrderHoldsAsFree)
{
    const qint64 waiting = stocks(Side::Buy, 9.50, 100'000);
    const auto replaced = [&](double price, qint64 quantity) {
        return broker.checkReplacement(waiting, stockRequest(Side::Buy, price, quantity)).reason;
    };
    EXPECT_EQ(reasonOf(stockRequest(Side::Buy, 9.60, 100'000)), Reason::NotEnoughFunds);
    EXPECT_EQ(replaced(9.60, 100'000), Reason::None);
    EXPECT_EQ(replaced(9.99, 100'100), Reason::NotEnoughFunds);
    EXPECT_EQ(replaced(9.605, 100), Reason::OffTick);
    EXPECT_EQ(broker.orders().at(waiting).status, feed::OrderStatus::Accepted) << "nothing was done";
    EXPECT_FALSE(broker.cancel(waiting));
    EXPECT_EQ(replaced(9.60, 100), Reason::OrderEnded);

    stocks(Side::Buy, 10.00, 1000);
    show(tuesday, 10, 0);
    const qint64 sale = stocks(Side::Sell, 10.50, 1000);
    EXPECT_EQ(broker.checkReplacement(sale, stockRequest(Side::Sell, 10.40, 1000)).reason, Reason::None);
    EXPECT_EQ(broker.checkReplacement(sale, stockRequest(Side::Sell, 10.40, 1100)).reason, Reason::NotEnoughPosition);
}
