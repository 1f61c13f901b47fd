#include "pagemodel/pagelist.h"

namespace KV {

std::vector<quint32> PageList::slotsInOrder() const
{
    std::vector<quint32> list;
    sequence.copySlots(list);
    return list;
}

void PageList::assign(const std::vector<quint32> &slotList)
{
    sequence.assign(static_cast<int>(slotList.size()), [&](int index) {
        return core::ChunkedSequence::Entry{0, slotList[static_cast<std::size_t>(index)], false};
    });
}

int PageList::insertIndex(quint32 slot, const PageComparator &comparator) const
{
    const int count = size();
    if (count < 1)
        return 0;
    core::ChunkedSequence::Reader reader(sequence);
    int low = 0;
    int high = count - 1;
    while (low <= high) {
        const int middle = low + (high - low) / 2;
        const int result = comparator.compare(reader.slotAt(middle), slot);
        if (result == 0)
            return middle;
        if (result < 0)
            low = middle + 1;
        else
            high = middle - 1;
    }
    const bool highInside = high >= 0 && high < count;
    if (low < count) {
        if (comparator.compare(reader.slotAt(low), slot) < 0)
            return low + 1;
        if (!highInside)
            return 0;
        return comparator.compare(reader.slotAt(high), slot) > 0 ? high : low;
    }
    if (!highInside)
        return low;
    return comparator.compare(reader.slotAt(high), slot) > 0 ? high : count;
}

bool PageList::isMisplaced(int index, const PageComparator &comparator) const
{
    if (comparator.column() < 0)
        return false;
    core::ChunkedSequence::Reader reader(sequence);
    const quint32 slot = reader.slotAt(index);
    return (index > 0 && comparator.compare(reader.slotAt(index - 1), slot) > 0) ||
           (index + 1 < size() && comparator.compare(slot, reader.slotAt(index + 1)) > 0);
}

int PageList::relocate(int index, const PageComparator &comparator)
{
    const quint32 slot = at(index);
    erase(slot);
    const int moved = insertIndex(slot, comparator);
    insert(moved, slot);
    return moved == index ? -1 : moved;
}

bool PageList::operator==(const PageList &other) const
{
    return size() == other.size() && slotsInOrder() == other.slotsInOrder();
}

} // namespace KV
