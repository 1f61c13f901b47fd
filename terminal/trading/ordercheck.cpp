#include "trading/ordercheck.h"

#include "feed/instrumentrules.h"

#include <algorithm>

namespace trading {

namespace {

using Reason = Refusal::Reason;

class Check
{
public:
    Check(const PaperOrder &given, const OrderContext &with) : order(given), context(with) {}

    Refusal run() const
    {
        for (const auto step :
             {&Check::kind, &Check::hours, &Check::price, &Check::limits, &Check::quantity, &Check::holdings})
            if (Refusal refusal = (this->*step)())
                return refusal;
        return {};
    }

private:
    bool isFuture() const { return context.instrument.kind == feed::InstrumentKind::Future; }
    QString what() const
    {
        const std::string &name = order.name;
        return QString::fromStdString(name.empty() ? order.code : name + " " + order.code);
    }
    QString unit() const { return isFuture() ? QStringLiteral("手") : QStringLiteral("股"); }

    Refusal kind() const
    {
        const Account &account = context.book.account();
        if ((account.kind == AccountKind::Future) == isFuture())
            return {};
        return {Reason::WrongAccountKind, QStringLiteral("账户 %1 是%2账户，不能交易 %3，请改选%4账户")
                                              .arg(QString::fromStdString(account.id),
                                                   isFuture() ? QStringLiteral("股票") : QStringLiteral("期货"), what(),
                                                   isFuture() ? QStringLiteral("期货") : QStringLiteral("股票"))};
    }

    Refusal hours() const
    {
        if (TradingHours::stateOf(context.instrument, context.now) != TradingHours::State::Closed)
            return {};
        return {Reason::MarketClosed, QStringLiteral("%1 未开市，不能委托，请在 %2 委托")
                                          .arg(what(), QString::fromStdString(TradingHours::text(context.instrument)))};
    }

    Refusal price() const
    {
        if (order.price <= 0)
            return {Reason::NoPrice, QStringLiteral("%1 没有委托价格，请填写价格").arg(what())};
        const qint64 tick = feed::priceUnits(context.instrument.tick);
        if (tick <= 0 || order.price % tick == 0)
            return {};
        const qint64 below = order.price / tick * tick;
        return {Reason::OffTick, QStringLiteral("%1 委托价格 %2 不是最小变动价位 %3 的整数倍，请改为 %4 或 %5")
                                     .arg(what(), QString::number(feed::priceOfUnits(order.price), 'g', 12),
                                          QString::number(context.instrument.tick), text(below), text(below + tick))};
    }

    Refusal limits() const
    {
        const feed::Instrument &instrument = context.instrument;
        if (instrument.upperLimit != feed::absent<double> && order.price > feed::priceUnits(instrument.upperLimit))
            return outside(QStringLiteral("高于涨停价"), instrument.upperLimit);
        if (instrument.lowerLimit != feed::absent<double> && order.price < feed::priceUnits(instrument.lowerLimit))
            return outside(QStringLiteral("低于跌停价"), instrument.lowerLimit);
        return {};
    }

    Refusal outside(const QString &how, double limit) const
    {
        return {Reason::OutsideLimits, QStringLiteral("%1 委托价格 %2 %3 %4，请改到涨跌停价之内")
                                           .arg(what(), text(order.price), how, text(feed::priceUnits(limit)))};
    }

