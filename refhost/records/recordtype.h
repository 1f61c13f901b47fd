#pragma once

#include <QtCore/QString>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "kdservice/evxtradertype.h"
#include "kdservice/fielddes.h"
#include "kdservice/idata.h"
#include "refhostexport.h"

namespace refhost {

/// Bits of FieldDes::properties.
enum FieldProperty : unsigned int
{
    Sum = 1u << 1, ///< summed in the statistics row
    AlignLeft = 1u << 2,
    AlignCentre = 1u << 3,
    AlignRight = 1u << 4,
    NoSumText = 1u << 5,   ///< no text in the statistics row
    Flash = 1u << 6,       ///< the cell flashes when it changes
    SumFromZero = 1u << 7, ///< a negative sum shows as zero
    Filterable = 1u << 8,
    GroupedSum = 1u << 10, ///< the sum shows in groups of three digits
    Bold = 1u << 11
};

/// Sets of trader types, as bits of kdservice::EVxTraderType.
enum TraderSet : int
{
    Nobody = 0,
    StockTraders = kdservice::TraderStock | kdservice::TraderCredit,
    FutureTraders = kdservice::TraderFuture,
    OptionTraders = kdservice::TraderOption | kdservice::TraderStockOption,
    DerivativeTraders = FutureTraders | OptionTraders,
    Everybody = -1 ///< also traders of types that the catalogue does not know
};

/// How a field of text is kept.
enum class TextStore
{
    Own,   ///< in the record: texts that differ from record to record
    Shared ///< once for all records, for the life of the process: codes, names, accounts
};

/// One line of a type's table.
struct FieldDef
{
    int id = -1;
    kdservice::EXT_DATA_TYPE type = kdservice::ExtInvalid;
    const char *name = ""; ///< UTF-8, what users read
    int precision = 0;     ///< decimal places
    unsigned int properties = 0;
    int visibleFor = Everybody; ///< TraderSet; Nobody for a field that is never a column
    int format = 0;             ///< utils::EFormatNumberFlag bits
    kdservice::FieldDes::FuncTable funcs = {};
    std::vector<std::pair<int, const char *>> namesFor =
        {}; ///< other names for sets of traders; the first that fits counts
    TextStore store = TextStore::Own;
    int nestedMeta = -1;                 ///< type of the nested record, for ExtData
    std::vector<int> nestedColumns = {}; ///< which of its fields are columns here too
    int sequence = -1;                   ///< place among the columns; -1: ten times the line number from 1
};

enum class RecordKind
{
    Plain,
    Order, ///< made as kdservice::COrderDetailV2
    Deal   ///< made as kdservice::CDealDetailV2
};

/// What a record type is made of. The three fields tell orders and deals where their code, status and sequence are;
/// -1 for none.
struct TypeDef
{
    int metaId = -1;
    RecordKind kind = RecordKind::Plain;
    std::vector<FieldDef> fields = {};
    int codeField = -1;
    int statusField = -1;
    int sequenceField = -1;
};

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
