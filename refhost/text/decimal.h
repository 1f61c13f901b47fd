#pragma once

#include <QtCore/qglobal.h>

namespace refhost {

/// A number as decimal digits: digits * 10^-scale. What is rounded for the eye is rounded here, where 1.005 is 1.005.
struct Decimal
{
    static constexpr int maxDigits = 19; ///< all that `digits` ever holds

    quint64 digits = 0;
    int scale = 0; ///< negative for zeros behind the digits
    bool negative = false;

    static Decimal ofInteger(qint64 value);
    /// With 15 significant digits, from 1e15 on with up to 19. The value must be finite. 10 ns for few decimals, up to
    /// 100 ns otherwise.
    static Decimal ofDouble(long double value);

    /// Half away from zero, to at most so many decimals (0 to 15).
    Decimal rounded(int decimals) const;
    /// Times ten to that power.
    Decimal shifted(int power) const { return {digits, scale - power, negative}; }
    /// Whether the magnitude is at least 10,000.
    bool reachesTenThousand() const;
    bool isZero() const { return digits == 0; }
};

/// 10^power for 0 to 19.
quint64 powerOfTen(int power);

} // namespace refhost
