#pragma once

#include <QtGlobal>

namespace terminal {

/// Moves the days that a simulated exchange plays to those of a desk: its first one to the day that the desk stands at,
/// and each that follows to the next weekday. A plain value.
class ExchangeDays
{
public:
    /// latestDay: what the desk stands at, yyyymmdd; 0 for a new one, which begins with the exchange's own day. Counts
    /// with the first time only. Times must not run back by more than the day.
    qint64 moved(qint64 time, int latestDay);

private:
    int playedDay = 0; ///< yyyymmdd; 0 before the first time
    int deskDay = 0;
    qint64 offset = 0; ///< milliseconds
};

} // namespace terminal
