#include "utils/timetext.h"

#include <limits>

namespace utils {

namespace {

constexpr qint64 millisPerDay = 86'400'000;
constexpr qint64 exchangeOffset = 8 * 3'600'000;
constexpr qint64 endOfYear9999 = 253'402'300'800'000;

class Text
{
public:
    Text &number(qint64 value, int digits)
    {
        for (int place = digits; place-- > 0; value /= 10)
            signs[length + place] = QChar(static_cast<ushort>('0' + value % 10));
        length += digits;
        return *this;
    }
    Text &sign(char value)
    {
        signs[length++] = QLatin1Char(value);
        return *this;
    }
    QString text() const { return QString(signs, length); }

private:
    QChar signs[24];
    int length = 0;
};

/// The civil date of a day since 1970, by Howard Hinnant's "chrono-compatible low-level date algorithms".
void putDate(Text &out, qint64 days)
{
    const qint64 shifted = days + 719'468; // from 0000-03-01, so that the leap day ends a year
    const qint64 era = shifted / 146'097;
    const qint64 dayOfEra = shifted % 146'097;
    const qint64 yearOfEra = (dayOfEra - dayOfEra / 1'460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
    const qint64 dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const qint64 marchMonth = (5 * dayOfYear + 2) / 153;
    const qint64 day = dayOfYear - (153 * marchMonth + 2) / 5 + 1;
    const qint64 month = marchMonth < 10 ? marchMonth + 3 : marchMonth - 9;
    const qint64 year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
    out.number(year, 4).sign('-').number(month, 2).sign('-').number(day, 2);
}

void putTime(Text &out, qint64 millisOfDay)
{
    const qint64 seconds = millisOfDay / 1000;
    out.number(seconds / 3600, 2).sign(':').number(seconds / 60 % 60, 2).sign(':').number(seconds % 60, 2);
}

} // namespace

QString getStrTimeByTime(qint64 milliseconds, ETimeText part)
{
    if (milliseconds <= 0 || milliseconds >= endOfYear9999 - exchangeOffset)
        return QStringLiteral("-");
    const qint64 local = milliseconds + exchangeOffset;
    Text out;
    if (part == ETimeText::Date || part == ETimeText::DateTime)
        putDate(out, local / millisPerDay);
    if (part == ETimeText::DateTime)
        out.sign(' ');
    if (part != ETimeText::Date)
        putTime(out, local % millisPerDay);
    if (part == ETimeText::TimeMillis)
        out.sign('.').number(local % 1000, 3);
    return out.text();
}

QString secondsToTime(int seconds)
{
    if (seconds < 0 || seconds == std::numeric_limits<int>::max())
        return QStringLiteral("-");
    const int hours = seconds / 3600;
    int digits = 1;
    for (int rest = hours / 10; rest != 0; rest /= 10)
        ++digits;
    Text out;
    out.number(hours, digits).sign(':').number(seconds / 60 % 60, 2).sign(':').number(seconds % 60, 2);
    return out.text();
}

} // namespace utils
