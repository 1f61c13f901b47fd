#include "text/decimal.h"

#include <array>
#include <charconv>
#include <cmath>

namespace refhost {

namespace {

constexpr std::array<quint64, Decimal::maxDigits + 1> makePowers()
{
    std::array<quint64, Decimal::maxDigits + 1> powers{};
    quint64 power = 1;
    for (quint64 &entry : powers) {
        entry = power;
        power *= 10; // wraps once, behind the last entry
    }
    return powers;
}

constexpr auto powers = makePowers();

constexpr int textDigits = 25; ///< enough to see which side of a half a value is on

/// Reads so many digits of "d.ddde+dd", the form that to_chars gives in every locale, rounding by the digit behind
/// them.
Decimal parseScientific(const char *text, int count, bool negative)
{
    Decimal result;
    result.negative = negative;
    result.digits = static_cast<quint64>(text[0] - '0');
    for (int digit = 1; digit < count; ++digit)
        result.digits = result.digits * 10 + static_cast<quint64>(text[digit + 1] - '0');
    result.digits += text[count + 1] >= '5' ? 1 : 0;
    text += textDigits + 2;
    const bool small = *text == '-';
    int exponent = 0;
    for (++text; *text != 0; ++text)
        exponent = exponent * 10 + (*text - '0');
    result.scale = count - 1 - (small ? -exponent : exponent);
    return result;
}

/// Values that are the nearest double to few decimals, as prices and amounts mostly are: 15 digits read back from a
/// double are the 15 digits that it was made from. False for all others.
bool readShort(double magnitude, Decimal &result)
{
    if (magnitude >= 1e13)
        return false;
    const int decimals = magnitude < 1e9 ? 6 : 2;
    const auto unit = static_cast<double>(powerOfTen(decimals));
    const auto digits = static_cast<quint64>(magnitude * unit + 0.5);
    if (static_cast<double>(digits) / unit != magnitude)
        return false;
    result.digits = digits;
    result.scale = decimals;
    return true;
}

} // namespace

quint64 powerOfTen(int power)
{
    return powers[static_cast<std::size_t>(power)];
}

Decimal Decimal::ofInteger(qint64 value)
{
    // The smallest value has no positive counterpart.
    const quint64 magnitude = value < 0 ? ~static_cast<quint64>(value) + 1 : static_cast<quint64>(value);
    return {magnitude, 0, value < 0};
}

Decimal Decimal::ofDouble(long double value)
{
    const bool negative = std::signbit(value);
    const long double magnitude = negative ? -value : value;
    const auto asDouble = static_cast<double>(magnitude);
    const bool isDouble = static_cast<long double>(asDouble) == magnitude;
    Decimal result;
    result.negative = negative;
    if (isDouble && readShort(asDouble, result))
        return result;
    char text[textDigits + 16];
    const auto print = [&text](auto number) {
        return std::to_chars(text, text + sizeof text, number, std::chars_format::scientific, textDigits - 1);
    };
    *(isDouble ? print(asDouble) : print(magnitude)).ptr = 0;
    return parseScientific(text, magnitude < 1e15L ? 15 : maxDigits, negative);
}

Decimal Decimal::rounded(int decimals) const
{
    const int drop = scale - decimals;
    if (drop <= 0)
        return *this;
    if (drop > maxDigits)
        return {0, decimals, negative};
    const quint64 unit = powerOfTen(drop);
    const quint64 up = digits % unit >= unit / 2 ? 1 : 0;
    return {digits / unit + up, decimals, negative};
}

bool Decimal::reachesTenThousand() const
{
    constexpr int power = 4;
    if (isZero() || scale + power > maxDigits)
        return false;
    return scale + power <= 0 || digits >= powerOfTen(scale + power);
}

} // namespace refhost
