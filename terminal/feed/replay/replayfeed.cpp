#include "feed/replay/replayfeed.h"

#include "feed/batchwriter.h"
#include "feed/replay/replayloader.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace feed {

namespace {

/// Contradictions between rows that are told one by one; in a damaged recording there are thousands.
constexpr qint64 fullProblems = 20;

} // namespace

bool ReplayFeed::Cursor::operator<(const Cursor &other) const
{
    return std::tie(time, isQuote, rank, sequence, stream) >
           std::tie(other.time, other.isQuote, other.rank, other.sequence, other.stream);
}

ReplayFeed::ReplayFeed(QStringList replayPaths) : paths(std::move(replayPaths)) {}

ReplayFeed::~ReplayFeed() = default;

std::string ReplayFeed::name() const
{
    return "replay";
}

bool ReplayFeed::load(BatchWriter &writer, const std::function<bool()> &keepGoing)
{
    if (!ReplayLoader(store, writer, keepGoing).load(paths))
        return false;
    makeCursors();
    return true;
}

/// Channels numbered by day, exchange and channel.
std::vector<int> ReplayFeed::numberSpacesOfStreams() const
{
    using Key = std::tuple<int, std::string, int>;
    const auto keyOf = [this](const EventStream &stream) {
        return Key(stream.day, store.instruments()[size_t(stream.instrument)].exchange, stream.channel);
    };
    std::map<Key, int> numbers;
    for (const EventStream &stream : store.eventStreams())
        numbers.emplace(keyOf(stream), 0);
    int number = 0;
    for (auto &entry : numbers)
        entry.second = number++;
    std::vector<int> result;
    for (const EventStream &stream : store.eventStreams())
        result.push_back(numbers.at(keyOf(stream)));
    return result;
}

void ReplayFeed::makeCursors()
{
    store.sortStreamsByCode();
    numberSpaces = numberSpacesOfStreams();
    const auto &events = store.eventStreams();
    for (size_t i = 0; i < events.size(); ++i) {
        rebuildsQuotes.push_back(!store.hasQuotes(events[i].instrument, events[i].day));
        const EventRow &row = events[i].rows.front();
        push({row.time, false, numberSpaces[i], row.sequence, i, 0});
    }
    const auto &quotes = store.quoteStreams();
    for (size_t i = 0; i < quotes.size(); ++i)
        push({quotes[i].quotes.time(0), true, int(i), 0, i, 0});
    const size_t instruments = store.instruments().size();
    announced.assign(instruments, false);
    books.resize(instruments);
    bookIsChanged.assign(instruments, false);
}

void ReplayFeed::push(Cursor cursor)
{
    cursors.push_back(cursor);
    std::push_heap(cursors.begin(), cursors.end());
}

qint64 ReplayFeed::nextTime() const
{
    return cursors.empty() ? absent<qint64> : cursors.front().time;
}

void ReplayFeed::step(BatchWriter &writer)
{
    std::pop_heap(cursors.begin(), cursors.end());
    const Cursor cursor = cursors.back();
    cursors.pop_back();
    lastTime = cursor.time;
    writer.setTime(lastTime);
    ++writer.counters().records;
    if (cursor.isQuote)
        playQuote(cursor, writer);
    else
        playEvent(cursor, writer);
    advance(cursor);
    if (cursors.empty() && problems > fullProblems) {
        FeedMessage message;
        message.text = "还有 " + std::to_string(problems - fullProblems) + " 行与其他行矛盾，未逐一列出";
        writer.addMessage(std::move(message));
    }
}

void ReplayFeed::advance(Cursor cursor)
{
    ++cursor.place;
    if (cursor.isQuote) {
        const PackedQuotes &quotes = store.quoteStreams()[cursor.stream].quotes;
        if (cursor.place == quotes.size())
            return;
        cursor.time = quotes.time(cursor.place);
    } else {
        std::vector<EventRow> &rows = store.eventStreams()[cursor.stream].rows;
        if (cursor.place == rows.size()) {
            std::vector<EventRow>().swap(rows);
            return;
        }
        cursor.time = std::max(cursor.time, rows[cursor.place].time);
        cursor.sequence = rows[cursor.place].sequence;
    }
    push(cursor);
}

