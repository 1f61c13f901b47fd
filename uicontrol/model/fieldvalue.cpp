#include "model/fieldvalue.h"

#include <cmath>
#include <limits>

#include "kdservice/idata.h"
#include "zb/numberformat.h"

namespace KV {

namespace {

template <typename Integer>
qint64 countable(Integer value)
{
    return value == std::numeric_limits<Integer>::max() || value < 0 ? 0 : value;
}

} // namespace

QVariant::Type qtTypeOf(kdservice::EXT_DATA_TYPE type)
{
    switch (type) {
    case kdservice::ExtBool:
        return QVariant::Bool;
    case kdservice::ExtInt:
        return QVariant::Int;
    case kdservice::ExtLong:
        return QVariant::LongLong;
    case kdservice::ExtDouble:
        return QVariant::Double;
    case kdservice::ExtString:
    case kdservice::ExtChar:
        return QVariant::String;
    default:
        return QVariant::Invalid;
    }
}

bool isAbsent(double value)
{
    // Neighbouring doubles of this size are 1e292 apart, so "within 1e-05" leaves the value itself.
    return value == std::numeric_limits<double>::max();
}

QVariant FieldValue::toVariant() const
{
    switch (type) {
    case kdservice::ExtBool:
        return integer != 0;
    case kdservice::ExtInt:
        return static_cast<int>(integer);
    case kdservice::ExtLong:
        return integer;
    case kdservice::ExtDouble:
        return real;
    default:
        return QVariant();
    }
}

FieldValue statisticValue(const kdservice::IData &holder, kdservice::EXT_DATA_TYPE type, int fieldId)
{
    FieldValue value;
    value.type = type;
    switch (type) {
    case kdservice::ExtBool:
        value.integer = holder.getBool(fieldId);
        break;
    case kdservice::ExtInt:
        value.integer = countable(holder.getInt(fieldId));
        break;
    case kdservice::ExtLong:
        value.integer = countable(holder.getLong(fieldId));
        break;
    case kdservice::ExtDouble:
        value.real = holder.getDouble(fieldId);
        if (!std::isfinite(value.real) || isAbsent(value.real))
            value.real = 0;
        break;
    default:
        value.type = kdservice::ExtInvalid;
        break;
    }
    return value;
}

bool readFieldValue(const kdservice::IData &holder, kdservice::EXT_DATA_TYPE type, int fieldId, QVariant &out)
{
    switch (type) {
    case kdservice::ExtBool:
        out = holder.getBool(fieldId);
        return true;
    case kdservice::ExtInt:
        out = holder.getInt(fieldId);
        return true;
    case kdservice::ExtLong:
        out = holder.getLong(fieldId);
        return true;
    case kdservice::ExtDouble:
        out = holder.getDouble(fieldId);
        return true;
    case kdservice::ExtString:
    case kdservice::ExtChar:
        out = ZB::sToQs(holder.getString(fieldId));
        return true;
    default:
        return false;
    }
}

} // namespace KV
