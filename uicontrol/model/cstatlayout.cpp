#include "model/cstatlayout.h"

namespace KV {

namespace {

CStatLayout::Kind kindOf(int type)
{
    switch (type) {
    case QVariant::Bool:
        return CStatLayout::Kind::Bool;
    case QVariant::Int:
        return CStatLayout::Kind::Int;
    case QVariant::LongLong:
        return CStatLayout::Kind::Long;
    default:
        return CStatLayout::Kind::Double;
    }
}

} // namespace

CStatLayout::CStatLayout(const QMap<int, int> &fieldColumnMap, const QMap<int, CHpfDataColumnProperty> &properties)
{
    for (auto property = properties.begin(); property != properties.end(); ++property)
        if (property->statEnable)
            slotList.push_back({property.key(), kindOf(property->type)});
    for (auto entry = fieldColumnMap.begin(); entry != fieldColumnMap.end(); ++entry) {
        const int slot = slotOfColumn(entry.value());
        if (slot >= 0)
            fieldList.push_back({entry.key(), slot});
    }
}

int CStatLayout::slotOfColumn(int column) const
{
    for (std::size_t index = 0; index < slotList.size(); ++index)
        if (slotList[index].column == column)
            return static_cast<int>(index);
    return -1;
}

} // namespace KV
