#include "feed/replay/fieldreader.h"

#include "feed/replay/timetext.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace feed {

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
    report.add(FileReport::Severity::Error, value.empty() ? "没有填写" : quotedForMessage(value) + what, column + 1,
               names[size_t(column)]);
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
        reject(column, "不是整数");
    else if (error != std::errc() || result > most)
        reject(column, "太大");
    else if (result < least)
        reject(column, result < 0 ? "是负数" : "太小");
    return result;
}

double FieldReader::number(Column column, double least, double most)
{
    const std::string_view value = text(column);
    const char *const end = value.data() + value.size();
    double result = 0;
    const auto [rest, error] = std::from_chars(value.data(), end, result);
    if (error == std::errc::invalid_argument || rest != end || std::isnan(result))
        reject(column, "不是数字");
    else if (error != std::errc() || result > most)
        reject(column, "太大");
    else if (result < least)
        reject(column, least == 0.0 ? "是负数" : "太小");
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
        reject(column, "不是价格");
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
    reject(column, "不是已知的代码");
    return 0;
}

int FieldReader::date(Column column)
{
    std::string_view value = text(column);
    if (!value.empty() && value == lastDateText)
        return lastDate;
    int days = 0;
    if (!takeDate(value, days) || !value.empty()) {
        reject(column, "不是日期");
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
        reject(column, "不是时间");
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
        reject(column, "不是日期和时间");
    return days * millisecondsPerDay + milliseconds;
}

} // namespace feed
