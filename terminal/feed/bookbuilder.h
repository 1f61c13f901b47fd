#pragma once

#include "feed/daystatistics.h"
#include "feed/levelbook.h"
#include "feed/marketdata.h"

namespace feed {

/// Rebuilds one stock's quote out of its orders and deals, where no snapshots are recorded. The book holds what is open
/// of the listed orders. An order that trades as it arrives is listed only afterwards, with its remainder, so that
/// outside auctions the book is never crossed.
class BookBuilder
{
public:
    /// Forgets everything for a new day.
    void startDay(int day);
    int day() const { return currentDay; }

    /// An order of the stock has changed; `openBefore` is what was open of it before.
    void changeOrder(qint64 openBefore, const OrderState &order);
    void addDeal(const Deal &deal);

    /// The quote at `time`. Previous close and limits are absent, since orders and deals do not tell them.
    QuoteSnapshot quote(int instrument, qint64 time) const;

private:
    int currentDay = 0;
    LevelBook levels;
    DayStatistics statistics;
};

/// The phase that the stock exchanges are in at this time.
TradingPhase phaseAt(qint64 time);

} // namespace feed
