#include "desk/exchangedays.h"

#include <QtCore/QDate>
#include <algorithm>

#include "trading/tradinghours.h"

namespace terminal {

namespace {

constexpr qint64 dayMs = 24 * 60 * 60 * 1000;

QDate dateOf(int day)
{
    return {day / 10000, day / 100 % 100, day % 100};
}

int nextWeekday(int day)
{
    QDate date = dateOf(day).addDays(1);
    while (date.dayOfWeek() > Qt::Friday)
        date = date.addDays(1);
    return date.year() * 10000 + date.month() * 100 + date.day();
}

} // namespace

qint64 ExchangeDays::moved(qint64 time, int latestDay)
{
    const int day = trading::TradingHours::dayOf(trading::AccountKind::Stock, time);
    if (playedDay == 0)
        deskDay = std::max(latestDay, day);
    else if (day > playedDay)
        deskDay = nextWeekday(deskDay);
    if (day > playedDay) {
        playedDay = day;
        offset = dateOf(day).daysTo(dateOf(deskDay)) * dayMs;
    }
    return time + offset;
}

} // namespace terminal
