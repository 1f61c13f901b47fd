#include "stats/exactsum.h"

#include <QtCore/qalgorithms.h>
#include <cmath>
#include <limits>

namespace core {

void ExactSum::addSpecial(quint64 bits, int sign)
{
    if ((bits & ((quint64(1) << mantissaBits) - 1)) != 0)
        nanCount += sign;
    else if (bits >> 63 != 0)
        negativeInfinities += sign;
    else
        positiveInfinities += sign;
}

void ExactSum::carry()
{
    propagate(digits);
    untilCarry = additionsPerCarry - 1;
}

/// Brings every digit but the last, which carries the sign, into 0 .. 2^32 - 1.
void ExactSum::propagate(Digits &digits)
{
    constexpr qint64 base = qint64(1) << 32;
    qint64 carried = 0;
    for (std::size_t i = 0; i + 1 < digits.size(); ++i) {
        const qint64 total = digits[i] + carried;
        const qint64 rest = total & (base - 1);
        carried = (total - rest) / base;
        digits[i] = rest;
    }
    digits.back() += carried;
}

double ExactSum::value() const
{
    if (nanCount != 0 || (positiveInfinities != 0 && negativeInfinities != 0))
        return std::numeric_limits<double>::quiet_NaN();
    if (positiveInfinities != 0)
        return std::numeric_limits<double>::infinity();
    if (negativeInfinities != 0)
        return -std::numeric_limits<double>::infinity();

    Digits magnitude = digits;
    propagate(magnitude);
    const bool negative = magnitude.back() < 0;
    if (negative) {
        for (qint64 &digit : magnitude)
            digit = -digit;
        propagate(magnitude);
    }

    int top = digitCount - 1;
    while (top >= 0 && magnitude[static_cast<std::size_t>(top)] == 0)
        --top;
    if (top < 0)
        return 0.0;

    // The 64 bits from the highest one down, and whether anything is left below them.
    const auto digitAt = [&magnitude](int index) {
        return index < 0 ? quint64(0) : static_cast<quint64>(magnitude[static_cast<std::size_t>(index)]);
    };
    const int unused = static_cast<int>(qCountLeadingZeroBits(static_cast<quint32>(digitAt(top))));
    quint64 window = (digitAt(top) << 32 | digitAt(top - 1)) << unused;
    if (unused != 0)
        window |= digitAt(top - 2) >> (32 - unused);
    bool sticky = (digitAt(top - 2) & ((quint64(1) << (32 - unused)) - 1)) != 0;
    for (int i = top - 3; i >= 0 && !sticky; --i)
        sticky = digitAt(i) != 0;

    // Near zero a double has fewer bits: its last one weighs 2^-1074, which is bit 1 of the accumulator.
    const int topBit = 32 * top + 31 - unused;
    const int keptBits = qMin(mantissaBits + 1, topBit);
    const quint64 kept = window >> (64 - keptBits);
    const quint64 rest = window << keptBits;
    constexpr quint64 half = quint64(1) << 63;
    const bool roundUp = rest > half || (rest == half && (sticky || (kept & 1) != 0));
    const double result = std::ldexp(static_cast<double>(kept + (roundUp ? 1 : 0)), topBit + 1 - keptBits - 1075);
    return negative ? -result : result;
}

} // namespace core
