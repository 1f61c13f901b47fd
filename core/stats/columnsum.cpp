#include "stats/columnsum.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace core {

namespace {

constexpr double noReal = std::numeric_limits<double>::max();
constexpr qint64 noInteger = std::numeric_limits<qint64>::max();

double realOf(quint64 bits)
{
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

} // namespace

quint64 ColumnSum::bitsOf(double value)
{
    quint64 bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

void ColumnSum::add(quint64 bits)
{
    if (integers && bits != bitsOf(noInteger))
        integerSum.add(static_cast<qint64>(bits));
    else if (!integers && bits != bitsOf(noReal))
        realSum.add(realOf(bits));
}

void ColumnSum::subtract(quint64 bits)
{
    if (integers && bits != bitsOf(noInteger))
        integerSum.subtract(static_cast<qint64>(bits));
    else if (!integers && bits != bitsOf(noReal))
        realSum.subtract(realOf(bits));
}

void ColumnSum::clear()
{
    integerSum.clear();
    realSum.clear();
}

double ColumnSum::toDouble() const
{
    const double sum = integers ? integerSum.toDouble() : realSum.value();
    return sum == noReal ? std::nextafter(noReal, 0.0) : sum;
}

qint64 ColumnSum::toInteger() const
{
    if (integers)
        return integerSum.value();
    const double sum = std::round(realSum.value());
    if (std::isnan(sum))
        return 0;
    if (sum >= std::ldexp(1.0, 63))
        return noInteger - 1;
    if (sum < -std::ldexp(1.0, 63))
        return std::numeric_limits<qint64>::min();
    return static_cast<qint64>(sum);
}

} // namespace core
