#include "model/cstatlayout.h"

#include <boost/thread/lock_guard.hpp>

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

CStatLayout::~CStatLayout()
{
    for (const auto &walk : walks)
        delete walk.load(std::memory_order_relaxed);
}

const CStatWalk *CStatLayout::knownWalk(const kdservice::IData::FieldMap &fields) const
{
    for (const auto &walk : walks) {
        const CStatWalk *known = walk.load(std::memory_order_acquire);
        if (known == nullptr || known->isOf(fields))
            return known;
    }
    return nullptr;
}

const CStatWalk &CStatLayout::walkOf(const kdservice::IData::FieldMap &fields, CStatWalk &own) const
{
    if (const CStatWalk *known = knownWalk(fields))
        return *known;
    own = CStatWalk(fields, *this);
    const boost::lock_guard<boost::mutex> lock(mutex);
    if (const CStatWalk *known = knownWalk(fields))
        return *known;
    for (auto &walk : walks) {
        if (walk.load(std::memory_order_relaxed) != nullptr)
            continue;
        const CStatWalk *const added = new CStatWalk(own);
        walk.store(added, std::memory_order_release);
        return *added;
    }
    return own;
}

int CStatLayout::slotOfColumn(int column) const
{
    for (std::size_t index = 0; index < slotList.size(); ++index)
        if (slotList[index].column == column)
            return static_cast<int>(index);
    return -1;
}

} // namespace KV
