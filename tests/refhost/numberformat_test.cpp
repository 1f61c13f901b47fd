#include "zb/numberformat.h"

#include <gtest/gtest.h>

#include <QtCore/QLocale>
#include <algorithm>
#include <clocale>
#include <cmath>
#include <limits>
#include <ostream>
#include <random>

using namespace ZB;
using namespace utils;

namespace {

using Flags = CFlags<EFormatNumberFlag>;

constexpr double noDouble = std::numeric_limits<double>::max();

std::string text(long double value, int precision, Flags flags = Flags())
{
    return formatDoubleNumber(value, precision, flags, false, QStringLiteral("非法值")).toStdString();
}

/// The slow way, on decimal texts: sign, 15 digits as Qt writes them, rounding by hand.
struct SlowNumber
{
    bool negative = false;
    std::string whole; ///< digits before the point
    std::string part;  ///< and behind it

    explicit SlowNumber(double value)
    {
        const std::string text = QString::number(std::fabs(value), 'e', 14).toStdString();
        const std::size_t e = text.find('e');
        std::string digits = text.substr(0, 1) + text.substr(2, e - 2);
        int point = 1 + std::stoi(text.substr(e + 1));
        for (; point < 1; ++point)
            digits.insert(0, "0");
        while (static_cast<std::size_t>(point) > digits.size())
            digits += '0';
        whole = digits.substr(0, static_cast<std::size_t>(point));
        part = digits.substr(static_cast<std::size_t>(point));
        negative = value < 0;
    }

    void movePointLeft(std::size_t places)
    {
        whole.insert(0, places, '0');
        part = whole.substr(whole.size() - places) + part;
        whole.resize(whole.size() - places);
    }
    void movePointRight(std::size_t places)
    {
        part.append(places, '0');
        whole += part.substr(0, places);
        part = part.substr(places);
    }

    void round(std::size_t decimals)
    {
        part.append(decimals + 1, '0');
        std::string all = "0" + whole + part.substr(0, decimals);
        if (part[decimals] >= '5') {
            std::size_t at = all.size() - 1;
            for (; all[at] == '9'; --at)
                all[at] = '0';
            ++all[at];
        }
        whole = all.substr(0, all.size() - decimals);
        part = all.substr(all.size() - decimals);
        whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size() - 1));
    }

    bool isZero() const { return (whole + part).find_first_not_of('0') == std::string::npos; }
    bool reachesTenThousand() const { return whole.size() > 4; }
};

std::string slowText(double value, int precision, Flags flags)
{
    const auto decimals = static_cast<std::size_t>(precision);
    SlowNumber number(value);
    std::string unit;
    if (flags.testFlag(FormatPercent)) {
        number.movePointRight(2);
        number.round(decimals);
        unit = "%";
    } else {
        const SlowNumber exact = number;
        number.round(decimals);
        if (flags.testFlag(FormatUnit) && number.reachesTenThousand()) {
            number = exact;
            number.movePointLeft(4);
            number.round(std::max<std::size_t>(decimals, 2));
            unit = "万";
            if (number.reachesTenThousand()) {
                number = exact;
                number.movePointLeft(8);
                number.round(std::max<std::size_t>(decimals, 2));
                unit = "亿";
            }
        }
    }
    if (number.isZero() && flags.testFlag(FormatZeroAsEmpty))
        return "-";
    std::string whole = number.whole;
    if (flags.testFlag(FormatGroupDigits))
        for (std::size_t at = whole.size(); at > 3; at -= 3)
            whole.insert(at - 3, flags.testFlag(FormatGroupSpace) ? " " : ",");
    std::string part = number.part;
    if (flags.testFlag(FormatTrimZeros))
        part.erase(part.find_last_not_of('0') + 1);
    const std::string sign = number.isZero() ? "" : (number.negative ? "-" : (flags.testFlag(FormatSign) ? "+" : ""));
    return sign + whole + (part.empty() ? "" : "." + part) + unit;
}

