#include "feed/marketdata.h"

namespace feed {

namespace {

std::string keyText(int day, const std::string &exchange, int channel, qint64 number)
{
    return std::to_string(day) + '.' + exchange + '.' + std::to_string(channel) + '.' + std::to_string(number);
}

} // namespace

OrderStatus OrderState::statusOfQuantities() const
{
    if (openQuantity() > 0)
        return filled > 0 ? OrderStatus::PartFilled : OrderStatus::Accepted;
    if (cancelled == 0)
        return OrderStatus::Filled;
    return filled > 0 ? OrderStatus::PartCancelled : OrderStatus::Cancelled;
}

double referencePrice(const QuoteSnapshot &quote, const Instrument &instrument)
{
    for (const double price : {quote.previousSettlement, instrument.previousSettlement, quote.previousClose})
        if (price != absent<double>)
            return price;
    return instrument.previousClose;
}

std::string orderKey(const OrderState &order, const Instrument &instrument)
{
    return keyText(order.day, instrument.exchange, order.channel, order.orderNo);
}

std::string dealKey(const Deal &deal, const Instrument &instrument)
{
    return keyText(deal.day, instrument.exchange, deal.channel, deal.sequence);
}

} // namespace feed
