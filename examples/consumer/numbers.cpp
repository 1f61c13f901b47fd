// Numbers, times and byte strings as text, the plain way: no units, no percentages.

#include <QtCore/QDateTime>
#include <cmath>
#include <limits>

#include "utils/timetext.h"
#include "zb/numberformat.h"

namespace {

using Flags = utils::CFlags<utils::EFormatNumberFlag>;

const QString none = QStringLiteral("-");

bool isNoValue(long double value)
{
    return std::fabs(value - static_cast<long double>(std::numeric_limits<double>::max())) <= 1e-05L;
}

/// Groups of three digits in front of the decimal point.
QString grouped(QString text, Flags flags, const QString &separator)
{
    if (!flags.testFlag(utils::FormatGroupDigits) || flags.testFlag(utils::FormatNoGroups))
        return text;
    const int sign = text.startsWith(QLatin1Char('-')) ? 1 : 0;
    const int point = text.indexOf(QLatin1Char('.'));
    for (int at = (point < 0 ? text.size() : point) - 3; at > sign; at -= 3)
        text.insert(at, separator);
    return text;
}

QString decimalText(long double value, int precision, Flags flags, bool absentAsEmpty, const QString &invalidText,
                    const QString &separator)
{
    if (isNoValue(value))
        return absentAsEmpty ? QString() : none;
    if (!std::isfinite(value))
        return invalidText;
    return grouped(QString::number(static_cast<double>(value), 'f', precision), flags, separator);
}

} // namespace

namespace ZB {

QString formatIntNumber(int value, int, Flags flags)
{
    return value == std::numeric_limits<int>::max() ? none
                                                    : grouped(QString::number(value), flags, QStringLiteral(","));
}

QString formatLonglongNumber(qint64 value, int, Flags flags)
{
    return value == std::numeric_limits<qint64>::max() ? none
                                                       : grouped(QString::number(value), flags, QStringLiteral(","));
}

QString formatDoubleNumber(long double value, int precision, Flags flags, bool absentAsEmpty,
                           const QString &invalidText)
{
    return decimalText(value, precision, flags, absentAsEmpty, invalidText, QStringLiteral(","));
}

QString formatDoubleNumberSpace(long double value, int precision, Flags flags, bool absentAsEmpty,
                                const QString &invalidText)
{
    return decimalText(value, precision, flags, absentAsEmpty, invalidText, QStringLiteral(" "));
}

QString formatPriceDoubleNumber(double price, int precision, Flags flags)
{
    return std::isfinite(price) && std::fabs(price) > 1e-05 ? formatDoubleNumber(price, precision, flags, false, none)
                                                            : none;
}

QString sToQs(const std::string &text)
{
    return QString::fromStdString(text);
}

const char *getStockColorKey(double price, double base)
{
    if (isNoValue(price) || isNoValue(base) || std::fabs(price - base) <= 1e-05)
        return "clr_global_equal";
    return price > base ? "clr_global_rise" : "clr_global_fall";
}

} // namespace ZB

namespace utils {

QString getStrTimeByTime(qint64 milliseconds, ETimeText part)
{
    if (milliseconds <= 0 || milliseconds == std::numeric_limits<qint64>::max())
        return none;
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::OffsetFromUTC, 8 * 3600);
    switch (part) {
    case ETimeText::Time:
        return time.toString(QStringLiteral("HH:mm:ss"));
    case ETimeText::TimeMillis:
        return time.toString(QStringLiteral("HH:mm:ss.zzz"));
    case ETimeText::Date:
        return time.toString(QStringLiteral("yyyy-MM-dd"));
    case ETimeText::DateTime:
        break;
    }
    return time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString secondsToTime(int seconds)
{
    if (seconds < 0 || seconds == std::numeric_limits<int>::max())
        return none;
    return QStringLiteral("%1:%2:%3")
        .arg(seconds / 3600)
        .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

} // namespace utils
