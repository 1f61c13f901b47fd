#pragma once

#include <QtCore/qglobal.h>

#include "stats/exactintegersum.h"
#include "stats/exactsum.h"

namespace core {

/// The sum of one column: of 64-bit integers or of doubles, handed in as their bits. The largest value of the type
/// means no value and is skipped. Not thread-safe.
class ColumnSum
{
public:
    explicit ColumnSum(bool ofIntegers) : integers(ofIntegers) {}

    static quint64 bitsOf(qint64 value) { return static_cast<quint64>(value); }
    static quint64 bitsOf(double value);

    void add(quint64 bits);
    /// Takes away a value that was added before.
    void subtract(quint64 bits);
    void clear();

    /// 0 over no values. Never the value that means none: a sum that would be comes as its neighbour nearer to 0.
    double toDouble() const;
    /// The same; a sum of doubles is rounded to the nearest integer, NaN gives 0, and what is out of range the end of
    /// it.
    qint64 toInteger() const;

private:
    bool integers;
    ExactIntegerSum integerSum;
    ExactSum realSum;
};

} // namespace core
