#include "model/recordsearch.h"

#include "kdservice/fielddes.h"

namespace KV {

namespace {

using RecordPtr = boost::shared_ptr<kdservice::IData>;

RecordPtr nestedHolding(const kdservice::IData &record, int fieldId, int depth)
{
    if (depth >= deepestNesting)
        return RecordPtr();
    for (const auto &[id, field] : record.getFieldDes()) {
        if (field == nullptr || field->dataType != kdservice::ExtData)
            continue;
        RecordPtr nested = record.getIData(id);
        if (!nested)
            continue;
        if (nested->getFieldDes(fieldId) != nullptr)
            return nested;
        if (RecordPtr deeper = nestedHolding(*nested, fieldId, depth + 1))
            return deeper;
    }
    return RecordPtr();
}

} // namespace

const kdservice::IData *recordHolding(const kdservice::IData &record, int fieldId, RecordPtr &keep)
{
    if (record.getFieldDes(fieldId) != nullptr)
        return &record;
    keep = nestedHolding(record, fieldId, 0);
    return keep.get();
}

} // namespace KV
