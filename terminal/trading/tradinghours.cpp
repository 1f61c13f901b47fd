#include "trading/tradinghours.h"

#include "trading/tradingrules.h"

#include <QtCore/QDate>
#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

namespace trading {

namespace {

constexpr qint64 minute = 60 * 1000;
constexpr qint64 wholeDay = 24 * 60 * minute;
constexpr int dayMinutes = 24 * 60;
constexpr int nightStart = 21 * 60;
/// From here to the next morning futures are in the next day's business: its first orders come in before the session.
constexpr int nightEntry = 20 * 60;
constexpr int nightLatestEnd = 3 * 60;

struct Span
{
    int from; ///< minute of the day
    int to;   ///< first minute after it; past midnight above 24 hours
};

constexpr int at(int hour, int minuteOfHour)
{
    return hour * 60 + minuteOfHour;
}

struct NightProducts
{
    int end;
    std::vector<std::string> products;
};

/// When the night session of a product ends; 0 for one that has none. As published by the exchanges for these products.
int nightEnd(const std::string &code)
{
    static const std::vector<NightProducts> nights = {
        {dayMinutes + at(2, 30), {"au", "ag", "sc"}},
        {dayMinutes + at(1, 0), {"cu", "al", "zn", "ni"}},
        {at(23, 0),
         {"rb", "ru", "CF", "FG", "MA", "OI", "RM", "SA", "SR", "TA", "a", "c", "i", "j", "jm", "m", "p", "y"}}};
    const std::string product = productOf(code);
    for (const NightProducts &night : nights)
        if (std::count(night.products.begin(), night.products.end(), product) > 0)
            return night.end;
    return 0;
}

std::vector<Span> spansOf(const feed::Instrument &instrument)
{
    if (instrument.kind != feed::InstrumentKind::Future)
        return {{at(9, 15), at(9, 25)}, {at(9, 30), at(11, 30)}, {at(13, 0), at(15, 0)}};
    if (instrument.exchange == "CFFEX")
        return {{at(9, 30), at(11, 30)}, {at(13, 0), at(15, 0)}};
    std::vector<Span> spans = {{at(9, 0), at(10, 15)}, {at(10, 30), at(11, 30)}, {at(13, 30), at(15, 0)}};
    if (const int end = nightEnd(instrument.code))
        spans.insert(spans.begin(), Span{nightStart, end});
    return spans;
}

int minuteOfDay(qint64 time)
{
    return int((time + feed::chinaOffset) % wholeDay / minute);
}

QDate dateOf(qint64 time)
{
    return QDate(1970, 1, 1).addDays((time + feed::chinaOffset) / wholeDay);
}

bool contains(const Span &span, int now)
{
    return (now >= span.from && now < span.to) || now + dayMinutes < span.to;
}

/// The night after Friday's session is Saturday's early morning, and no other session starts at a weekend.
bool isTradingDate(qint64 time, bool isAfterMidnight)
{
    const int weekday = dateOf(time).addDays(isAfterMidnight ? -1 : 0).dayOfWeek();
    return weekday <= 5;
}

} // namespace

int TradingHours::dayOf(AccountKind kind, qint64 time)
{
    QDate date = dateOf(time);
    if (kind == AccountKind::Future) {
        if (minuteOfDay(time) >= nightEntry)
            date = date.addDays(1);
        while (date.dayOfWeek() > 5)
            date = date.addDays(1);
    }
    return date.year() * 10000 + date.month() * 100 + date.day();
}

TradingHours::State TradingHours::stateOf(const feed::Instrument &instrument, qint64 time)
{
    const int now = minuteOfDay(time);
    const std::vector<Span> spans = spansOf(instrument);
    const bool isOpen =
        std::any_of(spans.begin(), spans.end(), [now](const Span &span) { return contains(span, now); });
    const bool isAfterMidnight = now < nightLatestEnd;
    if (!isOpen || !isTradingDate(time, isAfterMidnight))
        return State::Closed;
    const bool auctionEnds = (now >= at(9, 20) && now < at(9, 25)) || now >= at(14, 57);
    if (instrument.kind != feed::InstrumentKind::Future && auctionEnds)
        return State::NoCancelling;
    return State::Open;
}

std::string TradingHours::text(const feed::Instrument &instrument)
{
    std::string result;
    for (const Span &span : spansOf(instrument)) {
        std::array<char, 32> buffer{};
        const int to = span.to % dayMinutes;
        std::snprintf(buffer.data(), buffer.size(), "%d:%02d-%d:%02d", span.from / 60, span.from % 60, to / 60,
                      to % 60);
        result += (result.empty() ? "" : "、") + std::string(buffer.data());
    }
    return result;
}

} // namespace trading
