// Numbers as text: every value, precision and set of flags gives a text that reads back as the number that was given,
// within its decimals.

#include <QtCore/QStringList>
#include <cmath>

#include "fuzzinput.h"
#include "utils/timetext.h"
#include "zb/numberformat.h"

namespace {

using namespace utils;
using Flags = CFlags<EFormatNumberFlag>;

const QString invalid = QStringLiteral("invalid");

/// What one stands for in the unit that a text is shown in.
long double unitOf(const QString &text)
{
    if (text.endsWith(QStringLiteral("亿")))
        return 1e8L;
    if (text.endsWith(QStringLiteral("万")))
        return 1e4L;
    return text.endsWith(QLatin1Char('%')) ? 0.01L : 1;
}

/// The number that a shown text stands for.
long double readBack(QString text)
{
    const long double factor = unitOf(text);
    if (factor != 1)
        text.chop(1);
    text.remove(QLatin1Char(',')).remove(QLatin1Char(' '));
    if (text.startsWith(QLatin1Char('+')))
        text.remove(0, 1);
    char *end = nullptr;
    const QByteArray latin = text.toLatin1();
    const long double value = std::strtold(latin.constData(), &end);
    fuzz::require(!latin.isEmpty() && *end == '\0', "no number: \"" + text.toStdString() + '"');
    return value * factor;
}

void checkDouble(double value, int precision, Flags flags, const QString &text)
{
    if (text == QLatin1String("-")) {
        fuzz::require(std::fabs(value) > 1.7e308 || flags.testFlag(FormatZeroAsEmpty), "a value is shown as none");
        return;
    }
    if (!std::isfinite(value)) {
        fuzz::require(text == invalid, "no finite value: " + text.toStdString());
        return;
    }
    fuzz::require(text.indexOf(QLatin1String("-0")) != 0 || readBack(text) != 0, "minus zero: " + text.toStdString());
    // Half of the last decimal, and what 15 digits leave open.
    const int decimals = unitOf(text) > 1 ? std::max(precision, 2) : precision;
    const long double allowed = 0.5001L * unitOf(text) * std::pow(10.0L, -decimals) + std::fabs(value) * 1e-14L;
    fuzz::require(std::fabs(readBack(text) - static_cast<long double>(value)) <= allowed,
                  "another number: " + text.toStdString() + " for " + QByteArray::number(value, 'g', 17).toStdString());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    fuzz::Input input(bytes, size);
    while (!input.isEmpty()) {
        const int precision = input.below(10);
        const Flags flags(static_cast<int>(input.number<std::uint8_t>()) | (input.below(8) << 17));
        const auto value = input.number<double>();
        checkDouble(value, precision, flags, ZB::formatDoubleNumber(value, precision, flags, false, invalid));
        checkDouble(value, precision, flags, ZB::formatDoubleNumberSpace(value, precision, flags, false, invalid));
        ZB::formatPriceDoubleNumber(value, precision, flags);
        const auto whole = input.number<qint64>();
        if (!flags.testFlag(FormatPercent) && !flags.testFlag(FormatUnit)) {
            const QString text = ZB::formatLonglongNumber(whole, precision, flags);
            if (text != QLatin1String("-"))
                fuzz::require(readBack(text) == static_cast<long double>(whole),
                              "another whole number: " + text.toStdString());
        } else {
            ZB::formatLonglongNumber(whole, precision, flags);
        }
        ZB::formatIntNumber(static_cast<int>(whole), precision, flags);
        for (const ETimeText part : {ETimeText::Time, ETimeText::TimeMillis, ETimeText::Date, ETimeText::DateTime})
            fuzz::require(!getStrTimeByTime(whole, part).isEmpty(), "an empty time");
        fuzz::require(!secondsToTime(static_cast<int>(whole)).isEmpty(), "an empty duration");
        ZB::sToQs(input.bytes(input.below(32)).toStdString());
    }
    return 0;
}
