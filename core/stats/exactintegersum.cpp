#include "stats/exactintegersum.h"

#include <cmath>
#include <limits>

#include "stats/exactsum.h"

namespace core {

qint64 ExactIntegerSum::value() const
{
    constexpr qint64 largest = std::numeric_limits<qint64>::max() - 1;
    constexpr qint64 smallest = std::numeric_limits<qint64>::min();
    const auto lowSigned = static_cast<qint64>(low);
    if (high > 0 || (high == 0 && (lowSigned < 0 || lowSigned > largest)))
        return largest;
    if (high < -1 || (high == -1 && lowSigned >= 0))
        return smallest;
    return lowSigned;
}

double ExactIntegerSum::toDouble() const
{
    // Each 32-bit part is exact as a double; the sum of the parts is rounded once.
    constexpr quint64 mask = 0xffffffffu;
    const auto highBits = static_cast<quint64>(high);
    ExactSum parts;
    parts.add(static_cast<double>(low & mask));
    parts.add(std::ldexp(static_cast<double>(low >> 32), 32));
    parts.add(std::ldexp(static_cast<double>(highBits & mask), 64));
    parts.add(std::ldexp(static_cast<double>(highBits >> 32), 96));
    if (high < 0)
        parts.add(-std::ldexp(1.0, 128));
    return parts.value();
}

} // namespace core
