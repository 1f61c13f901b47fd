#include "feed/replay/fieldreader.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace feed {

namespace {

constexpr qint64 millisecondsPerDay = 24 * 60 * 60 * 1000;

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

} // namespace

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

FieldReader::FieldReader(std::vector<std::string> headers, FileReport &fileReport)
    : names(std::move(headers)), report(fileReport)
{
}

FieldReader::Column FieldReader::column(std::string_view header) const
{
    for (size_t i = 0; i < names.size(); ++i)
        if (names[i] == header)
            return Column(i);
    return header == "SecurityID" ? column("HTSCSecurityID") : -1;
}

void FieldReader::setLine(const std::vector<std::string_view> &lineFields, qint64 number)
{
    fields = &lineFields;
    lineNumber = number;
    good = true;
}

std::string_view FieldReader::text(Column column) const
{
    return column < 0 ? std::string_view() : (*fields)[size_t(column)];
}

void FieldReader::reject(Column column, const char *what)
{
    if (!good)
        return;
    good = false;
    report.setLine(lineNumber);
    const std::string_view value = text(column);
    report.add(FileReport::Severity::Error, value.empty() ? "is empty" : quotedForMessage(value) + ' ' + what,
               column + 1, names[size_t(column)]);
}

void FieldReader::warn(Column column, std::string text)
{
    report.setLine(lineNumber);
    report.add(FileReport::Severity::Warning, std::move(text), column + 1, names[size_t(column)]);
}

qint64 FieldReader::whole(Column column, qint64 least, qint64 most)
{
    const std::string_view value = text(column);
    const char *const end = value.data() + value.size();
    qint64 result = 0;
    auto [rest, error] = std::from_chars(value.data(), end, result);
    // Some writers put whole numbers through floating-point columns: 300.0 is 300.
    if (error == std::errc() && rest != end && *rest == '.')
        rest = std::find_if(rest + 1, end, [](char c) { return c != '0'; });
    if (error == std::errc::invalid_argument || rest != end)
        reject(column, "is not a whole number");
    else if (error != std::errc() || result > most)
        reject(column, "is too large");
    else if (result < least)
        reject(column, result < 0 ? "is negative" : "is too small");
    return result;
}

double FieldReader::number(Column column, double least, double most)
{
    const std::string_view value = text(column);
    const char *const end = value.data() + value.size();
    double result = 0;
    const auto [rest, error] = std::from_chars(value.data(), end, result);
    if (error == std::errc::invalid_argument || rest != end || std::isnan(result))
        reject(column, "is not a number");
    else if (error != std::errc() || result > most)
        reject(column, "is too large");
    else if (result < least)
        reject(column, least == 0.0 ? "is negative" : "is too small");
    return result;
}

double FieldReader::price(Column column)
{
    const double value = number(column, 0, largestPrice);
    return value == 0.0 ? absent<double> : value;
}

double FieldReader::positivePrice(Column column)
{
    const double value = number(column, 0, largestPrice);
    if (value == 0.0)
        reject(column, "is no price");
    return value;
}

double FieldReader::limitPrice(Column column)
{
    static constexpr double noLimit = 1e10;
    const double value = number(column, -noLimit, noLimit);
    return value > 0.0 && value < largestPrice ? value : absent<double>;
}

double FieldReader::futurePrice(Column column)
{
    // With 16 digits the largest double is rounded up to a number that no double can hold.
    static constexpr std::string_view largestAsText[] = {"1.7976931348623", "17976931348623"};
    for (const std::string_view start : largestAsText)
        if (text(column).substr(0, start.size()) == start && text(column).size() > start.size() + 4)
            return absent<double>;
    const double value = number(column, -largestPrice, largestPrice);
    return value == 0.0 ? absent<double> : value;
}

int FieldReader::choice(Column column, std::initializer_list<std::string_view> choices)
{
    const std::string_view value = text(column);
    int place = 0;
    for (const std::string_view candidate : choices) {
        if (candidate == value)
            return place;
        ++place;
    }
    reject(column, "is not a known code");
    return 0;
}

int FieldReader::date(Column column)
{
    std::string_view value = text(column);
    if (!value.empty() && value == lastDateText)
        return lastDate;
    int days = 0;
    if (!takeDate(value, days) || !value.empty()) {
        reject(column, "is not a date");
        return 0;
    }
    lastDateText = text(column);
    lastDate = days;
    return days;
}

int FieldReader::timeOfDay(Column column)
{
    std::string_view value = text(column);
    int milliseconds = 0;
    if (!takeTime(value, milliseconds) || !value.empty())
        reject(column, "is not a time");
    return milliseconds;
}

qint64 FieldReader::dateAndTime(Column column)
{
    std::string_view value = text(column);
    int days = 0;
    int milliseconds = 0;
    const bool isRead = takeDate(value, days) && (takeSign(value, 'T') || takeSign(value, ' ')) &&
                        takeTime(value, milliseconds) && value.empty();
    if (!isRead)
        reject(column, "is not a date and time");
    return days * millisecondsPerDay + milliseconds;
}

} // namespace feed
