#include "kdservice/typemanager.h"

#include <algorithm>

#include "kdservice/idata.h"
#include "records/standardtypes.h"
#include "records/typecatalogue.h"

namespace kdservice {

namespace {

using refhost::FieldDef;
using refhost::RecordType;
using refhost::TypeCatalogue;

void addColumn(TypeManager::FieldSet &columns, const RecordType &type, const FieldDef &def, EVxTraderType traderType)
{
    if (!refhost::traderFits(def.visibleFor, traderType))
        return;
    const bool known = std::any_of(columns.begin(), columns.end(),
                                   [&def](const FieldDes *column) { return column->fieldId == def.id; });
    if (!known)
        columns.insert(type.fields().at(def.id));
}

void addNestedColumns(TypeManager::FieldSet &columns, const FieldDef &outer, EVxTraderType traderType)
{
    const RecordType *nested = TypeCatalogue::instance().findType(outer.nestedMeta);
    if (nested == nullptr || !refhost::traderFits(outer.visibleFor, traderType))
        return;
    for (const int id : outer.nestedColumns)
        if (const FieldDef *def = nested->fieldDef(nested->field(id)))
            addColumn(columns, *nested, *def, traderType);
}

} // namespace

TypeManager::TypeManager() = default;
TypeManager::~TypeManager() = default;

TypeManager *TypeManager::instance()
{
    static TypeManager manager;
    return &manager;
}

TypeManager::FieldSet TypeManager::getAllFields(const std::vector<int> &metaIds, EVxTraderType traderType) const
{
    FieldSet columns;
    for (const int metaId : metaIds) {
        const RecordType *type = TypeCatalogue::instance().findType(metaId);
        if (type == nullptr)
            continue;
        for (const FieldDef &def : type->def().fields) {
            if (def.type == ExtData)
                addNestedColumns(columns, def, traderType);
            else
                addColumn(columns, *type, def, traderType);
        }
    }
    return columns;
}

QString TypeManager::getFieldChsNameByType(const FieldDes *field, EVxTraderType traderType) const
{
    const FieldDef *def = TypeCatalogue::instance().findField(field).def;
    if (def == nullptr)
        return {};
    for (const auto &[traders, name] : def->namesFor)
        if (refhost::traderFits(traders, traderType))
            return QString::fromUtf8(name);
    return QString::fromUtf8(def->name);
}

bool TypeManager::getFieldVisibleByType(const FieldDes *field, EVxTraderType traderType) const
{
    const FieldDef *def = TypeCatalogue::instance().findField(field).def;
    return def != nullptr && refhost::traderFits(def->visibleFor, traderType);
}

QString TypeManager::getEnumItemName(const std::string &enumName, int value, EVxTraderType traderType) const
{
    return TypeCatalogue::instance().enumText(enumName, value, traderType);
}

boost::shared_ptr<IData> TypeManager::getLastIData(boost::shared_ptr<IData> record, const std::vector<int> &path) const
{
    for (const int id : path) {
        if (record == nullptr)
            return {};
        record = record->getIData(id);
    }
    return record;
}

} // namespace kdservice
