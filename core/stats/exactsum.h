#pragma once

#include <QtCore/qglobal.h>
#include <array>
#include <cstring>

namespace core {

/// The exact sum of doubles that come and go: after any sequence of additions and removals it is the sum of what is
/// left, rounded once (to nearest, ties to even), whatever the order. NaN and infinities are counted apart, so that
/// they leave no trace when they are removed.
///
/// A small superaccumulator: Radford Neal, "Fast exact summation using small and large superaccumulators" (2015). About
/// 2 ns for an addition, 540 bytes. Not thread-safe.
class ExactSum
{
public:
    void add(double value) { addBits(bitsOf(value), 1); }
    /// Takes away a value that was added before.
    void subtract(double value) { addBits(bitsOf(value), -1); }
    void clear() { *this = ExactSum(); }

    /// 0 over no values; NaN when a NaN or infinities of both signs are in the sum; an infinity when the exact sum is
    /// too large for a double.
    double value() const;

private:
    // A finite value is mantissa * 2^(exponent - 1075). Bit b of the accumulator weighs 2^(b - 1075); a digit holds 32
    // of them and, between two carries, up to 2^63 more.
    static constexpr int digitCount = 67;
    static constexpr int mantissaBits = 52;
    static constexpr int additionsPerCarry = 1000; // each adds less than 2^53 to a digit
    using Digits = std::array<qint64, digitCount>;

    static quint64 bitsOf(double value)
    {
        quint64 bits;
        std::memcpy(&bits, &value, sizeof bits);
        return bits;
    }

    void addBits(quint64 bits, int sign)
    {
        unsigned exponent = static_cast<unsigned>(bits >> mantissaBits) & 0x7ff;
        if (exponent == 0x7ff) {
            addSpecial(bits, sign);
            return;
        }
        quint64 mantissa = bits & ((quint64(1) << mantissaBits) - 1);
        if (exponent != 0)
            mantissa |= quint64(1) << mantissaBits;
        else
            exponent = 1;
        if (--untilCarry < 0)
            carry();
        const unsigned shift = exponent & 31;
        const bool negative = (bits >> 63 != 0) != (sign < 0);
        const auto low = static_cast<qint64>((mantissa << shift) & 0xffffffffu);
        const auto high = static_cast<qint64>(mantissa >> (32 - shift));
        qint64 *digit = digits.data() + (exponent >> 5);
        digit[0] += negative ? -low : low;
        digit[1] += negative ? -high : high;
    }

    void addSpecial(quint64 bits, int sign);
    void carry();
    static void propagate(Digits &digits);

    Digits digits{};
    qint64 nanCount = 0;
    qint64 positiveInfinities = 0;
    qint64 negativeInfinities = 0;
    int untilCarry = additionsPerCarry;
};

} // namespace core
