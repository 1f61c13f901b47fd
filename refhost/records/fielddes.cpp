#include "kdservice/fielddes.h"

namespace kdservice {

bool FieldDes::getProperty(int number) const
{
    return number >= 0 && number < 32 && ((properties >> number) & 1u) != 0;
}

bool FieldDes::findFunc(int func, iterator &found) const
{
    const auto entry = funcs.find(func);
    if (entry == funcs.end())
        return false;
    found = entry;
    return true;
}

bool FieldDes::classCompare::operator()(const FieldDes *a, const FieldDes *b) const
{
    return a->sequence != b->sequence ? a->sequence < b->sequence : a->fieldId < b->fieldId;
}

} // namespace kdservice
