#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <variant>

#include "frameworkexport.h"

namespace ZB {

class IBaseHpfTableData;

/// A number as a cell shows it: the full value, and how its text is written.
struct CellNumber
{
    std::variant<qint64, double> value = qint64(0);
    int decimals = 0; ///< shown behind the point
    bool percent = false;
    bool grouped = false;
};

/// What leaves the table when a cell is copied or exported: nothing, a number, or a text.
using CellValue = std::variant<std::monostate, CellNumber, QString>;

/// The value of a cell of a column of this type. Number columns give the full number behind texts that read as one
/// (groups of digits, a percent sign and the units 万 and 亿 included) and the text itself where a number is shown as
/// something else (a time, a state). An absent value ("-" or no text) gives nothing. Any thread.
FRAMEWORK_API CellValue cellValue(IBaseHpfTableData &row, int column, QVariant::Type type);

/// The value as plain text: numbers without groups or units, doubles with at most 15 significant digits, so that
/// 15.929999999999999 is "15.93".
FRAMEWORK_API QString plainText(const CellValue &value);

FRAMEWORK_API double toDouble(const CellNumber &number);

FRAMEWORK_API bool isNumberType(QVariant::Type type);

} // namespace ZB
