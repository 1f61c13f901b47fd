#pragma once

#include <QtCore/qglobal.h>
#include <string_view>
#include <vector>

#include "rows/keyindex.h"
#include "rows/prefetch.h"
#include "rows/slotarray.h"

namespace core {

/// Which rows there are: their keys, and for each the slot under which everything else about it is kept. Slots are used
/// again; an id, which names a slot and who holds it, is not. Not thread-safe.
class RowSlots
{
public:
    static constexpr quint32 noSlot = KeyIndex::noSlot;

    /// Ids of another object that went up to `lastGeneration` stay unknown here.
    explicit RowSlots(quint32 lastGeneration = 0) : generation(lastGeneration) {}

    int size() const { return index.size(); }
    /// Slots from 0 on that were ever in use.
    quint32 limit() const { return used; }
    quint32 lastGeneration() const { return generation; }

    quint32 find(std::string_view key, quint64 hash) const { return index.find(key, hash); }
    /// @name Steps of find() for many keys, see KeyIndex
    /// @{
    void prefetch(quint64 hash) const { index.prefetch(hash); }
    quint32 likely(quint64 hash) const { return index.likely(hash); }
    void prefetchRow(quint32 slot) const
    {
        index.prefetchKey(slot);
        core::prefetch(&rows[slot]);
    }
    void prefetchText(quint32 slot) const { index.prefetchText(slot); }
    /// @}
    /// The key must be unknown.
    quint32 add(std::string_view key, quint64 hash);
    void remove(quint32 slot);
    /// The row of this slot was handed in again.
    void touch(quint32 slot) { ++rows[slot].version; }

    bool isLive(quint32 slot) const { return slot < used && rows[slot].generation != 0; }
    quint32 version(quint32 slot) const { return rows[slot].version; }
    /// Never 0 for a live slot.
    quint64 idOf(quint32 slot) const { return static_cast<quint64>(rows[slot].generation) << 32 | slot; }
    /// noSlot when the row is gone.
    quint32 slotOf(quint64 id) const;

    bool checkConsistency() const;

private:
    struct Row
    {
        quint32 generation = 0; ///< which addition it came with; 0 for a free slot
        quint32 version = 0;
    };

    KeyIndex index;
    SlotArray<Row> rows;
    std::vector<quint32> freeSlots;
    quint32 used = 0;
    quint32 generation;
};

} // namespace core
