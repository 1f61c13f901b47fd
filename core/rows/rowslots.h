#pragma once

#include <QtCore/qglobal.h>
#include <string_view>
#include <vector>

#include "rows/keyindex.h"

namespace core {

/// Which rows there are: their keys, and for each the slot under which everything else about it is kept, beginning with
/// a `Row` of the caller's. Slots are used again; an id, which names a slot and who holds it, is not. What is read when
/// a row changes, from its key on, stands in one line of the processor's cache. Not thread-safe.
template <typename Row>
class RowSlots
{
public:
    static constexpr quint32 noSlot = KeyIndex<>::noSlot;

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
    void prefetchRow(quint32 slot) const { index.prefetchEntry(slot); }
    /// @}
    /// The key must be unknown.
    quint32 add(std::string_view key, quint64 hash);
    /// What the caller kept stays in the slot until it is written over.
    void remove(quint32 slot);
    /// The row of this slot was handed in again.
    void touch(quint32 slot) { ++index.entry(slot).version; }

    /// Of any slot below the limit.
    Row &row(quint32 slot) { return index.entry(slot).row; }
    const Row &row(quint32 slot) const { return index.entry(slot).row; }

    bool isLive(quint32 slot) const { return slot < used && index.entry(slot).generation != 0; }
    quint32 version(quint32 slot) const { return index.entry(slot).version; }
    /// Never 0 for a live slot.
    quint64 idOf(quint32 slot) const { return static_cast<quint64>(index.entry(slot).generation) << 32 | slot; }
    /// noSlot when the row is gone.
    quint32 slotOf(quint64 id) const;

    bool checkConsistency() const;

private:
    static constexpr std::size_t cacheLine = 64;

    struct alignas(cacheLine) Entry : SlotKey
    {
        quint32 generation = 0; ///< which addition it came with; 0 for a free slot
        quint32 version = 0;
        Row row{};
    };

    KeyIndex<Entry> index;
    std::vector<quint32> freeSlots;
    quint32 used = 0;
    quint32 generation;
};

template <typename Row>
quint32 RowSlots<Row>::add(std::string_view key, quint64 hash)
{
    quint32 slot = used;
    if (freeSlots.empty()) {
        ++used;
    } else {
        slot = freeSlots.back();
        freeSlots.pop_back();
    }
    if (++generation == 0)
        ++generation;
    index.insert(key, hash, slot);
    index.entry(slot).generation = generation;
    return slot;
}

template <typename Row>
void RowSlots<Row>::remove(quint32 slot)
{
    index.remove(slot);
    index.entry(slot).generation = 0;
    freeSlots.push_back(slot);
}

template <typename Row>
quint32 RowSlots<Row>::slotOf(quint64 id) const
{
    const auto slot = static_cast<quint32>(id);
    return id >> 32 != 0 && slot < used && idOf(slot) == id ? slot : noSlot;
}

template <typename Row>
bool RowSlots<Row>::checkConsistency() const
{
    quint32 live = 0;
    for (quint32 slot = 0; slot < used; ++slot)
        live += isLive(slot) ? 1 : 0;
    return live == static_cast<quint32>(size()) && live + freeSlots.size() == used && index.checkConsistency();
}

} // namespace core
