#include "feed/replay/replaystore.h"

#include "feed/replay/timetext.h"

#include <algorithm>
#include <limits>

namespace feed {

namespace {

constexpr quint16 unknownFile = std::numeric_limits<quint16>::max();

int dayOfTime(qint64 time)
{
    return calendarDay(int((time + chinaOffset) / millisecondsPerDay));
}

bool isDeal(const EventRow &row)
{
    return row.kind == EventRow::Kind::Traded;
}

/// By sequence; what has the same number in order of files and lines, orders before deals.
bool standsBefore(const EventRow &a, const EventRow &b)
{
    return std::make_tuple(a.sequence, isDeal(a), a.file, a.line) <
           std::make_tuple(b.sequence, isDeal(b), b.file, b.line);
}

/// Drops rows that repeat a number, in ordered rows.
qint64 dropRepeated(std::vector<EventRow> &rows, const ReplayStore::Conflict &conflict)
{
    qint64 dropped = 0;
    const auto repeats = [&](const EventRow &first, const EventRow &next) {
        if (first.sequence != next.sequence || isDeal(first) != isDeal(next))
            return false;
        if (first.isSameAs(next))
            ++dropped;
        else
            conflict(first, next);
        return true;
    };
    rows.erase(std::unique(rows.begin(), rows.end(), repeats), rows.end());
    return dropped;
}

} // namespace

int ReplayStore::instrumentIndex(std::string_view code) const
{
    const auto found = indexOfCode.find(std::string(code));
    return found == indexOfCode.end() ? -1 : found->second;
}

int ReplayStore::addInstrument(Instrument instrument)
{
    const int index = int(known.size());
    instrument.index = index;
    indexOfCode.emplace(instrument.code, index);
    known.push_back(std::move(instrument));
    return index;
}

quint16 ReplayStore::addFile(const std::string &path)
{
    if (files.size() >= unknownFile)
        return unknownFile;
    files.push_back(path);
    return quint16(files.size() - 1);
}

std::string ReplayStore::filePath(quint16 file) const
{
    return file < files.size() ? files[file] : std::string();
}

EventStream &ReplayStore::eventStream(int instrument, int day, int channel)
{
    if (lastEventStream < events.size()) {
        EventStream &last = events[lastEventStream];
        if (last.instrument == instrument && last.day == day && last.channel == channel)
            return last;
    }
    const auto [found, isNew] = placeOfEvents.try_emplace({instrument, day, channel}, events.size());
    if (isNew) {
        events.emplace_back();
        events.back().instrument = instrument;
        events.back().day = day;
        events.back().channel = channel;
    }
    lastEventStream = found->second;
    return events[lastEventStream];
}

void ReplayStore::addEvent(int instrument, int day, int channel, const EventRow &row)
{
    eventStream(instrument, day, channel).rows.push_back(row);
}

void ReplayStore::addQuote(const QuoteSnapshot &quote)
{
    const auto [found, isNew] = placeOfQuotes.try_emplace(quote.instrument, quotes.size());
    if (isNew)
        quotes.push_back({quote.instrument, {}});
    quotes[found->second].quotes.append(quote);
}

qint64 ReplayStore::settle(const Conflict &conflict)
{
    qint64 dropped = 0;
    for (EventStream &stream : events) {
        if (!std::is_sorted(stream.rows.begin(), stream.rows.end(), standsBefore))
            std::sort(stream.rows.begin(), stream.rows.end(), standsBefore);
        dropped += dropRepeated(stream.rows, conflict);
    }
    for (QuoteStream &stream : quotes) {
        dropped += stream.quotes.settle();
        for (size_t i = 0; i < stream.quotes.size(); ++i)
            quoteDays.emplace_hint(quoteDays.end(), stream.instrument, dayOfTime(stream.quotes.time(i)));
    }
    return dropped;
}

void ReplayStore::sortStreamsByCode()
{
    const auto codeOf = [this](const auto &stream) -> const std::string & {
        return known[size_t(stream.instrument)].code;
    };
    std::sort(events.begin(), events.end(), [&](const EventStream &a, const EventStream &b) {
        return std::tie(codeOf(a), a.day, a.channel) < std::tie(codeOf(b), b.day, b.channel);
    });
    std::sort(quotes.begin(), quotes.end(),
              [&](const QuoteStream &a, const QuoteStream &b) { return codeOf(a) < codeOf(b); });
    placeOfEvents.clear();
    placeOfQuotes.clear();
}

bool ReplayStore::hasQuotes(int instrument, int day) const
{
    return quoteDays.count({instrument, day}) > 0;
}

qint64 ReplayStore::rowCount() const
{
    qint64 count = 0;
    for (const EventStream &stream : events)
        count += qint64(stream.rows.size());
    for (const QuoteStream &stream : quotes)
        count += qint64(stream.quotes.size());
    return count;
}

} // namespace feed
