#pragma once

#include "feed/marketdata.h"

#include <functional>
#include <string>

namespace feed {

class BatchWriter;

/// Where market data comes from: a sequence of events in order of time. Used by one thread at a time and knows no
/// clock; what an event holds never depends on when it is asked for.
class FeedSource
{
public:
    virtual ~FeedSource();

    /// "replay" or "simulated".
    virtual std::string name() const = 0;
    /// Prepares the events. `keepGoing` is called often; when it answers false the work is given up. False when there
    /// is nothing to play; then a message of severity Fatal says why.
    virtual bool load(BatchWriter &writer, const std::function<bool()> &keepGoing) = 0;
    /// Time of the event that step() gives next; absent when there is none left, or none before endDay(). Never runs
    /// back.
    virtual qint64 nextTime() const = 0;
    /// Milliseconds of market time. A longer gap between two events, such as a night, passes at once.
    virtual qint64 longestGap() const;
    /// Gives the next event.
    virtual void step(BatchWriter &writer) = 0;
    /// Adds what is computed once per batch, such as quotes of books that changed.
    virtual void completeBatch(BatchWriter &writer) = 0;
    /// Whether another day can follow when the present one is ended. No unless overridden.
    virtual bool canEndDay() const;
    /// Ends the present day wherever it is, and makes ready the next; called only where canEndDay() says so.
    virtual void endDay(BatchWriter &writer);
};

} // namespace feed
