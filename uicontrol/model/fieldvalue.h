#pragma once

#include <QtCore/QVariant>

#include "kdservice/extdatatype.h"
#include "kdservice/fielddes.h"

namespace kdservice {
class IData;
}

namespace KV {

/// A field's value as statistics use it: absent integers and integers below zero count as 0, and so do doubles that are
/// absent, NaN or infinite. Texts and nested records have none (ExtInvalid).
struct FieldValue
{
    kdservice::EXT_DATA_TYPE type = kdservice::ExtInvalid;
    qint64 integer = 0; ///< of bool, int and 64-bit int
    double real = 0;    ///< of double

    /// Bool, Int, LongLong or Double; invalid for no value.
    QVariant toVariant() const;
};

FieldValue statisticValue(const kdservice::IData &holder, kdservice::EXT_DATA_TYPE type, int fieldId);

/// The raw value, absent ones as the largest value of their type; codes come as text. False, and `out` untouched, for
/// nested records and unknown types.
bool readFieldValue(const kdservice::IData &holder, kdservice::EXT_DATA_TYPE type, int fieldId, QVariant &out);

/// The type in which values of a field are handed to Qt; codes are text. Invalid for nested records and unknown types.
QVariant::Type qtTypeOf(kdservice::EXT_DATA_TYPE type);

/// Whether a double means "no value": within 1e-05 of the largest double.
bool isAbsent(double value);

} // namespace KV
