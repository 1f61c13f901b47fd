#pragma once

#include <QtCore/QString>
#include <QtCore/qglobal.h>

namespace core {

/// What the values of a column are compared as.
enum class ValueKind
{
    Integer, ///< qint64; the largest one is no value
    Real,    ///< double; the largest one and NaN are no value
    Text,    ///< by UTF-16 code units
    Custom   ///< by a comparison that the caller brings
};

/// Values as unsigned numbers that stand in the wanted order, so that sorting and searching compare nothing else. No
/// value is the largest number in either direction.
namespace SortKey {

constexpr quint64 noValue = ~quint64(0);

quint64 ofInteger(qint64 value, bool descending);
/// -0 equals 0.
quint64 ofReal(double value, bool descending);
/// Of the first four units; texts of equal keys have still to be compared.
quint64 ofText(const QString &text, bool descending);

/// The key of the same value for the other direction.
quint64 reversed(quint64 key, ValueKind kind);

} // namespace SortKey

} // namespace core
