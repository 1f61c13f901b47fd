#pragma once

#include <QtCore/qglobal.h>
#include <array>
#include <string_view>
#include <vector>

#include "rows/slotarray.h"
#include "rows/textstore.h"

namespace core {

/// Which slot holds a key. The hash comes from the caller and must be a good one in all of its 64 bits; keys of the
/// same hash are told apart by their text.
///
/// An open table of hash and slot, in 256 parts by the hash, so that growing never stops the caller for more than a
/// part: under 0.2 ms at a million keys. About 35 bytes for each key beside its text. Not thread-safe.
class KeyIndex
{
public:
    static constexpr quint32 noSlot = 0xffffffffu;

    int size() const { return keyCount; }
    /// noSlot when the key is unknown.
    quint32 find(std::string_view key, quint64 hash) const;
    /// @name Steps of find() for many keys at once, so that the processor waits for memory once instead of thrice
    /// @{
    /// Has the processor fetch where the hash leads.
    void prefetch(quint64 hash) const;
    /// The slot to which it leads most likely, unchecked; noSlot when it surely leads nowhere.
    quint32 likely(quint64 hash) const;
    /// Has it fetch the hash of a slot's key, which likely() gave; fetched, then the key's text.
    void prefetchKey(quint32 slot) const;
    void prefetchText(quint32 slot) const;
    /// @}
    /// A slot whose key has this hash, whichever key that is; noSlot when there is none.
    quint32 findHash(quint64 hash) const;
    /// The key must be unknown and the slot without a key.
    void insert(std::string_view key, quint64 hash, quint32 slot);
    /// The slot must hold a key.
    void remove(quint32 slot);
    /// Valid until the key is removed.
    std::string_view keyOf(quint32 slot) const { return texts.text(keys[slot].text); }

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
    struct Key
    {
        quint64 hash = 0;
        TextStore::Ref text;
    };

    static quint32 tagOf(quint64 hash) { return static_cast<quint32>(hash >> 24); }
    static std::size_t partOf(quint64 hash) { return static_cast<std::size_t>(hash >> (64 - partBits)); }
    static std::size_t homeOf(quint64 hash, const Part &part) { return hash & (part.cells.size() - 1); }
    template <typename Matches>
    quint32 findIf(quint64 hash, Matches matches) const;
    void place(Part &part, quint64 hash, quint32 slot);
    void grow(Part &part);

    std::array<Part, 1 << partBits> parts;
    SlotArray<Key> keys;
    TextStore texts;
    int keyCount = 0;
};

} // namespace core
