#include "zb/numberformat.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "text/decimal.h"

namespace ZB {

namespace {

using namespace utils;
using refhost::Decimal;

constexpr int maxPrecision = 15;
constexpr int unitDecimals = 2;
constexpr double nearlyEqual = 1e-05;
constexpr char16_t tenThousand = u'万';
constexpr char16_t hundredMillion = u'亿';

/// Text is put together from its end, since groups count from the decimal point. Room for the longest double with
/// groups.
class Backwards
{
public:
    void put(char16_t sign) { *--begin = sign; }
    void putDigits(quint64 value, int count)
    {
        for (; count > 0; --count, value /= 10)
            put(static_cast<char16_t>(u'0' + value % 10));
    }
    void putZeros(int count)
    {
        for (; count > 0; --count)
            put(u'0');
    }
    QString text() const
    {
        return QString(reinterpret_cast<const QChar *>(begin), static_cast<int>(storage + sizeof storage / 2 - begin));
    }

private:
    char16_t storage[512];
    char16_t *begin = storage + sizeof storage / 2;
};

/// What stands between three digits and the next; 0 for nothing.
char16_t groupSign(CFlags<EFormatNumberFlag> flags)
{
    if (!flags.testFlag(FormatGroupDigits) || flags.testFlag(FormatNoGroups))
        return 0;
    return flags.testFlag(FormatGroupSpace) ? u' ' : u',';
}

void putFraction(Backwards &out, quint64 digits, int count, int decimals, bool trim)
{
    if (trim) {
        while (count > 0 && digits % 10 == 0) {
            digits /= 10;
            --count;
        }
        decimals = count;
    }
    if (decimals <= 0)
        return;
    out.putZeros(decimals - count);
    out.putDigits(digits, count);
    out.put(u'.');
}

void putInteger(Backwards &out, quint64 digits, int zerosBehind, char16_t group)
{
    int written = 0;
    do {
        if (group != 0 && written > 0 && written % 3 == 0)
            out.put(group);
        out.put(zerosBehind > 0 ? u'0' : static_cast<char16_t>(u'0' + digits % 10));
        if (zerosBehind > 0)
            --zerosBehind;
        else
            digits /= 10;
        ++written;
    } while (digits != 0 || zerosBehind > 0);
}

/// value: rounded to the decimals that are to be shown. unit: stands behind; 0 for none.
QString write(const Decimal &value, int decimals, CFlags<EFormatNumberFlag> flags, char16_t unit)
{
    if (value.isZero() && flags.testFlag(FormatZeroAsEmpty))
        return QStringLiteral("-");
    Backwards out;
    if (unit != 0)
        out.put(unit);
    const int fractionDigits = std::max(value.scale, 0);
    const quint64 one = refhost::powerOfTen(fractionDigits);
    putFraction(out, value.digits % one, fractionDigits, decimals, flags.testFlag(FormatTrimZeros));
    putInteger(out, value.digits / one, value.isZero() ? 0 : std::max(-value.scale, 0), groupSign(flags));
    if (!value.isZero() && value.negative)
        out.put(u'-');
    else if (!value.isZero() && flags.testFlag(FormatSign))
        out.put(u'+');
    return out.text();
}

/// decimals: of the plain value; inUnit: of a value with a unit or a percent sign behind it.
QString format(const Decimal &value, int decimals, int inUnit, CFlags<EFormatNumberFlag> flags)
{
    if (flags.testFlag(FormatPercent))
        return write(value.shifted(2).rounded(inUnit), inUnit, flags, u'%');
    const Decimal plain = value.rounded(decimals);
    if (!flags.testFlag(FormatUnit) || !plain.reachesTenThousand())
        return write(plain, decimals, flags, 0);
    const int unitPlaces = std::max(inUnit, unitDecimals);
    const Decimal smaller = value.shifted(-4).rounded(unitPlaces);
    if (!smaller.reachesTenThousand())
        return write(smaller, unitPlaces, flags, tenThousand);
    return write(value.shifted(-8).rounded(unitPlaces), unitPlaces, flags, hundredMillion);
}

int clampedPrecision(int precision)
{
    return std::clamp(precision, 0, maxPrecision);
}

/// Also for the other end of the type, which nobody wants to read in 309 digits.
bool isAbsent(long double value)
{
    constexpr long double largest = std::numeric_limits<double>::max();
    return std::fabs(value) >= largest * (1 - static_cast<long double>(nearlyEqual));
}

} // namespace

QString formatIntNumber(int value, int precision, CFlags<EFormatNumberFlag> flags)
{
    if (value == std::numeric_limits<int>::max())
        return QStringLiteral("-");
    return format(Decimal::ofInteger(value), 0, clampedPrecision(precision), flags);
}

QString formatLonglongNumber(qint64 value, int precision, CFlags<EFormatNumberFlag> flags)
{
    if (value == std::numeric_limits<qint64>::max())
        return QStringLiteral("-");
    return format(Decimal::ofInteger(value), 0, clampedPrecision(precision), flags);
}

QString formatDoubleNumber(long double value, int precision, CFlags<EFormatNumberFlag> flags, bool absentAsEmpty,
                           const QString &invalidText)
{
    if (!std::isfinite(value))
        return invalidText;
    if (isAbsent(value))
        return absentAsEmpty ? QString() : QStringLiteral("-");
    const int decimals = clampedPrecision(precision);
    return format(Decimal::ofDouble(value), decimals, decimals, flags);
}

QString formatDoubleNumberSpace(long double value, int precision, CFlags<EFormatNumberFlag> flags, bool absentAsEmpty,
                                const QString &invalidText)
{
    return formatDoubleNumber(value, precision, flags | FormatGroupSpace, absentAsEmpty, invalidText);
}

QString formatPriceDoubleNumber(double price, int precision, CFlags<EFormatNumberFlag> flags)
{
    const bool isPrice = std::isfinite(price) && std::fabs(price) > nearlyEqual;
    return formatDoubleNumber(isPrice ? static_cast<long double>(price) : std::numeric_limits<double>::max(), precision,
                              flags & ~CFlags<EFormatNumberFlag>(FormatUnit), false, QString());
}

const char *getStockColorKey(double price, double base)
{
    const bool comparable = std::isfinite(price) && std::isfinite(base) && !isAbsent(price) && !isAbsent(base);
    if (comparable && price > base + nearlyEqual)
        return "clr_global_rise";
    if (comparable && price < base - nearlyEqual)
        return "clr_global_fall";
    return "clr_global_equal";
}

} // namespace ZB
