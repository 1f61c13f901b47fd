#pragma once

#include <QtCore/qglobal.h>

namespace core {

/// The exact sum of 64-bit integers that come and go, in 128 bits: no intermediate overflow can happen. Not
/// thread-safe.
class ExactIntegerSum
{
public:
    void add(qint64 value) { accumulate(static_cast<quint64>(value), value < 0 ? -1 : 0); }
    /// Takes away a value that was added before.
    void subtract(qint64 value)
    {
        const quint64 before = low;
        low -= static_cast<quint64>(value);
        high -= (value < 0 ? -1 : 0) + (low > before ? 1 : 0);
    }
    void clear() { *this = ExactIntegerSum(); }

    /// A sum outside the range comes as the nearest end of it. The upper end is one below the largest 64-bit integer,
    /// since that one means "no value".
    qint64 value() const;
    /// The exact sum, rounded once.
    double toDouble() const;

private:
    void accumulate(quint64 lowPart, qint64 highPart)
    {
        low += lowPart;
        high += highPart + (low < lowPart ? 1 : 0);
    }

    quint64 low = 0;
    qint64 high = 0;
};

} // namespace core
