#include <gtest/gtest.h>

#include <QtCore/QStringList>
#include <functional>

#include "printtext.h"
#include "window/orderdraft.h"

using namespace terminal;
using feed::absent;

namespace {

OrderDraft goodOrder()
{
    OrderDraft order;
    order.account = QStringLiteral("600001");
    order.code = QStringLiteral("600519.SH");
    order.name = QStringLiteral("贵州茅台");
    order.isKnown = true;
    order.terms.upperLimit = 11;
    order.terms.lowerLimit = 8.999999999999998; // as feeds tell 9.00
    order.price = 10.01;
    order.quantity = 200;
    return order;
}

OrderDraft futureOrder()
{
    OrderDraft order = goodOrder();
    order.trade = kdservice::TraderFuture;
    order.kind = KV::FilterFuture;
    order.code = QStringLiteral("rb2410");
    order.terms = {1, 0, 1, 10, 4000, 3000};
    order.price = 3501;
    order.quantity = 3;
    return order;
}

QString faultOf(const OrderDraft &order)
{
    static const char *fields[] = {"-", "account", "code", "price", "quantity", "contract"};
    const OrderFault fault = order.fault();
    return (QLatin1String(fields[static_cast<int>(fault.field)]) + QLatin1Char(' ') + fault.text).trimmed();
}

QString faultAfter(const OrderDraft &good, const std::function<void(OrderDraft &)> &change)
{
    OrderDraft order = good;
    change(order);
    return faultOf(order);
}

QString priceText(double price)
{
    return QString::number(price, 'g', 12);
}

} // namespace

