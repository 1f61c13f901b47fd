#pragma once

#include "feed/feedbatch.h"

#include <functional>
#include <limits>
#include <memory>
#include <string>

namespace feed {

class FeedSource;

/// Plays a source on a thread of its own, at recorded speed or another, and hands over what changed in batches.
/// The taker is never made to wait: taking swaps two batches. When the taker is slower than the source, changes of the
/// same order melt together, and when a batch is full the feed's thread waits, so that memory stays bounded. start(),
/// stop() and take() belong to one thread (the GUI's); setSpeed(), speed() and endDay() may be called from any.
class MarketFeed
{
public:
    static constexpr double maxSpeed = std::numeric_limits<double>::infinity();
    /// Entries in a batch after which the feed's thread waits, if nothing else is asked for.
    static constexpr size_t defaultBatchLimit = 4096;

    explicit MarketFeed(std::unique_ptr<FeedSource> source, double speed = 1, size_t batchLimit = defaultBatchLimit);
    /// Stops.
    ~MarketFeed();
    MarketFeed(const MarketFeed &) = delete;
    MarketFeed &operator=(const MarketFeed &) = delete;

    /// "replay" or "simulated".
    std::string sourceName() const;

    /// Called on the feed's thread each time that a batch becomes ready to be taken, with no lock held; must not wait,
    /// nor call into the feed. To be set before start().
    void setReadyCallback(std::function<void()> callback);

    /// Starts the thread; a feed can be started once.
    void start();
    /// Ends the thread and waits for it, which takes a moment only. A batch that is ready can still be taken.
    void stop();

    /// Seconds of market time in a second: 1 is recorded time, 0 stands still, maxSpeed goes as fast as batches are
    /// taken. Takes effect at once.
    void setSpeed(double factor);
    double speed() const;

    /// Whether the source has another day to come when the present one is ended. Such a feed never finishes: after the
    /// last event of a day it waits for endDay().
    bool canEndDay() const;
    /// Ends the source's present day; the next one begins at once, also while the clock stands still. Nothing where
    /// canEndDay() says no.
    void endDay();

    /// Puts what is ready into `batch`, whose old contents are dropped and whose memory is reused. False, with `batch`
    /// empty, when nothing is ready. Never waits for the feed.
    bool take(FeedBatch &batch);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace feed