double randomValue(std::mt19937_64 &random)
{
    const auto below = [&random](quint64 limit) { return static_cast<double>(random() % limit); };
    switch (random() % 8) {
    case 0: // prices with the noise of a binary fraction
        return std::nextafter(below(1'000'000) / 100, (random() & 1) != 0 ? 0.0 : 1e9);
    case 1: // exact halves of the last decimal
        return (below(10'000'000) * 10 + 5) / 1000;
    case 2: // around the units
        return 1e4 + (below(4001) - 2000) / 100'000;
    case 3:
        return 1e8 + (below(200'001) - 100'000) / 100;
    case 4: // any number of digits below 1e15
        return std::ldexp(static_cast<double>(random() >> 11), -static_cast<int>(random() % 100) - 4);
    case 5:
        return -below(1'000'000'000) / 100;
    case 6:
        return (below(2001) - 1000) / 1e6;
    default:
        return below(100'000'000'000'000) / 100;
    }
}

} // namespace

/// Where the decimal text that a user thinks of, and not the binary fraction, decides.
TEST(NumberFormat, RoundsThenChoosesTheUnitThenCombinesTheFlags)
{
    const struct
    {
        double value;
        int precision;
        Flags flags;
        const char *expected;
    } cases[] = {
        {2.675, 2, {}, "2.68"},
        {15.929999999999999, 4, {}, "15.9300"},
        {2.5, 0, {}, "3"},
        {-0.5, 0, {}, "-1"},
        {-0.0, 2, {}, "0.00"},
        {1e-300, 2, {}, "0.00"},
        {0.1, 15, {}, "0.100000000000000"},
        {1.0 / 3, 15, {}, "0.333333333333333"},
        {-9999.995, 2, FormatUnit, "-1.00万"},
        {9999.4, 0, FormatUnit, "9999"},
        {9999.5, 0, FormatUnit, "1.00万"},
        {99999949.99, 2, FormatUnit, "9999.99万"},
        {99999950, 2, FormatUnit, "1.00亿"},
        {99999999.99, 6, FormatUnit, "9999.999999万"},
        {1234567890123, 2, FormatUnit | FormatGroupDigits, "12,345.68亿"},
        {20000, 2, FormatUnit | FormatTrimZeros, "2万"},
        {999.999, 2, FormatGroupDigits, "1,000.00"},
        {1234567, 0, FormatGroupSpace, "1234567"},
        {0, 2, FormatSign | FormatZeroAsEmpty, "-"},
        {0.001, 2, FormatSign, "0.00"},
        {123.45, 0, FormatPercent | FormatUnit | FormatGroupDigits, "12,345%"},
        {1e20, 2, FormatTrimZeros, "100000000000000000000"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(text(c.value, c.precision, c.flags), c.expected) << c.value << " to " << c.precision;
    EXPECT_EQ(formatDoubleNumberSpace(1234567.891, 2, FormatNone, false, QString()), QStringLiteral("1234567.89"));
    EXPECT_EQ(formatPriceDoubleNumber(12345.678, 2, FormatUnit | FormatGroupDigits), QStringLiteral("12,345.68"))
        << "prices are never in units";
}

TEST(NumberFormat, KeepsEveryDigitBeforeThePointOfLargeValues)
{
    EXPECT_EQ(text(123456789012345.67, 2), "123456789012346.00");
    EXPECT_EQ(text(12345678901234.56, 2), "12345678901234.60");
    EXPECT_EQ(text(999999999999999.9, 2), "1000000000000000.00");
    EXPECT_EQ(text(1234567890123456.0, 2), "1234567890123456.00");
    EXPECT_EQ(text(9007199254740992.0, 0), "9007199254740992");
    EXPECT_EQ(text(4611686018427387904.0L, 0), "4611686018427387904");
    EXPECT_EQ(text(1e18, 2, FormatGroupDigits), "1,000,000,000,000,000,000.00");
    EXPECT_EQ(text(1e22, 0), "1" + std::string(22, '0'));
    EXPECT_EQ(text(1e300, 15, FormatGroupDigits | FormatSign).size(), 1u + 301u + 100u + 16u);
    EXPECT_EQ(text(1e300, 2, FormatUnit).size(), 293u + 3u + std::string("亿").size());
    // Sums arrive as long doubles, with digits that a double does not have where the platform's long double is wider.
    EXPECT_EQ(text(0.1L, 2), "0.10");
    EXPECT_EQ(text(1.005L, 2), "1.01");
    EXPECT_EQ(text(-115836344.125L, 2), "-115836344.13");
}

TEST(NumberFormat, PrecisionOutOfRangeIsClamped)
{
    EXPECT_EQ(text(1.25, -3), "1");
    EXPECT_EQ(text(1.25, std::numeric_limits<int>::min()), "1");
    EXPECT_EQ(text(1.25, std::numeric_limits<int>::max()), "1.250000000000000");
    EXPECT_EQ(formatIntNumber(12345, 99, FormatUnit), QStringLiteral("1.234500000000000万"));
}

TEST(NumberFormat, AbsentAndInvalidValuesHaveTheirTexts)
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double value : {noDouble, std::nextafter(noDouble, 0.0), -noDouble}) {
        EXPECT_EQ(text(value, 2), "-");
        EXPECT_EQ(formatDoubleNumber(value, 2, FormatNone, true, QStringLiteral("非法值")), QString());
        EXPECT_EQ(formatPriceDoubleNumber(value, 2, FormatNone), QStringLiteral("-"));
    }
    for (const double value : {infinity, -infinity, std::nan("")}) {
        EXPECT_EQ(text(value, 2), "非法值");
        EXPECT_EQ(formatDoubleNumber(value, 2, FormatNone, true, QStringLiteral("非法值")), QStringLiteral("非法值"));
        EXPECT_EQ(formatPriceDoubleNumber(value, 2, FormatNone), QStringLiteral("-"));
    }
    EXPECT_EQ(text(1.79769313486232e308L, 2), "-");
    EXPECT_EQ(text(std::numeric_limits<long double>::max(), 2), "-");
}

TEST(NumberFormat, IntegersToTheEndsOfTheirTypes)
{
    constexpr qint64 least = std::numeric_limits<qint64>::min();
    const struct
    {
        qint64 value;
        int precision;
        Flags flags;
        const char *expected;
    } cases[] = {
        {std::numeric_limits<qint64>::max(), 0, {}, "-"},
        {least, 5, FormatGroupDigits, "-9,223,372,036,854,775,808"},
        {least, 0, FormatUnit, "-92233720368.55亿"},
        {least, 2, FormatPercent, "-922337203685477580800.00%"},
        {10000, 0, FormatUnit, "1.00万"},
        {99999999, 0, FormatUnit, "1.00亿"},
        {3, 1, FormatPercent | FormatSign, "+300.0%"},
        {7, 3, {}, "7"},
        {-5, 0, FormatSign, "-5"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(formatLonglongNumber(c.value, c.precision, c.flags).toStdString(), c.expected);
    EXPECT_EQ(formatIntNumber(std::numeric_limits<int>::max() - 1, 0, FormatGroupDigits),
              QStringLiteral("2,147,483,646"));
    EXPECT_EQ(formatIntNumber(std::numeric_limits<int>::min(), 0, FormatNone), QStringLiteral("-2147483648"));
}

TEST(NumberFormat, AgreesWithArithmeticOnDecimalTexts)
{
    const unsigned seed = std::random_device{}();
    std::mt19937_64 random(seed);
    const EFormatNumberFlag flagBits[] = {FormatSign,        FormatPercent,     FormatUnit,      FormatTrimZeros,
                                          FormatZeroAsEmpty, FormatGroupDigits, FormatGroupSpace};
    for (int round = 0; round < 200'000; ++round) {
        const double value = randomValue(random);
        const int precision = static_cast<int>(random() % 7);
        Flags flags;
        for (const EFormatNumberFlag bit : flagBits)
            flags |= random() % 3 == 0 ? bit : FormatNone;
        ASSERT_EQ(text(value, precision, flags), slowText(value, precision, flags))
            << QString::number(value, 'e', 17).toStdString() << " precision " << precision << " flags " << flags.value()
            << " seed " << seed;
    }
}

TEST(NumberFormat, DoesNotDependOnTheLocale)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    const std::string old = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    EXPECT_EQ(text(1234.5, 2, FormatGroupDigits), "1,234.50");
    EXPECT_EQ(text(1.0L / 3, 5), "0.33333");
    std::setlocale(LC_ALL, old.c_str());
    QLocale::setDefault(before);
}

TEST(StockColour, ComparesWithinATolerance)
{
    for (const double price : {10.000009, 9.999991, std::nan(""), std::numeric_limits<double>::infinity()})
        EXPECT_STREQ(getStockColorKey(price, 10), "clr_global_equal") << price;
    EXPECT_STREQ(getStockColorKey(10.00002, 10), "clr_global_rise");
    EXPECT_STREQ(getStockColorKey(9.99998, 10), "clr_global_fall");
}