void ReplayFeed::announce(int instrument, BatchWriter &writer)
{
    if (announced[size_t(instrument)])
        return;
    announced[size_t(instrument)] = true;
    writer.putInstrument(store.instruments()[size_t(instrument)]);
}

void ReplayFeed::tellProblem(const EventRow &row, const std::string &text, BatchWriter &writer)
{
    if (++problems > fullProblems)
        return;
    FeedMessage message;
    message.file = store.filePath(row.file);
    message.line = row.line;
    message.text = text;
    writer.addMessage(std::move(message));
}

BookBuilder *ReplayFeed::bookFor(const EventStream &stream)
{
    const auto instrument = size_t(stream.instrument);
    if (!books[instrument])
        books[instrument] = std::make_unique<BookBuilder>();
    if (books[instrument]->day() != stream.day)
        books[instrument]->startDay(stream.day);
    if (!bookIsChanged[instrument]) {
        bookIsChanged[instrument] = true;
        changedBooks.push_back(stream.instrument);
    }
    return books[instrument].get();
}

void ReplayFeed::playEvent(const Cursor &cursor, BatchWriter &writer)
{
    const EventStream &stream = store.eventStreams()[cursor.stream];
    const EventRow &row = stream.rows[cursor.place];
    announce(stream.instrument, writer);
    BookBuilder *const book = rebuildsQuotes[cursor.stream] ? bookFor(stream) : nullptr;
    const OrderTracker::Place place{numberSpaces[cursor.stream], stream.instrument, stream.day, stream.channel};
    const RowEffect effect = tracker.apply(place, row);
    for (int i = 0; i < effect.changeCount; ++i) {
        const OrderChange &change = effect.changes[size_t(i)];
        writer.putOrder(*change.order);
        if (book)
            book->changeOrder(change.openBefore, *change.order);
    }
    if (!effect.problem.empty())
        tellProblem(row, effect.problem, writer);
    if (row.kind == EventRow::Kind::Traded)
        playDeal(stream, row, book, writer);
}

void ReplayFeed::playDeal(const EventStream &stream, const EventRow &row, BookBuilder *book, BatchWriter &writer)
{
    Deal deal;
    deal.entry = int(writer.counters().deals);
    deal.instrument = stream.instrument;
    deal.day = stream.day;
    deal.channel = stream.channel;
    deal.sequence = row.sequence;
    deal.kind = DealKind(row.flag);
    deal.price = row.price;
    deal.quantity = row.quantity;
    deal.amount = row.amount;
    deal.buyOrderNo = row.orderNo;
    deal.sellOrderNo = row.sellOrderNo;
    deal.time = row.time;
    writer.addDeal(deal);
    if (book)
        book->addDeal(deal);
}

void ReplayFeed::playQuote(const Cursor &cursor, BatchWriter &writer)
{
    const QuoteStream &stream = store.quoteStreams()[cursor.stream];
    QuoteSnapshot quote = stream.quotes.quote(cursor.place);
    quote.instrument = stream.instrument;
    Instrument &instrument = store.instrument(stream.instrument);
    const auto reference = [](auto &i) {
        return std::tie(i.previousClose, i.previousSettlement, i.upperLimit, i.lowerLimit);
    };
    if (reference(instrument) != reference(quote)) {
        reference(instrument) = reference(quote);
        announced[size_t(stream.instrument)] = false;
    }
    announce(stream.instrument, writer);
    writer.putQuote(quote);
}

void ReplayFeed::completeBatch(BatchWriter &writer)
{
    for (const int instrument : changedBooks) {
        writer.putQuote(books[size_t(instrument)]->quote(instrument, lastTime));
        bookIsChanged[size_t(instrument)] = false;
    }
    changedBooks.clear();
}

} // namespace feed
