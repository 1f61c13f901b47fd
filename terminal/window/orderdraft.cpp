#include "window/orderdraft.h"

#include <algorithm>
#include <cmath>

#include "zb/numberformat.h"

namespace terminal {

namespace {

using feed::absent;

constexpr qint64 largestQuantity = 999'999'999; ///< more is a slip of the finger

QString decimal(double value, int decimals)
{
    return ZB::formatDoubleNumber(value, decimals, utils::FormatNoGroups, false, QString());
}

QString grouped(double value, int decimals)
{
    return ZB::formatDoubleNumber(value, decimals, utils::FormatGroupDigits, false, QString());
}

/// What a count of ticks may be off for the binary form of price and tick alone.
double noise(double ticks)
{
    return 1e-9 + 1e-15 * std::abs(ticks);
}

bool isOnTick(double price, double tick)
{
    const double ticks = price / tick;
    return std::abs(ticks - std::round(ticks)) < noise(ticks);
}

qint64 wholeLots(double quantity, int lot)
{
    const double kept = std::min(quantity, static_cast<double>(largestQuantity));
    return kept > 0 ? static_cast<qint64>(kept + noise(kept)) / lot * lot : 0;
}

} // namespace

bool OrderDraft::isBuy() const
{
    return trade == kdservice::TraderStock ? isLong : isLong == isOpen;
}

bool OrderDraft::isSale() const
{
    return trade == kdservice::TraderStock ? !isLong : !isOpen;
}

QString OrderDraft::operation() const
{
    if (trade == kdservice::TraderCredit) {
        if (isLong)
            return isOpen ? QStringLiteral("融资买入") : QStringLiteral("卖券还款");
        return isOpen ? QStringLiteral("融券卖出") : QStringLiteral("买券还券");
    }
    const QString side = isBuy() ? QStringLiteral("买入") : QStringLiteral("卖出");
    if (trade == kdservice::TraderStock)
        return side;
    return side + (isOpen ? QStringLiteral("开仓") : QStringLiteral("平仓"));
}

QString OrderDraft::unit() const
{
    return trade == kdservice::TraderFuture ? QStringLiteral("手") : QStringLiteral("股");
}

QString OrderDraft::priceText() const
{
    switch (priceType) {
    case KV::PriceOpposite:
        return QStringLiteral("对手价");
    case KV::PriceOwnBest:
        return QStringLiteral("本方最优");
    case KV::PriceBestFive:
        return QStringLiteral("最优五档");
    default:
        return price == absent<double> ? QString() : decimal(price, terms.priceDecimals);
    }
}

double OrderDraft::amount() const
{
    if (price == absent<double> || quantity == absent<qint64>)
        return absent<double>;
    return price * static_cast<double>(quantity) * terms.multiplier;
}

QString OrderDraft::codeFault() const
{
    if (code.isEmpty())
        return QStringLiteral("请输入证券代码");
    if (!isKnown)
        return QStringLiteral("没有证券 %1").arg(code);
    const bool isFuture = trade == kdservice::TraderFuture;
    if (tradeOf(kind) == kdservice::TraderNone || (tradeOf(kind) == kdservice::TraderFuture) != isFuture)
        return QStringLiteral("%1业务不能买卖 %2").arg(tradeText(trade), code);
    return {};
}

QString OrderDraft::priceFault() const
{
    if (priceType != KV::PriceLimit)
        return {};
    if (price == absent<double> || !(price > 0))
        return QStringLiteral("请输入价格");
    if (terms.upperLimit != absent<double> && price > terms.upperLimit + terms.tick * noise(price / terms.tick))
        return QStringLiteral("价格高于涨停价 %1").arg(decimal(terms.upperLimit, terms.priceDecimals));
    if (terms.lowerLimit != absent<double> && price < terms.lowerLimit - terms.tick * noise(price / terms.tick))
        return QStringLiteral("价格低于跌停价 %1").arg(decimal(terms.lowerLimit, terms.priceDecimals));
    if (!isOnTick(price, terms.tick))
        return QStringLiteral("价格须为 %1 的整数倍").arg(decimal(terms.tick, terms.priceDecimals));
    return {};
}

QString OrderDraft::quantityFault() const
{
    if (quantity == absent<qint64> || quantity <= 0)
        return QStringLiteral("请输入数量");
    if (quantity > largestQuantity)
        return QStringLiteral("数量过大");
    if (isBuy() && quantity % terms.lot != 0)
        return QStringLiteral("买入数量须为 %1 的整数倍").arg(terms.lot);
    return {};
}

OrderFault OrderDraft::fault() const
{
    if (account.isEmpty())
        return {OrderField::Account, QStringLiteral("请选择账号")};
    if (const QString text = codeFault(); !text.isEmpty())
        return {OrderField::Code, text};
    if (const QString text = priceFault(); !text.isEmpty())
        return {OrderField::Price, text};
    if (const QString text = quantityFault(); !text.isEmpty())
        return {OrderField::Quantity, text};
    if (trade == kdservice::TraderCredit && namesContract && contractId.trimmed().isEmpty())
        return {OrderField::Contract, QStringLiteral("请输入合约号")};
    return {};
}

QString OrderDraft::logText() const
{
    QString text = QStringLiteral("委托 %1 %2 %3 价格 %4 数量 %5 账号 %6")
                       .arg(operation(), code, name, priceText(), QString::number(quantity), account);
    if (amount() != absent<double>)
        text += QStringLiteral(" 金额 ") + grouped(amount(), 2);
    if (trade == kdservice::TraderCredit && !contractSource.isEmpty())
        text += QStringLiteral(" 合约类型 ") + contractSource;
    if (trade == kdservice::TraderCredit && namesContract)
        text += QStringLiteral(" 合约号 ") + contractId.trimmed();
    return text;
}

qint64 OrderDraft::sized(const TicketFunds &funds, double atPrice, int parts, bool ofTotal) const
{
    if (isSale()) {
        if (funds.sellable == absent<qint64>)
            return absent<qint64>;
        return parts == 1 ? funds.sellable : wholeLots(static_cast<double>(funds.sellable) / parts, terms.lot);
    }
    const double money = ofTotal ? funds.total : funds.available;
    if (money == absent<double> || funds.available == absent<double> || atPrice == absent<double> || !(atPrice > 0))
        return absent<qint64>;
    return wholeLots(std::min(money / parts, funds.available) / (atPrice * terms.multiplier), terms.lot);
}

kdservice::EVxTraderType tradeOf(KV::EFilterFlag kind)
{
    switch (kind) {
    case KV::FilterFuture:
        return kdservice::TraderFuture;
    case KV::FilterStock:
    case KV::FilterFund:
    case KV::FilterBond:
        return kdservice::TraderStock;
    default:
        return kdservice::TraderNone;
    }
}

QString tradeText(kdservice::EVxTraderType trade)
{
    switch (trade) {
    case kdservice::TraderCredit:
        return QStringLiteral("信用");
    case kdservice::TraderFuture:
        return QStringLiteral("期货");
    default:
        return QStringLiteral("股票");
    }
}

double steppedPrice(double price, const TradeTerms &terms, int steps)
{
    const double tick = terms.tick > 0 ? terms.tick : 0.01;
    const double ticks = price / tick;
    const double nearest = std::round(ticks);
    double from = nearest;
    if (!isOnTick(price, tick)) // the way to the next tick is the first step
        from = steps > 0 ? std::floor(ticks) : std::ceil(ticks);
    double stepped = std::max(1.0, from + steps) * tick;
    if (terms.upperLimit != absent<double>)
        stepped = std::min(stepped, terms.upperLimit);
    if (terms.lowerLimit != absent<double>)
        stepped = std::max(stepped, terms.lowerLimit);
    return stepped;
}

qint64 steppedQuantity(qint64 quantity, int lot, int steps)
{
    const qint64 size = std::max(lot, 1);
    const qint64 kept = std::clamp<qint64>(quantity, 0, largestQuantity);
    const qint64 from = steps > 0 ? kept / size : (kept + size - 1) / size;
    return std::clamp<qint64>(from + steps, 1, largestQuantity / size) * size;
}

} // namespace terminal
