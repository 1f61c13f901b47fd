#pragma once

#include <QtCore/QBasicTimer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QVector>
#include <atomic>
#include <functional>
#include <memory>

#include "feed/marketfeed.h"
#include "threads/callqueue.h"
#include "window/marketlistener.h"
#include "window/marketrecords.h"

namespace terminal {

/// Brings what a feed has ready into the tables, in slices of a few milliseconds, so that the window answers and paints
/// in between however fast the feed is. GUI thread.
class FeedPump : public QObject
{
    Q_OBJECT

public:
    using Records = QVector<MarketRecords::Record>;
    /// Takes records that are new or have changed; of one key the later one counts.
    using Sink = std::function<void(const Records &)>;

    explicit FeedPump(std::unique_ptr<feed::MarketFeed> feed, QObject *parent = nullptr);
    /// Ends the feed.
    ~FeedPump() override;

    /// To be set before start().
    void setOrderSink(Sink sink) { orderSink = std::move(sink); }
    void setDealSink(Sink sink) { dealSink = std::move(sink); }
    void setQuoteSink(Sink sink) { quoteSink = std::move(sink); }
    /// To be added before start(), and to outlive the pump or its stop().
    void addListener(MarketListener &listener) { listeners.push_back(&listener); }

    void start();
    /// Ends the feed; what it has handed over already is not put into the tables any more.
    void stop();
    /// Seconds of market time in a second, above 0. Kept while paused.
    void setSpeed(double factor);
    double speed() const { return wantedSpeed; }
    void setPaused(bool paused);
    bool isPaused() const { return paused; }

    /// Whether the feed has another day to come when the present one is ended.
    bool canEndDay() const;
    /// Has the feed go on with its next day. Nothing where canEndDay() says no.
    void endDay();

    /// "replay" or "simulated".
    QString sourceName() const;
    /// Totals of everything that was given to the tables.
    const feed::FeedCounters &counters() const { return totals; }
    /// Filled quantity of all orders that were given to the tables, both sides of each deal.
    qint64 sharesFilled() const { return filledSum; }
    /// The feed's clock; feed::absent<qint64> before the first event.
    qint64 marketTime() const { return clock; }
    /// The feed has ended and the tables were given all of it.
    bool isFinished() const { return finishedAll; }
    bool hasFailed() const { return failedAll; }

Q_SIGNALS:
    /// Warnings and errors of the feed, each as soon as its batch is taken.
    void messageArrived(const feed::FeedMessage &message);
    /// Once, when isFinished() becomes true.
    void finished();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void wake();
    void work();
    bool takeBatch();
    void takeInstrument(const feed::Instrument &instrument);
    bool hasRest() const;
    void putSlice();
    void putOrders();
    void putDeals();
    void putQuotes();
    void completeBatch();

    core::CallQueue calls; ///< of the feed's thread
    std::unique_ptr<feed::MarketFeed> source;
    MarketRecords records;
    Sink orderSink;
    Sink dealSink;
    Sink quoteSink;
    std::vector<MarketListener *> listeners;

    feed::FeedBatch batch;
    bool batchOpen = false;
    size_t nextOrder = 0; ///< of the batch, not put into a table yet
    size_t nextDeal = 0;
    size_t nextQuote = 0;
    Records slice;

    QBasicTimer continuation; ///< runs while there is more to do
    std::atomic<bool> wakePosted{false};
    double wantedSpeed;
    bool paused = false;
    bool stopped = false;

    feed::FeedCounters totals;
    std::vector<qint64> filledOf; ///< by an order's entry
    qint64 filledSum = 0;
    qint64 clock = feed::absent<qint64>;
    bool finishedAll = false;
    bool failedAll = false;
};

} // namespace terminal
