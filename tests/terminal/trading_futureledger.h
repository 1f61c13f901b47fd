#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "trading_support.h"

namespace tradingtest {

/// The books of one futures account kept a second time, from its deals and the settlement prices alone, by rules and
/// rates written down here once more: rebar 0.01 %, index futures 0.0023 % and 0.023 % for closing on the same day, a
/// margin of 12 %.
class FutureLedger
{
public:
    using Money = trading::Money;

    explicit FutureLedger(Money initial) : balance(initial) {}

    /// An order as it came in: which lots a closing one has set aside is its own choice where the exchange leaves it
    /// one.
    void takeOrder(const trading::PaperOrder &order) { oldLotsOf[order.id] = order.heldOld; }

    void takeDeal(const trading::PaperDeal &deal, int multiplier)
    {
        Lots &lots = held[keyOf(deal)];
        Fees &fees = feesOf[deal.order];
        fees.code = deal.code;
        fees.opens = deal.offset == trading::Offset::Open;
        const Money amount = valueOf(deal.price, deal.quantity, multiplier);
        if (fees.opens) {
            lots.today += deal.quantity;
            lots.todayBasis += amount;
            fees.other += amount;
        } else {
            qint64 &oldLots = oldLotsOf[deal.order];
            const qint64 fromOld = std::min(deal.quantity, oldLots);
            const qint64 fromToday = deal.quantity - fromOld;
            oldLots -= fromOld;
            const int sign = keyOf(deal).second == trading::PositionSide::Long ? 1 : -1;
            balance +=
                sign * (amount - take(lots.old, lots.oldBasis, fromOld) - take(lots.today, lots.todayBasis, fromToday));
            fees.other += valueOf(deal.price, fromOld, multiplier);
            fees.today += valueOf(deal.price, fromToday, multiplier);
        }
        balance += fees.charged;
        fees.charged = fees.total();
        balance -= fees.charged;
    }

    /// The exchange's prices of the day that has ended, by code, per lot.
    void endDay(const std::map<std::string, Money> &settlements)
    {
        for (auto &[key, lots] : held) {
            const Money value = (lots.old + lots.today) * settlements.at(key.first);
            const int sign = key.second == trading::PositionSide::Long ? 1 : -1;
            balance += sign * (value - lots.oldBasis - lots.todayBasis);
            lots = {lots.old + lots.today, 0, value, 0};
        }
    }

    /// "balance margin available" in yuan, with what open orders set aside; values by code, per lot.
    std::string fundsText(const std::map<std::string, Money> &last,
                          const std::vector<trading::PaperOrder> &openOrders) const
    {
        Money margin = 0;
        Money floating = 0;
        for (const auto &[key, lots] : held) {
            const int sign = key.second == trading::PositionSide::Long ? 1 : -1;
            margin += marginOf(lots.oldBasis + lots.todayBasis);
            floating += sign * ((lots.old + lots.today) * last.at(key.first) - lots.oldBasis - lots.todayBasis);
        }
        Money frozen = 0;
        for (const trading::PaperOrder &order : openOrders) {
            if (!order.opensPosition())
                continue;
            const int multiplier = order.code == "rb2410" ? 10 : 300;
            Fees fees;
            if (const auto found = feesOf.find(order.id); found != feesOf.end())
                fees = found->second;
            fees.code = order.code;
            fees.opens = true;
            const Money amount = valueOf(order.price, order.openQuantity(), multiplier);
            fees.other += amount;
            frozen += marginOf(amount) + fees.total() - fees.charged;
        }
        return trading::moneyText(balance).toStdString() + ' ' + trading::moneyText(margin).toStdString() + ' ' +
               trading::moneyText(balance + std::min<Money>(0, floating) - margin - frozen).toStdString();
    }

    /// Like tradingtest::positionsText().
    std::string positionsText() const
    {
        std::string text;
        for (const auto &[key, lots] : held)
            if (lots.old + lots.today > 0)
                text += key.first + (key.second == trading::PositionSide::Long ? " long " : " short ") +
                        std::to_string(lots.old) + '+' + std::to_string(lots.today) + ' ' +
                        trading::moneyText(lots.oldBasis + lots.todayBasis).toStdString() + '\n';
        return text;
    }

private:
    using Key = std::pair<std::string, trading::PositionSide>;

    struct Lots
    {
        qint64 old = 0;
        qint64 today = 0;
        Money oldBasis = 0;
        Money todayBasis = 0;
    };

    struct Fees
    {
        std::string code;
        bool opens = false;
        Money other = 0; ///< amount of all but
        Money today = 0; ///< what closed lots of the same day
        Money charged = 0;

        Money total() const
        {
            const bool isRebar = code == "rb2410";
            return share(other, isRebar ? 100 : 23) + share(today, isRebar ? 100 : 230);
        }
    };

    static Key keyOf(const trading::PaperDeal &deal)
    {
        const bool opens = deal.offset == trading::Offset::Open;
        const bool isLong = (deal.side == feed::Side::Buy) == opens;
        return {deal.code, isLong ? trading::PositionSide::Long : trading::PositionSide::Short};
    }
    static Money valueOf(qint64 price, qint64 quantity, int multiplier) { return price / 100 * quantity * multiplier; }
    /// Millionths of an amount, to the cent, halves upwards.
    static Money share(Money amount, Money millionths)
    {
        return (amount * millionths + 50'000'000) / 100'000'000 * 100;
    }
    static Money marginOf(Money amount) { return share(amount, 120'000); }
    /// Takes lots out at their average; what they stood for.
    static Money take(qint64 &quantity, Money &basis, qint64 taken)
    {
        if (taken == 0)
            return 0;
        const Money part = taken == quantity ? basis : basis * taken / quantity;
        quantity -= taken;
        basis -= part;
        return part;
    }

    Money balance;
    std::map<Key, Lots> held;
    std::map<qint64, Fees> feesOf;
    std::map<qint64, qint64> oldLotsOf;
};

} // namespace tradingtest
