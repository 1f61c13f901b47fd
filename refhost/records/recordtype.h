#pragma once

#include <cstdint>
#include <deque>
#include <vector>

#include "kdservice/idata.h"
#include "records/fielddef.h"
#include "refhostexport.h"

namespace refhost {

/// Where a field's value lies in the block of a record.
struct FieldSlot
{
    enum class Store : std::uint8_t
    {
        Long,
        Double,
        Int,
        Char,
        Bool,
        SharedText,
        OwnText,
        Nested
    };
    int fieldId = -1;
    std::uint32_t offset = 0;
    Store store = Store::Int;
};

/// A registered record type: the layout of its records and the descriptions of its fields. Unchanged once made, kept
/// for the life of the process; readable on every thread. Made by TypeCatalogue.
class REFHOST_API RecordType
{
public:
    explicit RecordType(const TypeDef &def);
    ~RecordType();
    RecordType(const RecordType &) = delete;
    RecordType &operator=(const RecordType &) = delete;

    int metaId() const { return definition.metaId; }
    RecordKind kind() const { return definition.kind; }
    const TypeDef &def() const { return definition; }
    /// Bytes that the values of one record take.
    std::uint32_t blockSize() const { return size; }
    const std::vector<FieldSlot> &fieldSlots() const { return slotList; }
    /// Null for an id that the type does not have. One look-up in a table, about 2 ns.
    const FieldSlot *slot(int fieldId) const
    {
        for (std::size_t at = place(fieldId);; at = (at + 1) & mask) {
            const std::int16_t index = table[at];
            if (index < 0)
                return nullptr;
            if (slotList[static_cast<std::size_t>(index)].fieldId == fieldId)
                return &slotList[static_cast<std::size_t>(index)];
        }
    }
    const kdservice::IData::FieldMap &fields() const { return fieldMap; }
    const kdservice::FieldDes *field(int fieldId) const;
    /// The line of the table for a field of this type; null for any other description.
    const FieldDef *fieldDef(const kdservice::FieldDes *field) const;

private:
    void addField(const FieldDef &def, int sequence);
    void layOut();
    void buildTable();
    std::size_t place(int fieldId) const
    {
        return static_cast<std::size_t>((static_cast<std::uint32_t>(fieldId) * 2654435769u) >> 8) & mask;
    }

    TypeDef definition;
    std::deque<kdservice::FieldDes> descriptions; ///< same order as definition.fields
    kdservice::IData::FieldMap fieldMap;
    std::vector<FieldSlot> slotList;
    std::vector<std::int16_t> table; ///< open addressing, at most half full; -1 for free
    std::size_t mask = 0;
    std::uint32_t size = 0;
};

} // namespace refhost
