#include "rows/sortkey.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace core {
namespace SortKey {

namespace {

constexpr quint64 signBit = quint64(1) << 63;
constexpr int textUnits = 4;

} // namespace

quint64 ofInteger(qint64 value, bool descending)
{
    const quint64 key = static_cast<quint64>(value) ^ signBit;
    return descending ? reversed(key, ValueKind::Integer) : key;
}

quint64 ofReal(double value, bool descending)
{
    if (std::isnan(value) || value == std::numeric_limits<double>::max())
        return noValue;
    const double positiveZero = value + 0.0;
    quint64 bits;
    std::memcpy(&bits, &positiveZero, sizeof bits);
    const quint64 key = (bits & signBit) != 0 ? ~bits : bits | signBit;
    return descending ? reversed(key, ValueKind::Real) : key;
}

quint64 ofText(const QString &text, bool descending)
{
    quint64 key = 0;
    for (int i = 0; i < textUnits; ++i)
        key = key << 16 | (i < text.size() ? text.at(i).unicode() : 0u);
    return descending ? ~key : key;
}

quint64 reversed(quint64 key, ValueKind kind)
{
    if (kind == ValueKind::Text)
        return ~key;
    return key == noValue ? noValue : noValue - 1 - key;
}

} // namespace SortKey
} // namespace core
