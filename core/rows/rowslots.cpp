#include "rows/rowslots.h"

namespace core {

quint32 RowSlots::add(std::string_view key, quint64 hash)
{
    quint32 slot = used;
    if (freeSlots.empty()) {
        rows.ensure(used++);
    } else {
        slot = freeSlots.back();
        freeSlots.pop_back();
    }
    if (++generation == 0)
        ++generation;
    rows[slot].generation = generation;
    index.insert(key, hash, slot);
    return slot;
}

void RowSlots::remove(quint32 slot)
{
    index.remove(slot);
    rows[slot].generation = 0;
    freeSlots.push_back(slot);
}

quint32 RowSlots::slotOf(quint64 id) const
{
    const auto slot = static_cast<quint32>(id);
    return id >> 32 != 0 && slot < used && idOf(slot) == id ? slot : noSlot;
}

bool RowSlots::checkConsistency() const
{
    quint32 live = 0;
    for (quint32 slot = 0; slot < used; ++slot)
        live += isLive(slot) ? 1 : 0;
    return live == static_cast<quint32>(size()) && live + freeSlots.size() == used && index.checkConsistency();
}

} // namespace core
