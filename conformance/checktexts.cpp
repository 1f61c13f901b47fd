#include <QtCore/QVector>
#include <cmath>
#include <limits>

#include "checks.h"
#include "utils/timetext.h"
#include "zb/numberformat.h"

namespace conformance {

namespace {

using namespace utils;
using Flags = CFlags<EFormatNumberFlag>;

constexpr double noDouble = std::numeric_limits<double>::max();
const QString noNumber = QStringLiteral("非法值");

void checkIntegers(Report &report)
{
    const struct
    {
        qint64 value;
        Flags flags;
        const char *text;
    } cases[] = {
        {0, {}, "0"},
        {-12345, {}, "-12345"},
        {1234567, FormatGroupDigits, "1,234,567"},
        {1234567, FormatGroupDigits | FormatGroupSpace, "1 234 567"},
        {1234567, FormatGroupDigits | FormatNoGroups, "1234567"},
        {12345, FormatUnit, "1.23万"},
        {250000000, FormatUnit, "2.50亿"},
        {9999, FormatUnit, "9999"},
        {0, FormatZeroAsEmpty, "-"},
        {42, FormatSign, "+42"},
    };
    for (const auto &each : cases) {
        const QString wanted = QString::fromUtf8(each.text);
        const QString about = QStringLiteral("(%1), flags %2").arg(each.value).arg(each.flags.value());
        report.expectText(QStringLiteral("ZB::formatIntNumber") + about,
                          ZB::formatIntNumber(static_cast<int>(each.value), 2, each.flags), wanted);
        report.expectText(QStringLiteral("ZB::formatLonglongNumber") + about,
                          ZB::formatLonglongNumber(each.value, 2, each.flags), wanted);
    }
    report.expectText(QStringLiteral("ZB::formatIntNumber without a value"),
                      ZB::formatIntNumber(std::numeric_limits<int>::max(), 0, {}), QStringLiteral("-"));
    report.expectText(QStringLiteral("ZB::formatLonglongNumber without a value"),
                      ZB::formatLonglongNumber(std::numeric_limits<qint64>::max(), 0, {}), QStringLiteral("-"));
}

void checkDoubles(Report &report)
{
    const struct
    {
        double value;
        int precision;
        Flags flags;
        const char *text;
    } cases[] = {
        {1.005, 2, {}, "1.01"},
        {15.929999999999999, 2, {}, "15.93"},
        {-0.004, 2, {}, "0.00"},
        {1234567.891, 2, FormatGroupDigits, "1,234,567.89"},
        {0.1234, 2, FormatPercent, "12.34%"},
        {99999999.0, 0, FormatUnit, "1.00亿"},
        {1.50, 2, FormatTrimZeros, "1.5"},
        {2.0, 2, FormatTrimZeros, "2"},
        {0.001, 2, FormatZeroAsEmpty, "-"},
        {3.5, 1, FormatSign, "+3.5"},
    };
    for (const auto &each : cases) {
        const QString about = QStringLiteral("ZB::formatDoubleNumber(%1, %2), flags %3")
                                  .arg(each.value)
                                  .arg(each.precision)
                                  .arg(each.flags.value());
        report.expectText(about, ZB::formatDoubleNumber(each.value, each.precision, each.flags, false, noNumber),
                          QString::fromUtf8(each.text));
    }
    const QString without = QStringLiteral("ZB::formatDoubleNumber without a value");
    report.expectText(without, ZB::formatDoubleNumber(noDouble, 2, {}, false, noNumber), QStringLiteral("-"));
    report.expectText(without + QStringLiteral(", absent as empty"),
                      ZB::formatDoubleNumber(noDouble, 2, {}, true, noNumber), QString());
    report.expectText(QStringLiteral("ZB::formatDoubleNumber(NaN)"),
                      ZB::formatDoubleNumber(std::nan(""), 2, {}, false, noNumber), noNumber);
    report.expectText(QStringLiteral("ZB::formatDoubleNumberSpace"),
                      ZB::formatDoubleNumberSpace(1234567.5, 2, FormatGroupDigits, false, noNumber),
                      QStringLiteral("1 234 567.50"));
    for (const double none : {noDouble, 0.0, std::nan("")})
        report.expectText(QStringLiteral("ZB::formatPriceDoubleNumber(%1)").arg(none),
                          ZB::formatPriceDoubleNumber(none, 2, {}), QStringLiteral("-"));
    report.expectText(QStringLiteral("ZB::formatPriceDoubleNumber"), ZB::formatPriceDoubleNumber(15.93, 3, {}),
                      QStringLiteral("15.930"));
}

void checkOthers(Report &report)
{
    report.expectText(QStringLiteral("ZB::sToQs of UTF-8"), ZB::sToQs("贵州茅台"), QStringLiteral("贵州茅台"));
    report.expectText(QStringLiteral("ZB::sToQs of GB18030"), ZB::sToQs("\xB9\xF3\xD6\xDD"), QStringLiteral("贵州"));

    const qint64 morning = 1689039000120; // 2023-07-11 01:30:00.120 UTC
    report.expectText(QStringLiteral("utils::getStrTimeByTime"), getStrTimeByTime(morning, ETimeText::TimeMillis),
                      QStringLiteral("09:30:00.120"));
    report.expectText(QStringLiteral("utils::getStrTimeByTime"), getStrTimeByTime(morning, ETimeText::DateTime),
                      QStringLiteral("2023-07-11 09:30:00"));
    report.expectText(QStringLiteral("utils::getStrTimeByTime without a value"), getStrTimeByTime(0, ETimeText::Time),
                      QStringLiteral("-"));
    report.expectText(QStringLiteral("utils::secondsToTime"), secondsToTime(3661), QStringLiteral("1:01:01"));
    report.expectText(QStringLiteral("utils::secondsToTime without a value"), secondsToTime(-1), QStringLiteral("-"));

    const struct
    {
        double price;
        double base;
        const char *key;
    } colors[] = {{10.01, 10, "clr_global_rise"},
                  {9.99, 10, "clr_global_fall"},
                  {10.000001, 10, "clr_global_equal"},
                  {noDouble, 10, "clr_global_equal"},
                  {10, noDouble, "clr_global_equal"}};
    for (const auto &each : colors)
        report.expectText(QStringLiteral("ZB::getStockColorKey(%1, %2)").arg(each.price).arg(each.base),
                          QLatin1String(ZB::getStockColorKey(each.price, each.base)), QLatin1String(each.key));
}

} // namespace

Findings checkTexts()
{
    Report report;
    checkIntegers(report);
    checkDoubles(report);
    checkOthers(report);
    return report.take();
}

} // namespace conformance
