#pragma once

#include <string>
#include <utility>
#include <vector>

#include "kdservice/evxtradertype.h"
#include "kdservice/fielddes.h"

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
    GroupedSum = 1u << 10, ///< cells and sum group their digits by spaces, where the user wants groups
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

} // namespace refhost
