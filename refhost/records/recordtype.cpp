#include "records/recordtype.h"

#include <algorithm>

namespace refhost {

namespace {

using Store = FieldSlot::Store;

bool isStorable(const FieldDef &def)
{
    return def.type >= kdservice::ExtBool && def.type <= kdservice::ExtData;
}

Store storeOf(const FieldDef &def)
{
    switch (def.type) {
    case kdservice::ExtBool:
        return Store::Bool;
    case kdservice::ExtInt:
        return Store::Int;
    case kdservice::ExtLong:
        return Store::Long;
    case kdservice::ExtDouble:
        return Store::Double;
    case kdservice::ExtChar:
        return Store::Char;
    case kdservice::ExtData:
        return Store::Nested;
    default:
        return def.store == TextStore::Shared ? Store::SharedText : Store::OwnText;
    }
}

std::uint32_t widthOf(Store store)
{
    switch (store) {
    case Store::Nested:
        return sizeof(boost::shared_ptr<kdservice::IData>);
    case Store::Long:
    case Store::Double:
        return 8;
    case Store::SharedText:
    case Store::OwnText:
        return sizeof(void *);
    case Store::Int:
        return 4;
    default:
        return 1;
    }
}

} // namespace

RecordType::RecordType(const TypeDef &def) : definition(def)
{
    definition.fields.clear();
    int line = 0;
    for (const FieldDef &field : def.fields) {
        line += 10;
        if (isStorable(field) && fieldMap.count(field.id) == 0)
            addField(field, field.sequence >= 0 ? field.sequence : line);
    }
    layOut();
    buildTable();
}

RecordType::~RecordType() = default;

void RecordType::addField(const FieldDef &def, int sequence)
{
    definition.fields.push_back(def);
    kdservice::FieldDes description;
    description.fieldId = def.id;
    description.dataType = def.type;
    description.precision = static_cast<signed char>(std::clamp(def.precision, -128, 127));
    description.formatFlags = utils::CFlags<utils::EFormatNumberFlag>(def.format);
    description.sequence = sequence;
    description.properties = def.properties;
    description.funcs = def.funcs;
    description.name = def.name;
    descriptions.push_back(std::move(description));
    fieldMap[def.id] = &descriptions.back();
}

void RecordType::layOut()
{
    for (const FieldDef &def : definition.fields)
        slotList.push_back({def.id, 0, storeOf(def)});
    // Widest first, so that no value needs padding in front of it.
    std::stable_sort(slotList.begin(), slotList.end(),
                     [](const FieldSlot &a, const FieldSlot &b) { return widthOf(a.store) > widthOf(b.store); });
    for (FieldSlot &slot : slotList) {
        slot.offset = size;
        size += widthOf(slot.store);
    }
}

void RecordType::buildTable()
{
    std::size_t places = 4;
    while (places < slotList.size() * 2 + 1)
        places *= 2;
    mask = places - 1;
    table.assign(places, -1);
    for (std::size_t index = 0; index < slotList.size(); ++index) {
        std::size_t at = place(slotList[index].fieldId);
        while (table[at] >= 0)
            at = (at + 1) & mask;
        table[at] = static_cast<std::int16_t>(index);
    }
}

const kdservice::FieldDes *RecordType::field(int fieldId) const
{
    const auto found = fieldMap.find(fieldId);
    return found == fieldMap.end() ? nullptr : found->second;
}

const FieldDef *RecordType::fieldDef(const kdservice::FieldDes *field) const
{
    for (std::size_t index = 0; index < descriptions.size(); ++index)
        if (&descriptions[index] == field)
            return &definition.fields[index];
    return nullptr;
}

} // namespace refhost
