#pragma once

#include "feed/marketdata.h"

namespace feed {

/// What the deals of a day come to.
class DayStatistics
{
public:
    void add(double price, qint64 quantity, double amount);
    /// Sets last, open, high, low, volume and turnover; the prices are absent before the first deal.
    void fill(QuoteSnapshot &quote) const;

private:
    double openPrice = absent<double>;
    double highPrice = absent<double>;
    double lowPrice = absent<double>;
    double lastPrice = absent<double>;
    qint64 volume = 0;
    double turnover = 0;
};

} // namespace feed
