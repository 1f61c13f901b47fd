#pragma once

#include <map>
#include <string>

#include "hostexport.h"
#include "kdservice/edisplayfunc.h"
#include "kdservice/extdatatype.h"
#include "utils/eformatnumberflag.h"

namespace kdservice {

/// Describes one field of a record type. Owned by the catalogue, unchanged once registered, valid for the life of the
/// process; readable on every thread.
struct HOST_API FieldDes
{
    /// Display functions: EDisplayFunc to its argument.
    using FuncTable = std::map<int, std::string>;
    using iterator = FuncTable::const_iterator;

    int fieldId = -1;
    EXT_DATA_TYPE dataType = ExtInvalid;
    signed char precision = 0; ///< decimal places
    utils::CFlags<utils::EFormatNumberFlag> formatFlags;
    int sequence = 0;            ///< place among the columns of a table; ties are ordered by fieldId
    unsigned int properties = 0; ///< bit n is property n
    FuncTable funcs;
    std::string name; ///< for messages; what users read comes from the catalogue

    /// Properties the library reads: 1 summed in the statistics row, 2 aligned left, 3 centred, 4 aligned right,
    /// 5 no text in the statistics row for doubles, 6 flashes when it changes, 7 negative sums shown as zero,
    /// 8 filterable, 10 sums with the grouped formatter, 11 bold. False for numbers outside 0..31.
    bool getProperty(int number) const;
    /// Whether the display-function table has an entry; `found` then points at it, otherwise it is left alone.
    bool findFunc(int func, iterator &found) const;

    /// Column order.
    struct HOST_API classCompare
    {
        bool operator()(const FieldDes *a, const FieldDes *b) const;
    };
};

} // namespace kdservice
