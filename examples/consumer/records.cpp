// The host's record library: what all records have in common, and the catalogue of their types.

#include "kdservice/cdealdetailv2.h"
#include "kdservice/corderdetailv2.h"
#include "kdservice/keyhash.h"
#include "kdservice/typemanager.h"
#include "trade.h"

namespace kdservice {

IData::IData() = default;
IData::~IData() = default;

quint64 IData::hashKey() const
{
    return hashOfKey(getKey());
}

COrderDetailV2::COrderDetailV2() = default;
COrderDetailV2::~COrderDetailV2() = default;
CDealDetailV2::CDealDetailV2() = default;
CDealDetailV2::~CDealDetailV2() = default;

bool FieldDes::getProperty(int number) const
{
    return number >= 0 && number < 32 && (properties >> number & 1u) != 0;
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

TypeManager::TypeManager() = default;
TypeManager::~TypeManager() = default;

TypeManager *TypeManager::instance()
{
    static TypeManager catalogue;
    return &catalogue;
}

TypeManager::FieldSet TypeManager::getAllFields(const std::vector<int> &metaIds, EVxTraderType) const
{
    FieldSet all;
    for (const int id : metaIds)
        if (id == Trade::metaId)
            for (const auto &entry : Trade::fields())
                all.insert(entry.second);
    return all;
}

QString TypeManager::getFieldChsNameByType(const FieldDes *field, EVxTraderType) const
{
    switch (field ? field->fieldId : 0) {
    case Trade::Code:
        return QStringLiteral("代码");
    case Trade::Price:
        return QStringLiteral("价格");
    case Trade::Quantity:
        return QStringLiteral("数量");
    default:
        return QString();
    }
}

bool TypeManager::getFieldVisibleByType(const FieldDes *field, EVxTraderType traderType) const
{
    return !getFieldChsNameByType(field, traderType).isEmpty();
}

QString TypeManager::getEnumItemName(const std::string &, int, EVxTraderType) const
{
    return QString();
}

boost::shared_ptr<IData> TypeManager::getLastIData(boost::shared_ptr<IData> record, const std::vector<int> &path) const
{
    for (const int id : path)
        record = record ? record->getIData(id) : nullptr;
    return record;
}

} // namespace kdservice