    Refusal quantity() const
    {
        const QuantityRules rules = QuantityRules::of(context.instrument, context.rules);
        if (order.quantity <= 0)
            return {Reason::NoQuantity, QStringLiteral("%1 委托数量为零，请填写数量").arg(what())};
        if (order.quantity > rules.most)
            return {Reason::TooMuch, QStringLiteral("%1 委托数量 %2 %4超过单笔上限 %3 %4，请分笔委托")
                                         .arg(what())
                                         .arg(order.quantity)
                                         .arg(rules.most)
                                         .arg(unit())};
        if ((order.quantity % rules.step == 0 && order.quantity >= rules.least) || sellsRest(rules))
            return {};
        const QString rule = rules.step == rules.least
                                 ? QStringLiteral("须为 %1 %2的整数倍").arg(rules.step).arg(unit())
                                 : QStringLiteral("不得少于 %1 %2").arg(rules.least).arg(unit());
        const QString rest =
            order.opensPosition() || isFuture() ? QString() : QStringLiteral("，不足的零股须一次性卖出");
        return {
            Reason::NotInLots,
            QStringLiteral("%1 委托数量 %2 %3不合规定：%4%5").arg(what()).arg(order.quantity).arg(unit(), rule, rest)};
    }

    /// Odd shares, which come from rights issues and the like, are sold in one go with or without whole lots.
    bool sellsRest(const QuantityRules &rules) const
    {
        if (order.opensPosition() || isFuture())
            return false;
        const auto [old, today] = closable();
        const qint64 all = old + today;
        return order.quantity == all || (rules.step > 1 && order.quantity < all && all % rules.step > 0 &&
                                         order.quantity % rules.step == all % rules.step);
    }

    AccountBook::Closable closable() const
    {
        return context.book.closable(context.instrument, AccountBook::keyOf(order, context.instrument.kind).second,
                                     order.offset);
    }

    Refusal holdings() const { return order.opensPosition() ? money() : position(); }

    Refusal money() const
    {
        const Money needed = context.book.fundsNeeded(order, context.instrument);
        const Money available = context.book.funds().available;
        if (needed <= available)
            return {};
        const QString account = QString::fromStdString(context.book.account().id);
        if (needed == feed::absent<Money>)
            return {Reason::TooMuch, QStringLiteral("%1 委托金额过大，请减少数量").arg(what())};
        return {Reason::NotEnoughFunds, QStringLiteral("账户 %1 可用资金 %2 元，%3 需要 %4 元，请减少数量或先撤单")
                                            .arg(account, moneyText(available), what(), moneyText(needed))};
    }

    Refusal position() const
    {
        const auto [old, today] = closable();
        if (order.quantity <= old + today)
            return {};
        const auto key = AccountBook::keyOf(order, context.instrument.kind);
        const Position *held = context.book.position(key);
        const qint64 all = held ? held->quantity() : 0;
        const qint64 bought = held ? held->today.quantity - today : 0;
        QString hint = all == 0 ? QStringLiteral("没有持仓") : QStringLiteral("持仓 %1 %2").arg(all).arg(unit());
        if (all > 0 && !isFuture() && bought > 0)
            hint += QStringLiteral("，其中今日买入 %1 %2，下一交易日才可卖出").arg(bought).arg(unit());
        if (all > 0 && isFuture() && keepsDaysApart(order.exchange))
            hint += order.offset == Offset::CloseToday ? QStringLiteral("，昨仓请用平仓")
                                                       : QStringLiteral("，今仓请用平今");
        return {Reason::NotEnoughPosition,
                QStringLiteral("账户 %1 的 %2 可%3 %4 %5，少于委托的 %6 %5（%7），请减少数量")
                    .arg(QString::fromStdString(context.book.account().id), what(),
                         isFuture() ? QStringLiteral("平") : QStringLiteral("卖"))
                    .arg(old + today)
                    .arg(unit())
                    .arg(order.quantity)
                    .arg(hint)};
    }

    QString text(qint64 price) const { return priceText(price, context.instrument); }

    const PaperOrder &order;
    const OrderContext &context;
};

} // namespace

Refusal checkOrder(const PaperOrder &order, const OrderContext &context)
{
    return Check(order, context).run();
}

QString priceText(qint64 price, const feed::Instrument &instrument)
{
    return QString::number(feed::priceOfUnits(price), 'f', instrument.priceDecimals);
}

} // namespace trading
