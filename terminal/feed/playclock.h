#pragma once

#include <QtGlobal>

#include <chrono>
#include <optional>

namespace feed {

/// Market time as it passes at a given speed. Starts with the first event that is asked about. A gap between two events
/// that is longer than `longestGap`, such as a night or the time between two recorded days, passes at once.
class PlayClock
{
public:
    using Time = std::chrono::steady_clock::time_point;
    /// `factor` is market time per time, 0 stands still, infinity makes everything due. `longestGap` is in
    /// milliseconds.
    PlayClock(double factor, qint64 longestGap);

    void setSpeed(double factor, Time now = std::chrono::steady_clock::now());
    double speed() const { return factor; }
    /// Whether an event of market time `next` is to be played. Events are asked about in order of time.
    bool isDue(qint64 next, Time now = std::chrono::steady_clock::now());
    /// When it will be, empty while the clock stands still. Far times are cut to an hour from now.
    std::optional<Time> due(qint64 next, Time now = std::chrono::steady_clock::now()) const;

private:
    double marketTime(Time now) const;

    const qint64 longestGap;
    double factor;
    bool started = false;
    Time anchor;             ///< since when `factor` holds
    double anchorMarket = 0; ///< market time at `anchor`
    qint64 lastPlayed = 0;
};

} // namespace feed
