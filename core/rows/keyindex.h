#pragma once

#include <QtCore/qglobal.h>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "rows/prefetch.h"
#include "rows/slotarray.h"
#include "rows/slotkey.h"

namespace core {

/// Which slot holds a key. The hash comes from the caller and must be a good one in all of its 64 bits; keys of the
/// same hash are told apart by their text.
///
/// An open table of hash and slot, in 256 parts by the hash, so that growing never stops the caller for more than a
/// part: under 0.2 ms at a million keys. About 15 bytes for each key beside its entry. An entry is a SlotKey, or
/// derived from it: what the caller keeps of a slot and needs whenever it has found the key lies beside the key then,
/// and comes with it into the processor's cache. Not thread-safe.
template <typename Entry = SlotKey>
class KeyIndex
{
public:
    static constexpr quint32 noSlot = 0xffffffffu;

    int size() const { return keyCount; }
    /// noSlot when the key is unknown.
    quint32 find(std::string_view key, quint64 hash) const
    {
        return findIf(hash, [&](quint32 slot) { return keyOf(slot) == key; });
    }
    /// @name Steps of find() for many keys at once, so that the processor waits for memory once instead of twice
    /// @{
    /// Has the processor fetch where the hash leads.
    void prefetch(quint64 hash) const
    {
        const Part &part = parts[partOf(hash)];
        if (part.used != 0)
            core::prefetch(&part.cells[homeOf(hash, part)]);
    }
    /// The slot to which it leads most likely, unchecked; noSlot when it surely leads nowhere.
    quint32 likely(quint64 hash) const;
    /// Has it fetch the entry of a slot, which likely() gave.
    void prefetchEntry(quint32 slot) const { core::prefetch(&entries[slot]); }
    /// @}
    /// A slot whose key has this hash, whichever key that is; noSlot when there is none.
    quint32 findHash(quint64 hash) const
    {
        return findIf(hash, [](quint32) { return true; });
    }
    /// The key must be unknown and the slot without a key. The rest of the entry stays as it is.
    void insert(std::string_view key, quint64 hash, quint32 slot);
    /// The slot must hold a key.
    void remove(quint32 slot);
    /// Valid until the key is removed.
    std::string_view keyOf(quint32 slot) const { return entries[slot].text(longTexts); }
    /// Of any slot that was ever in use.
    Entry &entry(quint32 slot) { return entries[slot]; }
    const Entry &entry(quint32 slot) const { return entries[slot]; }

    /// For tests: every key is found, and only where it is.
    bool checkConsistency() const;

private:
    static constexpr int partBits = 8;

    struct Cell
    {
        quint32 tag = 0; ///< a part of the hash, to pass over most other keys without looking them up
        quint32 slot = noSlot;
    };
    struct Part
    {
        std::vector<Cell> cells; ///< a power of two of them, at most two thirds in use
        quint32 used = 0;
    };

    static quint32 tagOf(quint64 hash) { return static_cast<quint32>(hash >> 24); }
    static std::size_t partOf(quint64 hash) { return static_cast<std::size_t>(hash >> (64 - partBits)); }
    static std::size_t homeOf(quint64 hash, const Part &part) { return hash & (part.cells.size() - 1); }
    template <typename Matches>
    quint32 findIf(quint64 hash, Matches matches) const;
    void place(Part &part, quint64 hash, quint32 slot);
    void grow(Part &part);

    std::array<Part, 1 << partBits> parts;
    SlotArray<Entry> entries;
    TextStore longTexts;
    int keyCount = 0;
};

template <typename Entry>
template <typename Matches>
quint32 KeyIndex<Entry>::findIf(quint64 hash, Matches matches) const
{
    const Part &part = parts[partOf(hash)];
    if (part.used == 0)
        return noSlot;
    const std::size_t mask = part.cells.size() - 1;
    for (std::size_t i = homeOf(hash, part); part.cells[i].slot != noSlot; i = (i + 1) & mask) {
        const Cell cell = part.cells[i];
        if (cell.tag == tagOf(hash) && entries[cell.slot].hash == hash && matches(cell.slot))
            return cell.slot;
    }
    return noSlot;
}

template <typename Entry>
quint32 KeyIndex<Entry>::likely(quint64 hash) const
{
    const Part &part = parts[partOf(hash)];
    if (part.used == 0)
        return noSlot;
    const std::size_t mask = part.cells.size() - 1;
    std::size_t i = homeOf(hash, part);
    while (part.cells[i].slot != noSlot && part.cells[i].tag != tagOf(hash))
        i = (i + 1) & mask;
    return part.cells[i].slot;
}

template <typename Entry>
void KeyIndex<Entry>::insert(std::string_view key, quint64 hash, quint32 slot)
{
    entries.ensure(slot);
    entries[slot].hash = hash;
    entries[slot].setText(key, longTexts);
    Part &part = parts[partOf(hash)];
    if ((part.used + 1) * 3 > part.cells.size() * 2)
        grow(part);
    place(part, hash, slot);
    ++part.used;
    ++keyCount;
}

template <typename Entry>
void KeyIndex<Entry>::place(Part &part, quint64 hash, quint32 slot)
{
    const std::size_t mask = part.cells.size() - 1;
    std::size_t i = homeOf(hash, part);
    while (part.cells[i].slot != noSlot)
        i = (i + 1) & mask;
    part.cells[i] = {tagOf(hash), slot};
}

template <typename Entry>
void KeyIndex<Entry>::grow(Part &part)
{
    constexpr std::size_t firstSize = 8;
    const std::vector<Cell> old = std::exchange(part.cells, {});
    part.cells.resize(old.empty() ? firstSize : old.size() * 2);
    for (const Cell &cell : old) {
        if (cell.slot != noSlot)
            place(part, entries[cell.slot].hash, cell.slot);
    }
}

template <typename Entry>
void KeyIndex<Entry>::remove(quint32 slot)
{
    const quint64 hash = entries[slot].hash;
    Part &part = parts[partOf(hash)];
    const std::size_t mask = part.cells.size() - 1;
    std::size_t hole = homeOf(hash, part);
    while (part.cells[hole].slot != slot)
        hole = (hole + 1) & mask;
    // Cells behind the hole move up unless that would put them in front of their home.
    for (std::size_t i = (hole + 1) & mask; part.cells[i].slot != noSlot; i = (i + 1) & mask) {
        const std::size_t home = homeOf(entries[part.cells[i].slot].hash, part);
        if (((i - home) & mask) >= ((i - hole) & mask)) {
            part.cells[hole] = part.cells[i];
            hole = i;
        }
    }
    part.cells[hole] = Cell();
    --part.used;
    --keyCount;
    entries[slot].clearText(longTexts);
}

template <typename Entry>
bool KeyIndex<Entry>::checkConsistency() const
{
    int total = 0;
    for (const Part &part : parts) {
        quint32 used = 0;
        for (const Cell &cell : part.cells) {
            if (cell.slot == noSlot)
                continue;
            ++used;
            const quint64 hash = entries[cell.slot].hash;
            if (&parts[partOf(hash)] != &part || find(keyOf(cell.slot), hash) != cell.slot)
                return false;
        }
        if (used != part.used)
            return false;
        total += static_cast<int>(used);
    }
    return total == keyCount;
}

} // namespace core
