#pragma once

#include "feed/bookbuilder.h"
#include "feed/feedsource.h"
#include "feed/replay/ordertracker.h"
#include "feed/replay/replaystore.h"

#include <QStringList>

#include <memory>
#include <vector>

namespace feed {

/// Plays recorded files: orders, deals, cancels and snapshots of any stocks and days, in order of time. Rows of one
/// stock in one channel keep the order of their numbers, which is the exchange's own; should the times of such rows run
/// back, they count as the latest time before. Rows of equal time come in order of exchange, channel and number,
/// snapshots last, so that the order does not depend on the files' order. Where a day of a stock has no snapshots, its
/// quotes are rebuilt from its orders and deals. Memory: 64 bytes a row of orders and trades, about 150 a snapshot, and
/// about 130 an order.
class ReplayFeed : public FeedSource
{
public:
    explicit ReplayFeed(QStringList paths);
    ~ReplayFeed() override;

    std::string name() const override;
    bool load(BatchWriter &writer, const std::function<bool()> &keepGoing) override;
    qint64 nextTime() const override;
    void step(BatchWriter &writer) override;
    void completeBatch(BatchWriter &writer) override;

private:
    /// The next row of a stream.
    struct Cursor
    {
        qint64 time = 0;
        bool isQuote = false;
        int rank = 0; ///< of the channel, of a snapshot's stock
        qint64 sequence = 0;
        size_t stream = 0;
        size_t place = 0;

        /// True when the other is to be played first.
        bool operator<(const Cursor &other) const;
    };

    void makeCursors();
    std::vector<int> numberSpacesOfStreams() const;
    void push(Cursor cursor);
    /// Puts the cursor behind its row, or ends its stream.
    void advance(Cursor cursor);
    void playEvent(const Cursor &cursor, BatchWriter &writer);
    void playDeal(const EventStream &stream, const EventRow &row, BookBuilder *book, BatchWriter &writer);
    void playQuote(const Cursor &cursor, BatchWriter &writer);
    BookBuilder *bookFor(const EventStream &stream);
    void announce(int instrument, BatchWriter &writer);
    void tellProblem(const EventRow &row, const std::string &text, BatchWriter &writer);

    const QStringList paths;
    ReplayStore store;
    OrderTracker tracker;
    std::vector<Cursor> cursors; ///< a heap, the next row in front
    std::vector<int> numberSpaces;
    std::vector<bool> rebuildsQuotes; ///< by event stream
    std::vector<bool> announced;      ///< by instrument
    std::vector<std::unique_ptr<BookBuilder>> books;
    std::vector<int> changedBooks;
    std::vector<bool> bookIsChanged;
    qint64 lastTime = 0;
    qint64 problems = 0;
};

} // namespace feed
