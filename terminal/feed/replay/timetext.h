#pragma once

#include <QtGlobal>

#include <string_view>

namespace feed {

constexpr qint64 millisecondsPerDay = 24 * 60 * 60 * 1000;

/// Each takes what it reads off the front of `text`; false, with `text` in any state, when it does not stand there.

/// yyyy.MM.dd, yyyy-MM-dd or yyyyMMdd of 1990 to 2100, as days since 1970-01-01.
bool takeDate(std::string_view &text, int &days);
/// HH:mm:ss with or without .SSS, as milliseconds of the day.
bool takeTime(std::string_view &text, int &milliseconds);
bool takeSign(std::string_view &text, char sign);

/// yyyymmdd of days since 1970-01-01.
int calendarDay(int daysSinceEpoch);
/// Milliseconds since 1970-01-01 UTC of a day and a time of day in China, where all recorded files come from.
qint64 chinaTime(int daysSinceEpoch, int millisecondsOfDay);

} // namespace feed
