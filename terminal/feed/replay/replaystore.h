#pragma once

#include "feed/replay/eventrow.h"
#include "feed/replay/packedquotes.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

namespace feed {

/// Rows of one instrument on one day in one channel.
struct EventStream
{
    int instrument = 0;
    int day = 0; ///< yyyymmdd
    int channel = 0;
    std::vector<EventRow> rows;
};

/// Snapshots of one instrument.
struct QuoteStream
{
    int instrument = 0;
    PackedQuotes quotes;
};

/// What was read from files: rows by stream, instruments, and the paths, for messages.
class ReplayStore
{
public:
    /// A row that contradicts another with its number.
    using Conflict = std::function<void(const EventRow &first, const EventRow &dropped)>;

    /// Index of the instrument with this code, -1 for an unknown one.
    int instrumentIndex(std::string_view code) const;
    int addInstrument(Instrument instrument);
    Instrument &instrument(int index) { return known[size_t(index)]; }
    const std::vector<Instrument> &instruments() const { return known; }

    /// Files are numbered in order of their adding; all beyond 65,534 share one number that has no path.
    quint16 addFile(const std::string &path);
    std::string filePath(quint16 file) const;

    void addEvent(int instrument, int day, int channel, const EventRow &row);
    void addQuote(const QuoteSnapshot &quote);

    /// Puts each stream in order, events by sequence and quotes by time, and drops what stands twice. Of events that
    /// have the same number but differ, the first stands, and `conflict` hears of the other. Returns how many were
    /// dropped as equal.
    qint64 settle(const Conflict &conflict);
    qint64 rowCount() const;
    /// Brings the streams into an order that does not depend on the order of the files. Nothing can be added any more.
    void sortStreamsByCode();
    /// Whether a stock has snapshots of this day; after settle().
    bool hasQuotes(int instrument, int day) const;

    std::vector<EventStream> &eventStreams() { return events; }
    const std::vector<EventStream> &eventStreams() const { return events; }
    const std::vector<QuoteStream> &quoteStreams() const { return quotes; }

private:
    using StreamKey = std::tuple<int, int, int>;

    EventStream &eventStream(int instrument, int day, int channel);

    std::vector<Instrument> known;
    std::unordered_map<std::string, int> indexOfCode;
    std::vector<std::string> files;
    std::vector<EventStream> events;
    std::vector<QuoteStream> quotes;
    std::map<StreamKey, size_t> placeOfEvents;
    std::map<int, size_t> placeOfQuotes;
    std::set<std::pair<int, int>> quoteDays; ///< instrument and day of all snapshots, once settled
    size_t lastEventStream = 0;              ///< rows of one stock follow each other
};

} // namespace feed
