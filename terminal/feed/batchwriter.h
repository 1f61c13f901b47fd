#pragma once

#include "feed/feedbatch.h"

#include <vector>

namespace feed {

/// Collects what a source gives into the batch that is handed over next: one entry per changed order, quote and
/// instrument. Used by the feed's thread alone. All operations cost O(1).
class BatchWriter
{
public:
    void putInstrument(const Instrument &instrument);
    /// A new or changed order. New ones come in order of `entry`, without gaps.
    void putOrder(const OrderState &order);
    void addDeal(const Deal &deal);
    void putQuote(const QuoteSnapshot &quote);
    void addMessage(FeedMessage message);
    /// The time of the event whose changes follow.
    void setTime(qint64 time) { open.time = time; }

    /// Totals since the start; a source counts its own rows and bytes here.
    FeedCounters &counters() { return total; }
    const FeedBatch &batch() const { return open; }

    /// Marks the open batch as the last.
    void endBatch(bool failed);
    /// Swaps the collected batch, with the totals so far, against an empty one whose memory is used for the next.
    void handOver(FeedBatch &emptied);

private:
    FeedBatch open;
    FeedCounters total;
    /// Where an order stands in the batch, by entry. A place counts only if that order stands there, so that
    /// nothing has to be reset with every batch. The same for quotes and instruments.
    std::vector<quint32> orderPlaces;
    std::vector<quint32> quotePlaces;
    std::vector<quint32> instrumentPlaces;
};

} // namespace feed
