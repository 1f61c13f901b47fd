#include "feed/replay/timetext.h"

#include "feed/marketdata.h"

namespace feed {

namespace {

/// Days since 1970-01-01, counted in eras of 400 years that start in March (Howard Hinnant, "chrono-compatible
/// low-level date algorithms", 2013).
int daysFromCivil(int year, int month, int day)
{
    year -= month <= 2;
    const int era = year / 400;
    const int yearOfEra = year - era * 400;
    const int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468;
}

bool takeDigits(std::string_view &text, size_t count, int &value)
{
    if (text.size() < count)
        return false;
    value = 0;
    for (const char c : text.substr(0, count)) {
        if (c < '0' || c > '9')
            return false;
        value = value * 10 + (c - '0');
    }
    text.remove_prefix(count);
    return true;
}

} // namespace

bool takeSign(std::string_view &text, char sign)
{
    if (text.empty() || text.front() != sign)
        return false;
    text.remove_prefix(1);
    return true;
}

bool takeDate(std::string_view &text, int &days)
{
    static constexpr int monthLengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    int year = 0;
    int month = 0;
    int day = 0;
    if (!takeDigits(text, 4, year))
        return false;
    const char separator = !text.empty() && (text.front() == '.' || text.front() == '-') ? text.front() : '\0';
    const auto takeSeparator = [&] { return separator == '\0' || takeSign(text, separator); };
    if (!takeSeparator() || !takeDigits(text, 2, month) || !takeSeparator() || !takeDigits(text, 2, day))
        return false;
    if (year < 1990 || year > 2100 || month < 1 || month > 12 || day < 1)
        return false;
    const bool isLeapDay = month == 2 && day == 29 && year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    if (day > monthLengths[month - 1] && !isLeapDay)
        return false;
    days = daysFromCivil(year, month, day);
    return true;
}

bool takeTime(std::string_view &text, int &milliseconds)
{
    int hour = 0;
    int minute = 0;
    int second = 0;
    int fraction = 0;
    if (!takeDigits(text, 2, hour) || !takeSign(text, ':') || !takeDigits(text, 2, minute) || !takeSign(text, ':') ||
        !takeDigits(text, 2, second))
        return false;
    if (takeSign(text, '.') && !takeDigits(text, 3, fraction))
        return false;
    if (hour > 23 || minute > 59 || second > 59)
        return false;
    milliseconds = ((hour * 60 + minute) * 60 + second) * 1000 + fraction;
    return true;
}

int calendarDay(int daysSinceEpoch)
{
    const int shifted = daysSinceEpoch + 719468;
    const int era = shifted / 146097;
    const int dayOfEra = shifted - era * 146097;
    const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int shiftedMonth = (5 * dayOfYear + 2) / 153;
    const int day = dayOfYear - (153 * shiftedMonth + 2) / 5 + 1;
    const int month = shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9;
    return (yearOfEra + era * 400 + (month <= 2)) * 10000 + month * 100 + day;
}

qint64 chinaTime(int daysSinceEpoch, int millisecondsOfDay)
{
    return daysSinceEpoch * millisecondsPerDay + millisecondsOfDay - chinaOffset;
}

} // namespace feed
