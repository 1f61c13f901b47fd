#pragma once

#include <QtCore/QMap>
#include <vector>

#include "model/chpfdatacolumnproperty.h"

namespace KV {

/// Where the statistic values of a row stand: one slot for every column with statistics. Made once per column set and
/// shared by all rows. Unchanged once made; any thread.
class CStatLayout
{
public:
    enum class Kind : unsigned char
    {
        Bool,
        Int,
        Long,
        Double
    };
    struct Slot
    {
        int column = -1;
        Kind kind = Kind::Double;
    };
    struct Field
    {
        int fieldId = -1;
        int slot = -1;
    };

    CStatLayout(const QMap<int, int> &fieldColumnMap, const QMap<int, CHpfDataColumnProperty> &properties);

    std::size_t size() const { return slotList.size(); }
    const Slot &slot(int index) const { return slotList[static_cast<std::size_t>(index)]; }
    /// -1 for a column without statistics.
    int slotOfColumn(int column) const;
    /// The record fields that fill slots, ascending by id.
    const std::vector<Field> &fields() const { return fieldList; }

private:
    std::vector<Slot> slotList;
    std::vector<Field> fieldList;
};

} // namespace KV
