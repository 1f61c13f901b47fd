#include <QtCore/qalgorithms.h>

#include "rows/chunkedsequence.h"

namespace core {

namespace {

constexpr int bitsPerWord = 64;

std::size_t wordOf(int offset)
{
    return static_cast<std::size_t>(offset / bitsPerWord);
}

/// The bits below a bit of a word.
quint64 below(int offset)
{
    return (quint64(1) << (offset % bitsPerWord)) - 1;
}

int popCount(quint64 word)
{
    return static_cast<int>(qPopulationCount(word));
}

} // namespace

void ChunkedSequence::Chunk::insert(int offset, const Entry &entry)
{
    std::copy_backward(values.begin() + offset, values.begin() + count, values.begin() + count + 1);
    std::copy_backward(slots.begin() + offset, slots.begin() + count, slots.begin() + count + 1);
    values[static_cast<std::size_t>(offset)] = entry.value;
    slots[static_cast<std::size_t>(offset)] = entry.slot;

    const std::size_t first = wordOf(offset);
    for (std::size_t i = wordOf(count); i > first; --i)
        marks[i] = marks[i] << 1 | marks[i - 1] >> (bitsPerWord - 1);
    const quint64 kept = marks[first] & below(offset);
    marks[first] = kept | (marks[first] & ~below(offset)) << 1;
    ++count;
    if (entry.marked)
        setMarked(offset, true);
}

void ChunkedSequence::Chunk::append(const Entry &entry)
{
    const auto offset = static_cast<std::size_t>(count++);
    values[offset] = entry.value;
    slots[offset] = entry.slot;
    if (entry.marked)
        setMarked(static_cast<int>(offset), true);
}

void ChunkedSequence::Chunk::erase(int offset)
{
    setMarked(offset, false);
    std::copy(values.begin() + offset + 1, values.begin() + count, values.begin() + offset);
    std::copy(slots.begin() + offset + 1, slots.begin() + count, slots.begin() + offset);

    const std::size_t first = wordOf(offset);
    const std::size_t last = wordOf(count - 1);
    const quint64 kept = marks[first] & below(offset);
    marks[first] = kept | (marks[first] >> 1 & ~below(offset));
    for (std::size_t i = first; i < last; ++i) {
        marks[i] |= marks[i + 1] << (bitsPerWord - 1);
        marks[i + 1] >>= 1;
    }
    --count;
}

bool ChunkedSequence::Chunk::isMarked(int offset) const
{
    return (marks[wordOf(offset)] >> (offset % bitsPerWord) & 1) != 0;
}

void ChunkedSequence::Chunk::setMarked(int offset, bool marked)
{
    if (isMarked(offset) == marked)
        return;
    marks[wordOf(offset)] ^= quint64(1) << (offset % bitsPerWord);
    markedCount += marked ? 1 : -1;
}

int ChunkedSequence::Chunk::marksBefore(int offset) const
{
    int result = 0;
    const std::size_t last = wordOf(offset);
    for (std::size_t i = 0; i < last; ++i)
        result += popCount(marks[i]);
    if (offset % bitsPerWord != 0)
        result += popCount(marks[last] & below(offset));
    return result;
}

int ChunkedSequence::Chunk::offsetOfMark(int markIndex) const
{
    std::size_t word = 0;
    for (int inWord = popCount(marks[0]); markIndex >= inWord; inWord = popCount(marks[word])) {
        markIndex -= inWord;
        ++word;
    }
    quint64 bits = marks[word];
    for (; markIndex > 0; --markIndex)
        bits &= bits - 1;
    return static_cast<int>(word) * bitsPerWord + static_cast<int>(qCountTrailingZeroBits(bits));
}

int ChunkedSequence::Chunk::offsetOf(quint32 slot) const
{
    return static_cast<int>(std::find(slots.begin(), slots.begin() + count, slot) - slots.begin());
}

int ChunkedSequence::Chunk::offsetOf(quint32 slot, quint64 value) const
{
    const auto first = std::lower_bound(values.begin(), values.begin() + count, value) - values.begin();
    return static_cast<int>(std::find(slots.begin() + first, slots.begin() + count, slot) - slots.begin());
}

ChunkedSequence::Entry ChunkedSequence::Chunk::entryAt(int offset) const
{
    const auto i = static_cast<std::size_t>(offset);
    return {values[i], slots[i], isMarked(offset)};
}

} // namespace core
