#include "feed/marketfeed.h"

#include "feed/batchwriter.h"
#include "feed/feedsource.h"
#include "feed/playclock.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace feed {

class MarketFeed::Private
{
public:
    Private(std::unique_ptr<FeedSource> givenSource, double givenSpeed, size_t limit)
        : source(std::move(givenSource)), batchLimit(limit), clock(givenSpeed, source->longestGap())
    {
    }

    void run();
    void play();
    /// Hands the open batch over when the taker has emptied the one before.
    bool offer();
    void offerOrWait();
    /// Waits until market time `next` is reached, the speed changes or the feed stops, and offers what is open
    /// meanwhile.
    void waitFor(qint64 next);
    /// The same when nothing comes before the day is ended.
    void waitForNextDay();
    void finish(bool failed);

    const std::unique_ptr<FeedSource> source;
    const size_t batchLimit;
    std::function<void()> readyCallback;
    std::thread thread;
    std::atomic<bool> stopping{false};
    BatchWriter writer; ///< of the feed's thread

    mutable std::mutex mutex; ///< guards what follows
    std::condition_variable changed;
    PlayClock clock;
    FeedBatch ready;
    bool readyIsFull = false;
    bool dayEnds = false; ///< asked for, and not done yet
};

bool MarketFeed::Private::offer()
{
    {
        std::lock_guard<std::mutex> lock(mutex);
        if (readyIsFull)
            return false;
        writer.handOver(ready);
        readyIsFull = true;
    }
    if (readyCallback)
        readyCallback();
    return true;
}

void MarketFeed::Private::offerOrWait()
{
    source->completeBatch(writer);
    while (!offer() && !stopping) {
        std::unique_lock<std::mutex> lock(mutex);
        changed.wait(lock, [this] { return !readyIsFull || stopping; });
    }
}

void MarketFeed::Private::waitFor(qint64 next)
{
    source->completeBatch(writer);
    if (!writer.batch().isEmpty() && offer())
        return;
    const bool unoffered = !writer.batch().isEmpty();
    std::unique_lock<std::mutex> lock(mutex);
    if (stopping || dayEnds || (unoffered && !readyIsFull))
        return;
    const auto due = clock.due(next);
    if (due)
        changed.wait_until(lock, *due);
    else
        changed.wait(lock);
}

void MarketFeed::Private::waitForNextDay()
{
    source->completeBatch(writer);
    if (!writer.batch().isEmpty())
        offerOrWait();
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait(lock, [this] { return stopping || dayEnds; });
}

void MarketFeed::Private::play()
{
    while (!stopping) {
        const qint64 next = source->nextTime();
        bool isDue = false;
        bool isEnding = false;
        {
            std::lock_guard<std::mutex> lock(mutex);
            isEnding = std::exchange(dayEnds, false);
            isDue = !isEnding && next != absent<qint64> && clock.isDue(next);
        }
        if (isEnding) {
            source->endDay(writer);
        } else if (isDue) {
            source->step(writer);
            if (writer.batch().size() >= batchLimit)
                offerOrWait();
        } else if (next != absent<qint64>) {
            waitFor(next);
        } else if (source->canEndDay()) {
            waitForNextDay();
        } else {
            return;
        }
    }
}

void MarketFeed::Private::run()
{
    // While a source is being prepared its counters tell how far it is.
    constexpr auto offerInterval = std::chrono::milliseconds(50);
    auto lastOffer = std::chrono::steady_clock::now();
    const auto keepGoing = [&] {
        const auto now = std::chrono::steady_clock::now();
        if (now - lastOffer > offerInterval && offer())
            lastOffer = now;
        return !stopping.load();
    };
    const bool loaded = source->load(writer, keepGoing);
    if (loaded)
        play();
    finish(!loaded);
}

void MarketFeed::Private::finish(bool failed)
{
    source->completeBatch(writer);
    writer.endBatch(failed);
    offerOrWait();
}

MarketFeed::MarketFeed(std::unique_ptr<FeedSource> source, double speed, size_t batchLimit)
    : d(std::make_unique<Private>(std::move(source), speed, batchLimit))
{
}

MarketFeed::~MarketFeed()
{
    stop();
}

std::string MarketFeed::sourceName() const
{
    return d->source->name();
}

void MarketFeed::setReadyCallback(std::function<void()> callback)
{
    Q_ASSERT(!d->thread.joinable());
    d->readyCallback = std::move(callback);
}

void MarketFeed::start()
{
    if (!d->thread.joinable() && !d->stopping)
        d->thread = std::thread([this] { d->run(); });
}

void MarketFeed::stop()
{
    {
        std::lock_guard<std::mutex> lock(d->mutex);
        d->stopping = true;
    }
    d->changed.notify_all();
    if (d->thread.joinable())
        d->thread.join();
}

void MarketFeed::setSpeed(double factor)
{
    {
        std::lock_guard<std::mutex> lock(d->mutex);
        d->clock.setSpeed(factor);
    }
    d->changed.notify_all();
}

double MarketFeed::speed() const
{
    std::lock_guard<std::mutex> lock(d->mutex);
    return d->clock.speed();
}

bool MarketFeed::canEndDay() const
{
    return d->source->canEndDay();
}

void MarketFeed::endDay()
{
    if (!canEndDay())
        return;
    {
        std::lock_guard<std::mutex> lock(d->mutex);
        d->dayEnds = true;
    }
    d->changed.notify_all();
}

bool MarketFeed::take(FeedBatch &batch)
{
    batch.clear();
    {
        std::lock_guard<std::mutex> lock(d->mutex);
        if (!d->readyIsFull)
            return false;
        std::swap(batch, d->ready);
        d->readyIsFull = false;
    }
    d->changed.notify_all();
    return true;
}

} // namespace feed