TEST(OrderDraft, ToldFaultsAreTheFirstFromTopToBottomInWordsForTheUser)
{
    const OrderDraft good = goodOrder();
    const auto priced = [&](double price) { return faultAfter(good, [price](OrderDraft &o) { o.price = price; }); };
    const auto sized = [&](qint64 size) { return faultAfter(good, [size](OrderDraft &o) { o.quantity = size; }); };
    EXPECT_EQ(faultOf(good), QStringLiteral("-"));
    EXPECT_EQ(faultOf(OrderDraft()), QStringLiteral("account 请选择账号"));
    EXPECT_EQ(faultAfter(good, [](OrderDraft &o) { o.code.clear(); }), QStringLiteral("code 请输入证券代码"));
    EXPECT_EQ(faultAfter(good, [](OrderDraft &o) { o.isKnown = false; }), QStringLiteral("code 没有证券 600519.SH"));
    for (const double none : {absent<double>, 0.0, -1.0})
        EXPECT_EQ(priced(none), QStringLiteral("price 请输入价格")) << none;
    EXPECT_EQ(priced(11.01), QStringLiteral("price 价格高于涨停价 11.00"));
    EXPECT_EQ(priced(8.99), QStringLiteral("price 价格低于跌停价 9.00"));
    EXPECT_EQ(priced(9.995), QStringLiteral("price 价格须为 0.01 的整数倍"));
    EXPECT_EQ(priced(10.000001), QStringLiteral("price 价格须为 0.01 的整数倍"));
    for (const double fine : {9.0, 9.29, 10.009999999999998, 11.0})
        EXPECT_EQ(priced(fine), QStringLiteral("-")) << fine;
    OrderDraft large = good;
    large.terms = {10, 0, 1, 1, absent<double>, absent<double>};
    for (const double price : {123'456'780.0, 123'456'781.0, 123'456'780.00001}) {
        large.price = price;
        EXPECT_EQ(faultOf(large), price == 123'456'780 ? "-" : "price 价格须为 10 的整数倍") << price;
    }
    for (const qint64 none : {absent<qint64>, qint64(0), qint64(-100)})
        EXPECT_EQ(sized(none), QStringLiteral("quantity 请输入数量")) << none;
    EXPECT_EQ(sized(150), QStringLiteral("quantity 买入数量须为 100 的整数倍"));
    EXPECT_EQ(sized(1'000'000'000), QStringLiteral("quantity 数量过大"));
    EXPECT_EQ(faultAfter(good, [](OrderDraft &o) { o.isLong = false, o.quantity = 150; }), QStringLiteral("-"))
        << "an odd rest may be sold";
    for (const KV::EPriceType type : {KV::PriceOpposite, KV::PriceOwnBest, KV::PriceBestFive})
        EXPECT_EQ(faultAfter(good, [type](OrderDraft &o) { o.priceType = type, o.price = absent<double>; }),
                  QStringLiteral("-"));
}

TEST(OrderDraft, EveryBusinessTradesItsOwnKinds)
{
    QStringList answers;
    for (const int kind : {1, 2, 4, 8, 16, 32})
        for (const auto trade : {kdservice::TraderStock, kdservice::TraderCredit, kdservice::TraderFuture})
            if (faultAfter(goodOrder(), [=](OrderDraft &o) {
                    o.kind = static_cast<KV::EFilterFlag>(kind);
                    o.trade = trade;
                    o.terms.lot = 1;
                }) == QStringLiteral("-"))
                answers << QStringLiteral("%1:%2").arg(kind).arg(tradeText(trade));
    EXPECT_EQ(answers.join(QLatin1Char(' ')), QStringLiteral("1:股票 1:信用 2:股票 2:信用 4:股票 4:信用 16:期货"));
    EXPECT_EQ(faultAfter(goodOrder(), [](OrderDraft &o) { o.trade = kdservice::TraderFuture; }),
              QStringLiteral("code 期货业务不能买卖 600519.SH"));
}

TEST(OrderDraft, SaysWhatItDoesInEveryBusiness)
{
    QStringList all;
    for (const auto trade : {kdservice::TraderStock, kdservice::TraderCredit, kdservice::TraderFuture})
        for (const bool isOpen : {true, false})
            for (const bool isLong : {true, false}) {
                OrderDraft order;
                order.trade = trade;
                order.isLong = isLong;
                order.isOpen = isOpen;
                all << order.operation() + (order.isBuy() ? QStringLiteral("+") : QStringLiteral("-")) +
                           (order.isSale() ? QStringLiteral("卖") : QStringLiteral("钱"));
            }
    EXPECT_EQ(all.join(QLatin1Char(' ')),
              QStringLiteral("买入+钱 卖出-卖 买入+钱 卖出-卖 融资买入+钱 融券卖出-钱 卖券还款-卖 买券还券+卖 "
                             "买入开仓+钱 卖出开仓-钱 卖出平仓-卖 买入平仓+卖"));
}

TEST(OrderDraft, SizesAnOrderByAFractionOfMoneyOrHolding)
{
    const TicketFunds funds{100'000, 500'000, 1'350};
    OrderDraft buy = goodOrder();
    QStringList sizes;
    for (const int parts : {1, 2, 3, 4})
        sizes << QString::number(buy.sized(funds, 10.01, parts, false));
    for (const int parts : {1, 2, 3, 4, 8}) // of all money, as far as it is there
        sizes << QString::number(buy.sized(funds, 10, parts, true));
    EXPECT_EQ(sizes.join(QLatin1Char(' ')), QStringLiteral("9900 4900 3300 2400 10000 10000 10000 10000 6200"));
    EXPECT_EQ(buy.sized(funds, 1001, 1, false), 0);
    EXPECT_EQ(buy.sized(funds, absent<double>, 1, false), absent<qint64>);
    EXPECT_EQ(buy.sized(TicketFunds(), 10, 1, false), absent<qint64>);
    EXPECT_EQ(buy.sized({1e300, 1e300, 0}, 0.01, 1, false), 999'999'900);
    EXPECT_EQ(buy.sized({-5, -5, 0}, 10, 1, false), 0);

    OrderDraft sale = goodOrder();
    sale.isLong = false;
    sizes.clear();
    for (const int parts : {1, 2, 3, 4})
        sizes << QString::number(sale.sized(funds, absent<double>, parts, false));
    EXPECT_EQ(sizes.join(QLatin1Char(' ')), QStringLiteral("1350 600 400 300")) << "the odd rest goes with all of it";
    EXPECT_EQ(sale.sized({1, 1, absent<qint64>}, 10, 1, false), absent<qint64>);

    OrderDraft future = futureOrder();
    EXPECT_EQ(future.sized(funds, 3500, 1, false), 2) << "ten tonnes a lot";
    future.isOpen = false;
    EXPECT_EQ(future.sized({0, 0, 7}, 3500, 2, false), 3);
}

TEST(OrderDraft, WithoutAPriceTheLogNamesItsTypeAndNoAmount)
{
    OrderDraft market = goodOrder();
    market.isLong = false;
    market.priceType = KV::PriceBestFive;
    market.price = absent<double>;
    EXPECT_EQ(market.logText(), QStringLiteral("委托 卖出 600519.SH 贵州茅台 价格 最优五档 数量 200 账号 600001"));
}

TEST(SteppedPrice, GoesFromTickToTickWithinTheLimitsOfTheDay)
{
    const TradeTerms stock{0.01, 2, 100, 1, 11, 9};
    const TradeTerms free{0.005, 3, 1, 1, absent<double>, absent<double>};
    const struct
    {
        TradeTerms terms;
        double from;
        int steps;
        const char *to;
    } cases[] = {{stock, 10, 1, "10.01"},     {stock, 10, -1, "9.99"},
                 {stock, 10.1, 10, "10.2"},   {stock, 9.05, -10, "9"},
                 {stock, 10.95, 10, "11"},    {stock, 10.003, 1, "10.01"},
                 {stock, 10.003, -1, "10"},   {stock, 10.003, 10, "10.1"},
                 {stock, 8, 1, "9"},          {stock, 12, -1, "11"},
                 {stock, 10.29, 1, "10.3"},   {free, 0.005, -1, "0.005"},
                 {free, 0.0125, 1, "0.015"},  {free, 0.0125, -1, "0.01"},
                 {free, 1.015, -10, "0.965"}, {{0, 2, 1, 1, 9, 1}, 5, 1, "5.01"}};
    for (const auto &each : cases)
        EXPECT_EQ(priceText(steppedPrice(each.from, each.terms, each.steps)), QString::fromLatin1(each.to))
            << each.from << " by " << each.steps;
    double price = 9; // a thousand steps leave no noise behind
    for (int step = 0; step < 200; ++step)
        price = steppedPrice(price, stock, 1);
    EXPECT_EQ(priceText(price), QStringLiteral("11"));
}

TEST(SteppedQuantity, GoesFromLotToLotAndNeverBelowOne)
{
    const struct
    {
        qint64 from;
        int lot;
        int steps;
        qint64 to;
    } cases[] = {{0, 100, 1, 100},
                 {0, 100, -1, 100},
                 {100, 100, -1, 100},
                 {250, 100, 1, 300},
                 {250, 100, -1, 200},
                 {250, 100, 10, 1200},
                 {900, 100, 10, 1900},
                 {1, 1, -10, 1},
                 {7, 0, 1, 8},
                 {-5, 100, 1, 100},
                 {999'999'999, 100, 1, 999'999'900},
                 {absent<qint64>, 1, 1, 999'999'999}};
    for (const auto &each : cases)
        EXPECT_EQ(steppedQuantity(each.from, each.lot, each.steps), each.to) << each.from << " by " << each.steps;
}
