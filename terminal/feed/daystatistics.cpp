#include "feed/daystatistics.h"

#include <algorithm>

namespace feed {

void DayStatistics::add(double price, qint64 quantity, double amount)
{
    if (openPrice == absent<double>)
        openPrice = highPrice = lowPrice = price;
    highPrice = std::max(highPrice, price);
    lowPrice = std::min(lowPrice, price);
    lastPrice = price;
    volume += quantity;
    turnover += amount;
}

void DayStatistics::fill(QuoteSnapshot &quote) const
{
    quote.last = lastPrice;
    quote.open = openPrice;
    quote.high = highPrice;
    quote.low = lowPrice;
    quote.volume = volume;
    quote.turnover = turnover;
}

} // namespace feed
