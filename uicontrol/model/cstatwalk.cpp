#include "model/cstatwalk.h"

#include "kdservice/fielddes.h"
#include "model/cstatlayout.h"

namespace KV {

CStatWalk::CStatWalk(const kdservice::IData::FieldMap &fieldMap, const CStatLayout &layout)
    : fields(&fieldMap), fieldCount(fieldMap.size())
{
    // Both lists ascend by field id, so one pass over each is enough.
    auto wanted = layout.fields().begin();
    const auto end = layout.fields().end();
    for (const auto &[id, field] : fieldMap) {
        if (field == nullptr)
            continue;
        if (field->dataType == kdservice::ExtData) {
            steps.push_back({id, kdservice::ExtData, -1});
            continue;
        }
        while (wanted != end && wanted->fieldId < id)
            ++wanted;
        if (wanted != end && wanted->fieldId == id)
            steps.push_back({id, field->dataType, wanted->slot});
    }
}

} // namespace KV
