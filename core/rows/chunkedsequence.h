#pragma once

#include <QtCore/qglobal.h>
#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <vector>

#include "rows/prefetch.h"
#include "rows/runningcounts.h"
#include "rows/slotarray.h"

namespace core {

/// A long sequence that changes in the middle: slots in an order, each slot at most once, each with a value to search
/// by and a mark. The marked entries form a sequence of their own with its own indexes (the rows that a filter lets
/// pass).
///
/// Entries lie in chunks of at most 256, so that an insertion or a removal moves a few kilobytes whatever the length;
/// an index finds its entry and a slot finds its index in logarithmic time. A million entries take 16 to 25 MB. How the
/// entries are ordered is the caller's business: insert() takes an index, insertSorted() a comparison. Indexes and
/// slots must be valid where nothing else is said. Not thread-safe.
class ChunkedSequence
{
public:
    struct Entry
    {
        quint64 value = 0;
        quint32 slot = 0;
        bool marked = false;
    };

    ChunkedSequence();
    ~ChunkedSequence();
    ChunkedSequence(ChunkedSequence &&) noexcept;
    ChunkedSequence &operator=(ChunkedSequence &&) noexcept;

    int size() const { return counts.total(); }
    int markedCount() const { return markedCounts.total(); }

    Entry at(int index) const;
    Entry markedAt(int index) const;
    bool contains(quint32 slot) const { return slot < homes.size() && homes[slot] != noChunk; }
    /// Reads slots at indexes of which many are near each other, as in a bisection. Valid until the sequence changes.
    class Reader
    {
    public:
        explicit Reader(const ChunkedSequence &readSequence) : sequence(readSequence) {}
        quint32 slotAt(int index)
        {
            if (index < first || index >= end)
                enter(index);
            return slots[index - first];
        }

    private:
        void enter(int index);

        const ChunkedSequence &sequence;
        const quint32 *slots = nullptr; ///< of the chunk that was read last, which holds the indexes [first, end)
        int first = 0;
        int end = 0;
    };

    /// The slot's index, -1 when it is not in the sequence.
    int indexOf(quint32 slot) const;
    /// The slot's index among the marked entries, -1 when it is not one of them.
    int markedIndexOf(quint32 slot) const;

    /// Has the processor fetch in which chunk the slot is; fetched, prefetchChunk() has it fetch what a search in that
    /// chunk reads first. Any slot.
    void prefetch(quint32 slot) const
    {
        if (slot < homes.size())
            core::prefetch(&homes[slot]);
    }
    void prefetchChunk(quint32 slot) const
    {
        if (contains(slot))
            core::prefetch(&chunks[homes[slot]]->values[capacity / 2]);
    }

    /// Calls visit(entry) for `count` entries from `first` on, or for marked ones; fewer at the end.
    template <typename Visit>
    void forEach(int first, int count, Visit visit) const;
    template <typename Visit>
    void forEachMarked(int first, int count, Visit visit) const;
    /// Every slot in order, or every marked one: about a nanosecond for each.
    void copySlots(std::vector<quint32> &slots) const;
    void copyMarkedSlots(std::vector<quint32> &slots) const;

    /// Puts an entry in front of the present entry at `index`; size() appends.
    void insert(int index, const Entry &entry);
    void append(const Entry &entry) { insertAt(appendPlace(), entry); }
    /// Puts an entry behind those of smaller value and behind those of the same value for which isBefore(slot) holds.
    /// The sequence must be in this order.
    template <typename IsBefore>
    void insertSorted(const Entry &entry, IsBefore isBefore);
    void eraseAt(int index) { eraseAt(placeOf(counts.find(index))); }
    /// Nothing when the slot is not in the sequence.
    void erase(quint32 slot);
    /// The same in a sequence that is in the order of its values, where the slot's one finds it sooner.
    void eraseSorted(quint32 slot, quint64 value);
    void setMarked(quint32 slot, bool marked);
    void clear();

    /// Replaces everything by `size` entries, entryAt(i) giving the i-th: about 10 ns for each. Chunks are left with
    /// room. False, and empty, when called off.
    template <typename EntryAt>
    bool assign(int size, EntryAt entryAt, const std::atomic<bool> *cancelled = nullptr);

    /// For tests: chunks, counts, homes and starts agree.
    bool checkConsistency() const;

private:
    static constexpr int capacity = 256;
    static constexpr int assignedFill = 224; ///< of a chunk that is filled at once
    static constexpr int mergeBelow = 64;
    static constexpr int mergedAtMost = 192;
    static constexpr quint32 noChunk = 0;

    struct Chunk
    {
        std::array<quint64, capacity> values;
        std::array<quint32, capacity> slots;
        std::array<quint64, capacity / 64> marks{};
        int count = 0;
        int markedCount = 0;

        void insert(int offset, const Entry &entry);
        void append(const Entry &entry);
        void erase(int offset);
        bool isMarked(int offset) const;
        void setMarked(int offset, bool marked);
        int marksBefore(int offset) const;
        int offsetOfMark(int markIndex) const;
        int offsetOf(quint32 slot) const;
        int offsetOf(quint32 slot, quint64 value) const;
        Entry entryAt(int offset) const;
    };

