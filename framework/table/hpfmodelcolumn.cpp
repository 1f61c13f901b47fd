#include "table/hpfmodelcolumn.h"

#include <cmath>
#include <cstring>
#include <limits>

#include "stats/columnsum.h"

namespace ZB {

using core::ColumnSum;
using core::ValueKind;

HpfModelColumn::HpfModelColumn(int number, QVariant::Type columnType) : column(number), reading(readingOf(columnType))
{
}

HpfModelColumn::Reading HpfModelColumn::readingOf(QVariant::Type type)
{
    switch (type) {
    case QVariant::Bool:
    case QVariant::Int:
        return Reading::Int;
    case QVariant::UInt:
    case QVariant::LongLong:
    case QVariant::ULongLong:
        return Reading::LongLong;
    case QVariant::Double:
        return Reading::Double;
    default:
        return Reading::Text;
    }
}

ValueKind HpfModelColumn::kind() const
{
    switch (reading) {
    case Reading::Double:
        return ValueKind::Real;
    case Reading::Text:
        return ValueKind::Text;
    default:
        return ValueKind::Integer;
    }
}

quint64 HpfModelColumn::number(IBaseHpfTableData &row) const
{
    constexpr qint64 noValue = std::numeric_limits<qint64>::max();
    if (reading == Reading::Double)
        return ColumnSum::bitsOf(row.getDouble(column));
    if (reading == Reading::Int) {
        const int value = row.getInt(column);
        return ColumnSum::bitsOf(value == std::numeric_limits<int>::max() ? noValue : qint64(value));
    }
    const qint64 value = row.getLongLong(column);
    if (value != 0)
        return ColumnSum::bitsOf(value);
    // Rows may keep computed values where only getDouble looks.
    const double real = row.getDouble(column);
    if (std::isnan(real) || real >= std::ldexp(1.0, 63))
        return ColumnSum::bitsOf(noValue);
    return ColumnSum::bitsOf(real <= -std::ldexp(1.0, 63) ? std::numeric_limits<qint64>::min() : std::llround(real));
}

quint64 HpfModelColumn::sortKey(IBaseHpfTableData &row, bool descending, QString &textOut) const
{
    if (reading == Reading::Text) {
        textOut = text(row);
        return core::SortKey::ofText(textOut, descending);
    }
    const quint64 bits = number(row);
    if (reading != Reading::Double)
        return core::SortKey::ofInteger(static_cast<qint64>(bits), descending);
    double real;
    std::memcpy(&real, &bits, sizeof real);
    return core::SortKey::ofReal(real, descending);
}

} // namespace ZB
