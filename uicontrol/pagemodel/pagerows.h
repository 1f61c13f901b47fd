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

/// One record of the model.
struct PageRow
{
    boost::shared_ptr<CHpfPageData> page;
    boost::shared_ptr<kdservice::IData> record; ///< as it was handed in: the host may put another one into the page
    const kdservice::COrderDetailV2 *order = nullptr; ///< the record as an order, null when it is none
    const kdservice::CDealDetailV2 *deal = nullptr;
    int entrySequence = 0; ///< breaks ties among orders and among deals
};

/// Every record of a paged model under a slot number that it keeps until it is removed, and the index of keys. Two keys
/// of the same 64-bit hash are told apart by their text. Not thread-safe.
class PageRows
{
public:
    static constexpr quint32 noSlot = core::KeyIndex<>::noSlot;

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
    /// Every slot in use is below; those that are not in use have no record.
    quint32 slotLimit() const { return nextSlot; }

private:
    void take(quint32 slot, const boost::shared_ptr<CHpfPageData> &page);

    core::KeyIndex<> index;
    core::SlotArray<PageRow> rows;
    std::vector<quint32> freeSlots;
    quint32 nextSlot = 0;
};

} // namespace KV
