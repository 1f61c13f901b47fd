#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>

#include "rows/sortkey.h"
#include "zb/ibasehpftabledata.h"

namespace ZB {

/// One column of a model, as its values are read for sorting, filtering and summing. A value type; safe on every
/// thread.
class HpfModelColumn
{
public:
    HpfModelColumn(int number, QVariant::Type columnType);

    int number() const { return column; }
    /// Integer, Real or Text; never Custom.
    core::ValueKind kind() const;
    bool operator==(const HpfModelColumn &other) const { return column == other.column && reading == other.reading; }

    /// The value as its bits. No value comes as the largest one of 64 bits, or of a double, whatever the column's type.
    quint64 number(IBaseHpfTableData &row) const;
    QString text(IBaseHpfTableData &row) const { return row.getQString(column); }
    /// What puts the row in its place; for a text column `textOut` gets the text too.
    quint64 sortKey(IBaseHpfTableData &row, bool descending, QString &textOut) const;

private:
    enum class Reading
    {
        Int,
        LongLong,
        Double,
        Text
    };
    static Reading readingOf(QVariant::Type type);

    int column;
    Reading reading;
};

} // namespace ZB
