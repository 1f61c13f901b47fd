#include "feed/bookbuilder.h"

#include "feed/instrumentrules.h"

namespace feed {

namespace {

constexpr qint64 minute = 60 * 1000;
constexpr qint64 wholeDay = 24 * 60 * minute;

} // namespace

TradingPhase phaseAt(qint64 time)
{
    struct Start
    {
        qint64 minuteOfDay;
        TradingPhase phase;
    };
    static constexpr Start starts[] = {
        {15 * 60, TradingPhase::Closed},
        {14 * 60 + 57, TradingPhase::ClosingAuction},
        {13 * 60, TradingPhase::Continuous},
        {11 * 60 + 30, TradingPhase::LunchBreak},
        {9 * 60 + 30, TradingPhase::Continuous},
        {9 * 60 + 25, TradingPhase::BeforeContinuous},
        {9 * 60 + 15, TradingPhase::OpeningAuction},
    };
    const qint64 minuteOfDay = (time + chinaOffset) % wholeDay / minute;
    for (const Start &start : starts)
        if (minuteOfDay >= start.minuteOfDay)
            return start.phase;
    return TradingPhase::BeforeOpening;
}

void BookBuilder::startDay(int day)
{
    currentDay = day;
    levels.clear();
    statistics = {};
}

void BookBuilder::changeOrder(qint64 openBefore, const OrderState &order)
{
    const qint64 open = order.openQuantity();
    if (order.price == absent<double> || open == openBefore)
        return;
    const int orders = int(open > 0) - int(openBefore > 0);
    levels.change(order.side, priceUnits(order.price), open - openBefore, orders);
}

void BookBuilder::addDeal(const Deal &deal)
{
    statistics.add(deal.price, deal.quantity, deal.amount);
}

QuoteSnapshot BookBuilder::quote(int instrument, qint64 time) const
{
    QuoteSnapshot result;
    result.instrument = instrument;
    result.time = time;
    result.phase = phaseAt(time);
    statistics.fill(result);
    levels.fillLevels(result);
    return result;
}

} // namespace feed
