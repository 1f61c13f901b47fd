#include "window/repeatedrecord.h"

#include "kdservice/fielddes.h"
#include "records/record.h"

namespace terminal {

namespace {

void setNested(kdservice::IData &target, int field, boost::shared_ptr<kdservice::IData> nested)
{
    if (auto *order = dynamic_cast<refhost::OrderRecord *>(&target))
        order->setNested(field, std::move(nested));
    else if (auto *deal = dynamic_cast<refhost::DealRecord *>(&target))
        deal->setNested(field, std::move(nested));
}

void copyField(kdservice::IData &target, const kdservice::IData &source, const kdservice::FieldDes &field)
{
    const int id = field.fieldId;
    switch (field.dataType) {
    case kdservice::ExtBool:
        return target.setData(id, source.getBool(id));
    case kdservice::ExtInt:
    case kdservice::ExtChar:
        return target.setData(id, source.getInt(id));
    case kdservice::ExtLong:
        return target.setData(id, source.getLong(id));
    case kdservice::ExtDouble:
        return target.setData(id, source.getDouble(id));
    case kdservice::ExtString:
        return target.setData(id, source.getString(id));
    case kdservice::ExtData:
        return setNested(target, id, source.getIData(id));
    case kdservice::ExtInvalid:
        return;
    }
}

} // namespace

boost::shared_ptr<kdservice::IData> repeatedRecord(const kdservice::IData &record, const std::string &key)
{
    const auto copy = refhost::makeRecord(record.getBaseId(), key);
    if (copy)
        for (const auto &[id, field] : record.getFieldDes())
            copyField(*copy, record, *field);
    return copy;
}

} // namespace terminal
