#include "window/feedpump.h"

#include <QtCore/QTimerEvent>
#include <algorithm>

namespace terminal {

namespace {

/// How long the tables are filled before the event loop gets its turn.
constexpr qint64 budgetNs = 5'000'000;
/// Records that go to a table in one call: enough to settle its order once for many, far less than a budget's worth.
constexpr size_t sliceSize = 256;

} // namespace

FeedPump::FeedPump(std::unique_ptr<feed::MarketFeed> feed, QObject *parent)
    : QObject(parent), source(std::move(feed)), wantedSpeed(source->speed())
{
    slice.reserve(sliceSize);
    source->setReadyCallback([this] { wake(); });
}

FeedPump::~FeedPump()
{
    source->stop();
}

void FeedPump::start()
{
    source->start();
}

void FeedPump::stop()
{
    source->stop();
    continuation.stop();
    stopped = true;
}

void FeedPump::setSpeed(double factor)
{
    wantedSpeed = factor;
    if (!paused)
        source->setSpeed(factor);
}

void FeedPump::setPaused(bool pause)
{
    paused = pause;
    source->setSpeed(paused ? 0 : wantedSpeed);
}

bool FeedPump::canEndDay() const
{
    return source->canEndDay();
}

void FeedPump::endDay()
{
    source->endDay();
}

QString FeedPump::sourceName() const
{
    return QString::fromStdString(source->sourceName());
}

/// On the feed's thread.
void FeedPump::wake()
{
    if (wakePosted.exchange(true))
        return;
    calls.post([this] {
        wakePosted = false;
        if (!continuation.isActive())
            work();
    });
}

void FeedPump::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == continuation.timerId())
        work();
}

void FeedPump::work()
{
    if (stopped)
        return;
    QElapsedTimer spent;
    spent.start();
    while (batchOpen || takeBatch()) {
        if (spent.nsecsElapsed() >= budgetNs) {
            // A timer without an interval runs when nothing else waits: input and painting come first.
            if (!continuation.isActive())
                continuation.start(0, this);
            return;
        }
        putSlice();
    }
    continuation.stop();
}

bool FeedPump::takeBatch()
{
    if (!source->take(batch))
        return false;
    batchOpen = true;
    nextOrder = 0;
    nextDeal = 0;
    nextQuote = 0;
    for (const feed::Instrument &instrument : batch.instruments)
        takeInstrument(instrument);
    for (const feed::FeedMessage &message : batch.messages)
        Q_EMIT messageArrived(message);
    return true;
}

void FeedPump::takeInstrument(const feed::Instrument &instrument)
{
    records.takeInstrument(instrument);
    for (MarketListener *listener : listeners)
        listener->takeInstrument(instrument);
}

bool FeedPump::hasRest() const
{
    return nextOrder < batch.orders.size() || nextDeal < batch.deals.size() || nextQuote < batch.quotes.size();
}

void FeedPump::putSlice()
{
    if (nextOrder < batch.orders.size())
        putOrders();
    else if (nextDeal < batch.deals.size())
        putDeals();
    else
        putQuotes();
    if (!hasRest())
        completeBatch();
}

void FeedPump::putOrders()
{
    slice.clear();
    const size_t end = std::min(batch.orders.size(), nextOrder + sliceSize);
    for (; nextOrder < end; ++nextOrder) {
        const feed::OrderState &order = batch.orders[nextOrder];
        const auto entry = static_cast<size_t>(order.entry);
        if (entry >= filledOf.size())
            filledOf.resize(entry + 1);
        filledSum += order.filled - std::exchange(filledOf[entry], order.filled);
        if (auto record = records.orderRecord(order))
            slice.push_back(std::move(record));
        for (MarketListener *listener : listeners)
            listener->takeOrder(order);
    }
    if (orderSink && !slice.isEmpty())
        orderSink(slice);
}

void FeedPump::putDeals()
{
    slice.clear();
    const size_t end = std::min(batch.deals.size(), nextDeal + sliceSize);
    for (; nextDeal < end; ++nextDeal) {
        if (auto record = records.dealRecord(batch.deals[nextDeal]))
            slice.push_back(std::move(record));
        for (MarketListener *listener : listeners)
            listener->takeDeal(batch.deals[nextDeal]);
    }
    if (dealSink && !slice.isEmpty())
        dealSink(slice);
}

void FeedPump::putQuotes()
{
    slice.clear();
    const size_t end = std::min(batch.quotes.size(), nextQuote + sliceSize);
    for (; nextQuote < end; ++nextQuote) {
        if (auto record = records.quoteRecord(batch.quotes[nextQuote]))
            slice.push_back(std::move(record));
        for (MarketListener *listener : listeners)
            listener->takeQuote(batch.quotes[nextQuote]);
    }
    if (quoteSink && !slice.isEmpty())
        quoteSink(slice);
}

void FeedPump::completeBatch()
{
    batchOpen = false;
    totals = batch.counters;
    if (batch.time != feed::absent<qint64>)
        clock = batch.time;
    if (!batch.finished)
        return;
    finishedAll = true;
    failedAll = batch.failed;
    Q_EMIT finished();
}

} // namespace terminal
