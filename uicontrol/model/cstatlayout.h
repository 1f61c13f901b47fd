#pragma once

#include <QtCore/QMap>
#include <array>
#include <atomic>
#include <boost/thread/mutex.hpp>
#include <memory>
#include <vector>

#include "kdservice/idata.h"
#include "model/chpfdatacolumnproperty.h"
#include "model/cstatwalk.h"

namespace KV {

/// Where the statistic values of a row stand: one slot for every column with statistics. Made once per column set and
/// shared by all rows. Unchanged once made, but for the walks, which are guarded; any thread.
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
    ~CStatLayout();

    std::size_t size() const { return slotList.size(); }
    const Slot &slot(int index) const { return slotList[static_cast<std::size_t>(index)]; }
    /// -1 for a column without statistics.
    int slotOfColumn(int column) const;
    /// The record fields that fill slots, ascending by id.
    const std::vector<Field> &fields() const { return fieldList; }

    /// What there is to read of the records of one type, which have one map of fields. Valid as long as the layout.
    /// `own` holds the answer where types by the dozen meet in one table.
    const CStatWalk &walkOf(const kdservice::IData::FieldMap &fields, CStatWalk &own) const;

private:
    static constexpr std::size_t knownWalks = 8;

    const CStatWalk *knownWalk(const kdservice::IData::FieldMap &fields) const;

    std::vector<Slot> slotList;
    std::vector<Field> fieldList;

    /// From the front; each is there for good.
    mutable std::array<std::atomic<const CStatWalk *>, knownWalks> walks{};
    mutable boost::mutex mutex; ///< held to add one
};

} // namespace KV
