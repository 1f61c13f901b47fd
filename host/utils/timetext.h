#pragma once

#include <QtCore/QString>

#include "hostexport.h"

namespace utils {

/// What part of a point in time is shown.
enum class ETimeText : int
{
    Time,       ///< 09:30:00
    TimeMillis, ///< 09:30:00.120
    Date,       ///< 2023-07-11
    DateTime    ///< 2023-07-11 09:30:00
};

/// A point in time, in milliseconds since 1970 UTC, in exchange time (UTC+8, no daylight saving). The largest value, 0
/// and values below give "-". Any thread.
HOST_API QString getStrTimeByTime(qint64 milliseconds, ETimeText part);
/// A duration of whole seconds as h:mm:ss; the largest value and negative values give "-". Any thread.
HOST_API QString secondsToTime(int seconds);

} // namespace utils
