#pragma once

#include <QtCore/QString>

#include "feed/marketdata.h"
#include "kdservice/evxtradertype.h"
#include "kv/efilterflag.h"
#include "kv/epricetype.h"

namespace terminal {

/// How an instrument is traded. Prices in its currency per unit; an absent limit does not limit.
struct TradeTerms
{
    double tick = 0.01;
    int priceDecimals = 2;
    int lot = 100;      ///< step of a buy quantity
    int multiplier = 1; ///< units per quantity
    double upperLimit = feed::absent<double>;
    double lowerLimit = feed::absent<double>;
};

/// What an account has for an order; absent what nobody told.
struct TicketFunds
{
    double available = feed::absent<double>;
    double total = feed::absent<double>;
    qint64 sellable = feed::absent<qint64>; ///< of the instrument of the order
};

/// The fields that an order can be wrong in.
enum class OrderField
{
    None,
    Account,
    Code,
    Price,
    Quantity,
    Contract
};

struct OrderFault
{
    OrderField field = OrderField::None;
    QString text; ///< for the user
};

/// An order as the ticket holds it, complete or not. A plain value.
struct OrderDraft
{
    kdservice::EVxTraderType trade = kdservice::TraderStock;
    int accountKind = 0; ///< a KV::ESelectedAccountType
    QString account;
    QString code;
    QString name;
    bool isKnown = false; ///< whether the code is an instrument's
    KV::EFilterFlag kind = KV::FilterStock;
    TradeTerms terms;
    bool isLong = true;
    bool isOpen = true; ///< stocks are neither opened nor closed
    KV::EPriceType priceType = KV::PriceLimit;
    double price = feed::absent<double>;
    qint64 quantity = feed::absent<qint64>;
    QString contractSource; ///< where a credit's shares or money come from
    bool namesContract = false;
    QString contractId;

    bool isBuy() const;
    /// Whether it gives away what is held: the other way round it needs money. Of a stock the sale, else the closing.
    bool isSale() const;
    /// "买入", "融资买入", "卖出平仓" ...
    QString operation() const;
    /// Shares, or lots of futures.
    QString unit() const;
    QString priceText() const;
    /// Price x quantity x multiplier; absent while one of them is.
    double amount() const;
    /// What is wrong first, from top to bottom; no field when it can be sent.
    OrderFault fault() const;
    /// One line for the log.
    QString logText() const;

    /// The quantity that a fraction of the funds is worth at a price: of the available or the total money for a buy
    /// (never more than is available), of what can be sold for a sale. In whole lots, except that all of a holding is
    /// sold with its odd rest. Absent when funds or price are.
    qint64 sized(const TicketFunds &funds, double atPrice, int parts, bool ofTotal) const;

private:
    QString codeFault() const;
    QString priceFault() const;
    QString quantityFault() const;
};

/// The business that trades instruments of a kind, as a ticket offers it; TraderNone for those that it does not trade.
kdservice::EVxTraderType tradeOf(KV::EFilterFlag kind);
/// "股票", "信用", "期货".
QString tradeText(kdservice::EVxTraderType trade);

/// A price next to another by whole ticks; one off the ticks goes to the nearest in that direction first. Kept within
/// the limits and above 0.
double steppedPrice(double price, const TradeTerms &terms, int steps);
/// The same for a quantity in lots, at least one.
qint64 steppedQuantity(qint64 quantity, int lot, int steps);

} // namespace terminal
