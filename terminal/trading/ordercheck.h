#pragma once

#include "trading/accountbook.h"
#include "trading/refusal.h"
#include "trading/tradinghours.h"

namespace trading {

/// What an order is judged by.
struct OrderContext
{
    const feed::Instrument &instrument; ///< with the limits of the day, where known
    const AccountBook &book;
    const TradingRules &rules;
    qint64 now = 0;
};

/// The first thing that is wrong with an order, or none. `order` is filled in already: price in units, offset as the
/// market knows it.
Refusal checkOrder(const PaperOrder &order, const OrderContext &context);

/// A price as the instrument writes it.
QString priceText(qint64 price, const feed::Instrument &instrument);

} // namespace trading
