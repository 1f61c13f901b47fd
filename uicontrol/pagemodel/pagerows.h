#pragma once

#include <boost/shared_ptr.hpp>
#include <string>
#include <vector>

#include "pagemodel/chpfpagedata.h"
#include "rows/keyindex.h"
#include "rows/slotarray.h"

namespace kdservice {
class CDealDetailV2;
class COrderDetailV2;
} // namespace kdservice

namespace KV {

/// What a comparison needs of one record, taken when the record was handed in: the order of the lists rests on it, and
/// not on what the host does to the record afterwards.
struct PageSortValue
{
    enum class State : unsigned char
    {
        Missing, ///< the record does not have the column's field
        Empty,   ///< it has no value there
        Integer,
        Real,
        Text ///< in PageRows::text
    };

    State state = State::Missing;
    union {
        qint64 integer = 0;
        double real;
    };
};

/// One record of the model.
struct PageRow
{
    boost::shared_ptr<CHpfPageData> page;
    const kdservice::IData *record = nullptr;         ///< the page record's, kept by it
    const kdservice::COrderDetailV2 *order = nullptr; ///< the record as an order, null when it is none
    const kdservice::CDealDetailV2 *deal = nullptr;
    int entrySequence = 0; ///< breaks ties among orders and among deals
    PageSortValue sortValue;
};

/// Every record of a paged model under a slot number that it keeps until it is removed, and the index of keys. Two keys
/// of the same 64-bit hash are told apart by their text. Not thread-safe.
class PageRows
{
public:
    static constexpr quint32 noSlot = core::KeyIndex::noSlot;

    int size() const { return index.size(); }
    quint32 find(const std::string &key, quint64 hash) const { return index.find(key, hash); }
    /// A slot of this hash, whichever key it has; for callers that have nothing but the hash.
    quint32 findHash(quint64 hash) const;
    /// The slot that holds the record's key, or noSlot.
    quint32 find(const kdservice::IData &record) const;
    /// The key must be unknown.
    quint32 add(const std::string &key, quint64 hash, const boost::shared_ptr<CHpfPageData> &page);
    /// Puts another record of the same key into its slot.
    void replace(quint32 slot, const boost::shared_ptr<CHpfPageData> &page);
    void remove(quint32 slot);

    PageRow &operator[](quint32 slot) { return rows[slot]; }
    const PageRow &operator[](quint32 slot) const { return rows[slot]; }
    std::string key(quint32 slot) const { return std::string(index.keyOf(slot)); }
    std::string_view keyView(quint32 slot) const { return index.keyOf(slot); }

    /// The text of a slot whose sort value is a text.
    const std::string &text(quint32 slot) const { return texts[slot]; }
    void setText(quint32 slot, std::string text);
    void clearTexts() { texts = core::SlotArray<std::string>(); }

private:
    void take(quint32 slot, const boost::shared_ptr<CHpfPageData> &page);

    core::KeyIndex index;
    core::SlotArray<PageRow> rows;
    core::SlotArray<std::string> texts; ///< only while the sort column is a text
    std::vector<quint32> freeSlots;
    quint32 nextSlot = 0;
};

} // namespace KV
