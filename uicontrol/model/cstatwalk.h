#pragma once

#include <vector>

#include "kdservice/extdatatype.h"
#include "kdservice/idata.h"

namespace KV {

class CStatLayout;

/// What a row's statistics read of a record, in ascending order of field ids: fields with a slot, and nested records.
/// Worked out once for all records that share a map of fields, which is most of the work of looking for them.
struct CStatWalk
{
    struct Step
    {
        int fieldId = -1;
        kdservice::EXT_DATA_TYPE type = kdservice::ExtInvalid; ///< ExtData: go into the record under this field
        int slot = -1;
    };

    CStatWalk() = default;
    CStatWalk(const kdservice::IData::FieldMap &fieldMap, const CStatLayout &layout);

    bool isOf(const kdservice::IData::FieldMap &fieldMap) const
    {
        return fields == &fieldMap && fieldCount == fieldMap.size();
    }

    const kdservice::IData::FieldMap *fields = nullptr; ///< compared only
    std::size_t fieldCount = 0;
    std::vector<Step> steps;
};

} // namespace KV
