#include "feed/replay/orderindex.h"

#include <algorithm>

namespace feed {

/// Where the order stands, or the free slot where it would. Needs a table with a free slot.
size_t OrderIndex::slotFor(int numberSpace, qint64 orderNo) const
{
    // Multiplying by the golden ratio spreads neighbouring numbers; the upper bits are the best mixed.
    const quint64 mixed = (quint64(orderNo) + quint64(numberSpace) * 0xd6e8feb86659fd93u) * 0x9e3779b97f4a7c15u;
    const size_t mask = table.size() - 1;
    size_t slot = size_t(mixed >> 32) & mask;
    while (table[slot].place >= 0 && (table[slot].orderNo != orderNo || table[slot].numberSpace != numberSpace))
        slot = (slot + 1) & mask;
    return slot;
}

int OrderIndex::find(int numberSpace, qint64 orderNo) const
{
    return table.empty() ? -1 : table[slotFor(numberSpace, orderNo)].place;
}

void OrderIndex::insert(int numberSpace, qint64 orderNo, int place)
{
    if ((used + 1) * 4 > table.size() * 3)
        grow();
    table[slotFor(numberSpace, orderNo)] = {orderNo, numberSpace, place};
    ++used;
}

void OrderIndex::grow()
{
    std::vector<Slot> old(std::max<size_t>(1024, table.size() * 2));
    old.swap(table);
    for (const Slot &slot : old)
        if (slot.place >= 0)
            table[slotFor(slot.numberSpace, slot.orderNo)] = slot;
}

} // namespace feed
