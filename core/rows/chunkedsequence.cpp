#include "rows/chunkedsequence.h"

#include <QtCore/qalgorithms.h>

namespace core {

ChunkedSequence::ChunkedSequence() : chunks(1), ordinals(1) {}
ChunkedSequence::~ChunkedSequence() = default;
ChunkedSequence::ChunkedSequence(ChunkedSequence &&) noexcept = default;
ChunkedSequence &ChunkedSequence::operator=(ChunkedSequence &&) noexcept = default;

void ChunkedSequence::Reader::enter(int index)
{
    const Place place = placeOf(sequence.counts.find(index));
    const Chunk &chunk = sequence.chunkAt(place.ordinal);
    slots = chunk.slots.data();
    first = index - place.offset;
    end = first + chunk.count;
}

ChunkedSequence::Entry ChunkedSequence::at(int index) const
{
    const auto place = counts.find(index);
    return chunkAt(place.ordinal).entryAt(place.offset);
}

ChunkedSequence::Entry ChunkedSequence::markedAt(int index) const
{
    const auto place = markedCounts.find(index);
    const Chunk &chunk = chunkAt(place.ordinal);
    return chunk.entryAt(chunk.offsetOfMark(place.offset));
}

ChunkedSequence::Place ChunkedSequence::placeOf(quint32 slot) const
{
    const quint32 number = homes[slot];
    return {ordinals[number], chunks[number]->offsetOf(slot)};
}

int ChunkedSequence::indexOf(quint32 slot) const
{
    if (!contains(slot))
        return -1;
    const Place place = placeOf(slot);
    return counts.start(place.ordinal) + place.offset;
}

int ChunkedSequence::markedIndexOf(quint32 slot) const
{
    if (!contains(slot))
        return -1;
    const Place place = placeOf(slot);
    const Chunk &chunk = chunkAt(place.ordinal);
    if (!chunk.isMarked(place.offset))
        return -1;
    return markedCounts.start(place.ordinal) + chunk.marksBefore(place.offset);
}

void ChunkedSequence::copySlots(std::vector<quint32> &slots) const
{
    slots.resize(static_cast<std::size_t>(size()));
    auto out = slots.begin();
    for (const Top &top : tops) {
        const Chunk &chunk = *chunks[top.chunk];
        out = std::copy_n(chunk.slots.begin(), chunk.count, out);
    }
}

void ChunkedSequence::copyMarkedSlots(std::vector<quint32> &slots) const
{
    slots.resize(static_cast<std::size_t>(markedCount()));
    auto out = slots.begin();
    for (const Top &top : tops) {
        const Chunk &chunk = *chunks[top.chunk];
        if (chunk.markedCount == chunk.count) {
            out = std::copy_n(chunk.slots.begin(), chunk.count, out);
            continue;
        }
        for (std::size_t word = 0; word < chunk.marks.size(); ++word) {
            for (quint64 bits = chunk.marks[word]; bits != 0; bits &= bits - 1)
                *out++ = chunk.slots[word * 64 + qCountTrailingZeroBits(bits)];
        }
    }
}

void ChunkedSequence::insert(int index, const Entry &entry)
{
    insertAt(index < size() ? placeOf(counts.find(index)) : appendPlace(), entry);
}

ChunkedSequence::Place ChunkedSequence::appendPlace() const
{
    if (tops.empty())
        return {0, 0};
    const int last = static_cast<int>(tops.size()) - 1;
    return {last, chunkAt(last).count};
}

void ChunkedSequence::insertAt(Place place, const Entry &entry)
{
    if (tops.empty())
        insertChunk(0);
    else if (chunkAt(place.ordinal).count == capacity)
        place = makeRoom(place);
    Chunk &chunk = chunkAt(place.ordinal);
    chunk.insert(place.offset, entry);
    homes.ensure(entry.slot);
    homes[entry.slot] = tops[static_cast<std::size_t>(place.ordinal)].chunk;
    counts.add(place.ordinal, 1);
    if (entry.marked)
        markedCounts.add(place.ordinal, 1);
    if (place.offset == 0)
        refreshTop(place.ordinal);
}

/// Splits a full chunk and says where the place is afterwards. At either end of the sequence a new chunk is opened
/// instead, so that a sequence which grows there only keeps its chunks full.
ChunkedSequence::Place ChunkedSequence::makeRoom(Place place)
{
    const int last = static_cast<int>(tops.size()) - 1;
    if (place.ordinal == last && place.offset == capacity) {
        insertChunk(last + 1);
        return {last + 1, 0};
    }
    if (place.ordinal == 0 && place.offset == 0) {
        insertChunk(0);
        return {0, 0};
    }
    constexpr int half = capacity / 2;
    insertChunk(place.ordinal + 1);
    moveTail(place.ordinal, half, place.ordinal + 1);
    return place.offset <= half ? place : Place{place.ordinal + 1, place.offset - half};
}

void ChunkedSequence::erase(quint32 slot)
{
    if (contains(slot))
        eraseAt(placeOf(slot));
}

void ChunkedSequence::eraseSorted(quint32 slot, quint64 value)
{
    if (!contains(slot))
        return;
    const quint32 number = homes[slot];
    eraseAt({ordinals[number], chunks[number]->offsetOf(slot, value)});
}

void ChunkedSequence::eraseAt(Place place)
{
    Chunk &chunk = chunkAt(place.ordinal);
    homes[chunk.slots[static_cast<std::size_t>(place.offset)]] = noChunk;
    counts.add(place.ordinal, -1);
    if (chunk.isMarked(place.offset))
        markedCounts.add(place.ordinal, -1);
    chunk.erase(place.offset);
    if (chunk.count == 0) {
        removeChunk(place.ordinal);
        return;
    }
    if (place.offset == 0)
        refreshTop(place.ordinal);
    if (chunk.count < mergeBelow)
        mergeSmall(place.ordinal);
}

void ChunkedSequence::setMarked(quint32 slot, bool marked)
{
    const Place place = placeOf(slot);
    Chunk &chunk = chunkAt(place.ordinal);
    if (chunk.isMarked(place.offset) == marked)
        return;
    chunk.setMarked(place.offset, marked);
    markedCounts.add(place.ordinal, marked ? 1 : -1);
}

void ChunkedSequence::clear()
{
    *this = ChunkedSequence();
}

/// Joins a chunk that has become small with a neighbour, when both fit into one with room to spare.
void ChunkedSequence::mergeSmall(int ordinal)
{
    const auto fits = [this](int left) {
        return left >= 0 && left + 1 < static_cast<int>(tops.size()) &&
               chunkAt(left).count + chunkAt(left + 1).count <= mergedAtMost;
    };
    const int left = fits(ordinal) ? ordinal : ordinal - 1;
    if (!fits(left))
        return;
    moveTail(left + 1, 0, left);
    removeChunk(left + 1);
}

/// Appends the entries of a chunk from `offset` on to another one.
void ChunkedSequence::moveTail(int from, int offset, int to)
{
    Chunk &source = chunkAt(from);
    Chunk &target = chunkAt(to);
    const quint32 number = tops[static_cast<std::size_t>(to)].chunk;
    const int moved = source.count - offset;
    const int movedMarks = source.markedCount - source.marksBefore(offset);
    for (int i = offset; i < source.count; ++i) {
        const Entry entry = source.entryAt(i);
        homes[entry.slot] = number;
        target.append(entry);
        source.setMarked(i, false);
    }
    source.count = offset;
    counts.add(from, -moved);
    counts.add(to, moved);
    markedCounts.add(from, -movedMarks);
    markedCounts.add(to, movedMarks);
    refreshTop(to);
}

/// An empty one, which is filled at once.
void ChunkedSequence::insertChunk(int ordinal)
{
    quint32 number;
    if (freeNumbers.empty()) {
        number = static_cast<quint32>(chunks.size());
        chunks.push_back(nullptr);
        ordinals.push_back(0);
    } else {
        number = freeNumbers.back();
        freeNumbers.pop_back();
    }
    chunks[number] = std::make_unique<Chunk>();
    tops.insert(tops.begin() + ordinal, Top{0, 0, number});
    renumber(ordinal);
    counts.insert(ordinal, 0);
    markedCounts.insert(ordinal, 0);
}

void ChunkedSequence::removeChunk(int ordinal)
{
    const quint32 number = tops[static_cast<std::size_t>(ordinal)].chunk;
    chunks[number].reset();
    freeNumbers.push_back(number);
    tops.erase(tops.begin() + ordinal);
    renumber(ordinal);
    counts.remove(ordinal);
    markedCounts.remove(ordinal);
}

void ChunkedSequence::refreshTop(int ordinal)
{
    Top &top = tops[static_cast<std::size_t>(ordinal)];
    const Chunk &chunk = *chunks[top.chunk];
    top.firstValue = chunk.values.front();
    top.firstSlot = chunk.slots.front();
}

void ChunkedSequence::renumber(int firstOrdinal)
{
    for (int i = firstOrdinal; i < static_cast<int>(tops.size()); ++i)
        ordinals[tops[static_cast<std::size_t>(i)].chunk] = i;
}

bool ChunkedSequence::checkConsistency() const
{
    int total = 0;
    int totalMarked = 0;
    int homeCount = 0;
    for (quint32 slot = 0; slot < homes.size(); ++slot)
        homeCount += contains(slot) ? 1 : 0;
    for (int ordinal = 0; ordinal < static_cast<int>(tops.size()); ++ordinal) {
        const Top &top = tops[static_cast<std::size_t>(ordinal)];
        const Chunk &chunk = *chunks[top.chunk];
        if (ordinals[top.chunk] != ordinal || chunk.count < 1 || chunk.count > capacity ||
            top.firstValue != chunk.values.front() || top.firstSlot != chunk.slots.front() ||
            counts.start(ordinal) != total || markedCounts.start(ordinal) != totalMarked ||
            chunk.marksBefore(capacity) != chunk.markedCount || chunk.marksBefore(chunk.count) != chunk.markedCount)
            return false;
        for (int i = 0; i < chunk.count; ++i) {
            if (homes[chunk.slots[static_cast<std::size_t>(i)]] != top.chunk)
                return false;
        }
        total += chunk.count;
        totalMarked += chunk.markedCount;
    }
    return total == size() && totalMarked == markedCount() && total == homeCount &&
           chunks.size() == tops.size() + freeNumbers.size() + 1;
}

} // namespace core
