#include "rows/chunkedsequence.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

using core::ChunkedSequence;
using Entry = ChunkedSequence::Entry;

namespace {

/// The same operations on a plain vector.
struct PlainSequence
{
    std::vector<Entry> entries;

    int indexOf(quint32 slot) const
    {
        const auto found =
            std::find_if(entries.begin(), entries.end(), [slot](const Entry &entry) { return entry.slot == slot; });
        return found == entries.end() ? -1 : static_cast<int>(found - entries.begin());
    }
    std::vector<Entry> marked() const
    {
        std::vector<Entry> result;
        std::copy_if(entries.begin(), entries.end(), std::back_inserter(result),
                     [](const Entry &entry) { return entry.marked; });
        return result;
    }
};

std::string lines(const std::vector<Entry> &entries)
{
    std::string result;
    for (const Entry &entry : entries)
        result += std::to_string(entry.value) + ':' + std::to_string(entry.slot) + (entry.marked ? "+\n" : "\n");
    return result;
}

/// So many from `first` on, as far as there are so many.
std::string part(const std::vector<Entry> &entries, int first, int count)
{
    const auto from = std::min(static_cast<std::size_t>(first), entries.size());
    const auto to = std::min(from + static_cast<std::size_t>(count), entries.size());
    return lines(
        {entries.begin() + static_cast<std::ptrdiff_t>(from), entries.begin() + static_cast<std::ptrdiff_t>(to)});
}

void expectSame(const ChunkedSequence &sequence, const PlainSequence &plain)
{
    constexpr quint32 nowhere = 1'000'000;
    ASSERT_TRUE(sequence.checkConsistency());
    ASSERT_EQ(std::max(sequence.indexOf(nowhere), sequence.markedIndexOf(nowhere)), -1);
    ASSERT_EQ(sequence.size(), static_cast<int>(plain.entries.size()));
    const std::vector<Entry> marked = plain.marked();
    ASSERT_EQ(sequence.markedCount(), static_cast<int>(marked.size()));
    const int size = sequence.size();
    for (const auto &[first, count] : {std::pair(0, size), std::pair(size / 3, 3), std::pair(size - size / 5, size)}) {
        std::vector<Entry> visited;
        const auto collect = [&visited](const Entry &entry) { visited.push_back(entry); };
        sequence.forEach(first, count, collect);
        ASSERT_EQ(lines(visited), part(plain.entries, first, count)) << first;
        visited.clear();
        sequence.forEachMarked(first, count, collect);
        ASSERT_EQ(lines(visited), part(marked, first, count)) << first;
    }
    for (std::size_t i = 0; i < marked.size(); i += 7) {
        ASSERT_EQ(sequence.markedAt(static_cast<int>(i)).slot, marked[i].slot);
        ASSERT_EQ(sequence.markedIndexOf(marked[i].slot), static_cast<int>(i));
    }
    for (std::size_t i = 0; i < plain.entries.size(); i += 11) {
        ASSERT_EQ(sequence.at(static_cast<int>(i)).slot, plain.entries[i].slot);
        ASSERT_EQ(sequence.indexOf(plain.entries[i].slot), static_cast<int>(i));
        ASSERT_EQ(sequence.markedIndexOf(plain.entries[i].slot) >= 0, plain.entries[i].marked);
    }
    std::vector<quint32> slots;
    sequence.copySlots(slots);
    for (std::size_t i = 0; i < slots.size(); ++i)
        ASSERT_EQ(slots[i], plain.entries[i].slot);
    sequence.copyMarkedSlots(slots);
    ASSERT_EQ(slots.size(), marked.size());
    for (std::size_t i = 0; i < slots.size(); ++i)
        ASSERT_EQ(slots[i], marked[i].slot);
}

} // namespace

TEST(ChunkedSequence, FollowsRandomChangesByIndex)
{
    const quint64 seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    ChunkedSequence sequence;
    PlainSequence plain;
    expectSame(sequence, plain);
    sequence.erase(5); // is not there
    quint32 nextSlot = 0;
    // Growing, shrinking to nothing and growing again, at either end and in between.
    for (int step = 0; step < 30000; ++step) {
        const auto count = static_cast<int>(plain.entries.size());
        const bool growing = step / 6000 % 2 == 0;
        const quint64 choice = random() % 10;
        if (choice < (growing ? 7u : 2u) || count == 0) {
            const quint64 where = random() % 4;
            const int index = where == 0   ? 0
                              : where == 1 ? count
                                           : static_cast<int>(random() % static_cast<quint64>(count + 1));
            const Entry entry{random() % 100, nextSlot++, random() % 3 == 0};
            sequence.insert(index, entry);
            plain.entries.insert(plain.entries.begin() + index, entry);
        } else if (choice < 9) {
            const auto index = static_cast<int>(random() % static_cast<quint64>(count));
            if (choice == 8)
                sequence.erase(plain.entries[static_cast<std::size_t>(index)].slot);
            else
                sequence.eraseAt(index);
            plain.entries.erase(plain.entries.begin() + index);
        } else {
            Entry &entry = plain.entries[random() % plain.entries.size()];
            entry.marked = !entry.marked;
            sequence.setMarked(entry.slot, entry.marked);
        }
        if (step % 499 == 0)
            expectSame(sequence, plain);
        if (::testing::Test::HasFatalFailure())
            FAIL() << "step " << step;
    }
    sequence.clear();
    expectSame(sequence, PlainSequence());
}

TEST(ChunkedSequence, KeepsItsOrderUnderSortedInsertions)
{
    const quint64 seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    for (const quint64 values : {1u, 5u, 1000000u}) {
        ChunkedSequence sequence;
        PlainSequence plain;
        for (quint32 slot = 0; slot < 5000; ++slot) {
            const Entry entry{random() % values, slot, slot % 2 == 0};
            // Among equal values the larger slot goes in front.
            sequence.insertSorted(entry, [&entry](quint32 other) { return other > entry.slot; });
            plain.entries.push_back(entry);
        }
        std::sort(plain.entries.begin(), plain.entries.end(), [](const Entry &a, const Entry &b) {
            return a.value != b.value ? a.value < b.value : a.slot > b.slot;
        });
        expectSame(sequence, plain);

        ChunkedSequence assigned;
        assigned.assign(5000, [&](int i) { return plain.entries[static_cast<std::size_t>(i)]; });
        expectSame(assigned, plain);
        for (quint32 slot = 0; slot < 448; ++slot)
            assigned.setMarked(plain.entries[slot].slot, plain.entries[slot].marked = true);
        expectSame(assigned, plain);
    }
}