    /// What a search reads first, side by side in memory.
    struct Top
    {
        quint64 firstValue;
        quint32 firstSlot;
        quint32 chunk; ///< number of the chunk, from 1
    };

    struct Place
    {
        int ordinal;
        int offset;
    };

    Chunk &chunkAt(int ordinal) { return *chunks[tops[static_cast<std::size_t>(ordinal)].chunk]; }
    const Chunk &chunkAt(int ordinal) const { return *chunks[tops[static_cast<std::size_t>(ordinal)].chunk]; }
    static Place placeOf(RunningCounts::Place place) { return {place.ordinal, place.offset}; }
    Place placeOf(quint32 slot) const;
    Place appendPlace() const;

    void insertAt(Place place, const Entry &entry);
    void eraseAt(Place place);
    Place makeRoom(Place place);
    void insertChunk(int ordinal);
    void removeChunk(int ordinal);
    void moveTail(int from, int offset, int to);
    void mergeSmall(int ordinal);
    void refreshTop(int ordinal);
    void renumber(int firstOrdinal);

    std::vector<std::unique_ptr<Chunk>> chunks; ///< by number; 0 stays empty
    std::vector<int> ordinals;                  ///< by number: where the chunk stands
    std::vector<quint32> freeNumbers;
    std::vector<Top> tops; ///< in order
    RunningCounts counts;
    RunningCounts markedCounts;
    SlotArray<quint32> homes; ///< number of the chunk that holds a slot
};

template <typename Visit>
void ChunkedSequence::forEach(int first, int count, Visit visit) const
{
    if (first >= size())
        return;
    Place place = placeOf(counts.find(first));
    for (; count > 0 && place.ordinal < static_cast<int>(tops.size()); ++place.ordinal, place.offset = 0) {
        const Chunk &chunk = chunkAt(place.ordinal);
        for (; count > 0 && place.offset < chunk.count; ++place.offset, --count)
            visit(chunk.entryAt(place.offset));
    }
}

template <typename Visit>
void ChunkedSequence::forEachMarked(int first, int count, Visit visit) const
{
    if (first >= markedCount())
        return;
    Place place = placeOf(markedCounts.find(first));
    place.offset = chunkAt(place.ordinal).offsetOfMark(place.offset);
    for (; count > 0 && place.ordinal < static_cast<int>(tops.size()); ++place.ordinal, place.offset = 0) {
        const Chunk &chunk = chunkAt(place.ordinal);
        for (; count > 0 && place.offset < chunk.count; ++place.offset) {
            if (!chunk.isMarked(place.offset))
                continue;
            visit(chunk.entryAt(place.offset));
            --count;
        }
    }
}

template <typename IsBefore>
void ChunkedSequence::insertSorted(const Entry &entry, IsBefore isBefore)
{
    const auto goesBefore = [&](quint64 value, quint32 slot) {
        return value < entry.value || (value == entry.value && isBefore(slot));
    };
    const auto behind = std::partition_point(tops.begin(), tops.end(),
                                             [&](const Top &top) { return goesBefore(top.firstValue, top.firstSlot); });
    if (behind == tops.begin()) {
        insertAt({0, 0}, entry);
        return;
    }
    const int ordinal = static_cast<int>(behind - tops.begin()) - 1;
    const Chunk &chunk = chunkAt(ordinal);
    const quint64 *const values = chunk.values.data();
    int offset = static_cast<int>(std::lower_bound(values, values + chunk.count, entry.value) - values);
    int last = static_cast<int>(std::upper_bound(values + offset, values + chunk.count, entry.value) - values);
    while (offset < last) {
        const int middle = (offset + last) / 2;
        if (isBefore(chunk.slots[static_cast<std::size_t>(middle)]))
            offset = middle + 1;
        else
            last = middle;
    }
    insertAt({ordinal, offset}, entry);
}

template <typename EntryAt>
bool ChunkedSequence::assign(int size, EntryAt entryAt, const std::atomic<bool> *cancelled)
{
    clear();
    std::vector<int> sizes;
    std::vector<int> markedSizes;
    for (int first = 0; first < size; first += assignedFill) {
        if (cancelled && *cancelled) {
            clear();
            return false;
        }
        chunks.push_back(std::make_unique<Chunk>());
        Chunk &chunk = *chunks.back();
        const auto number = static_cast<quint32>(chunks.size() - 1);
        const int end = std::min(size, first + assignedFill);
        chunk.count = end - first;
        for (int i = first; i < end; ++i) {
            const Entry entry = entryAt(i);
            const auto offset = static_cast<std::size_t>(i - first);
            chunk.values[offset] = entry.value;
            chunk.slots[offset] = entry.slot;
            chunk.marks[offset / 64] |= quint64(entry.marked) << (offset % 64);
            homes.ensure(entry.slot);
            homes[entry.slot] = number;
        }
        chunk.markedCount = chunk.marksBefore(chunk.count);
        tops.push_back({chunk.values.front(), chunk.slots.front(), number});
        sizes.push_back(chunk.count);
        markedSizes.push_back(chunk.markedCount);
    }
    ordinals.resize(chunks.size());
    renumber(0);
    counts.assign(std::move(sizes));
    markedCounts.assign(std::move(markedSizes));
    return true;
}

} // namespace core
