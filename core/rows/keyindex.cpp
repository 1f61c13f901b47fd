#include "rows/keyindex.h"

#include <utility>

#include "rows/prefetch.h"

namespace core {

template <typename Matches>
quint32 KeyIndex::findIf(quint64 hash, Matches matches) const
{
    const Part &part = parts[partOf(hash)];
    if (part.used == 0)
        return noSlot;
    const std::size_t mask = part.cells.size() - 1;
    for (std::size_t i = homeOf(hash, part); part.cells[i].slot != noSlot; i = (i + 1) & mask) {
        const Cell cell = part.cells[i];
        if (cell.tag == tagOf(hash) && keys[cell.slot].hash == hash && matches(cell.slot))
            return cell.slot;
    }
    return noSlot;
}

quint32 KeyIndex::find(std::string_view key, quint64 hash) const
{
    return findIf(hash, [&](quint32 slot) { return keyOf(slot) == key; });
}

void KeyIndex::prefetch(quint64 hash) const
{
    const Part &part = parts[partOf(hash)];
    if (part.used != 0)
        core::prefetch(&part.cells[homeOf(hash, part)]);
}

quint32 KeyIndex::likely(quint64 hash) const
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

void KeyIndex::prefetchKey(quint32 slot) const
{
    core::prefetch(&keys[slot]);
}

void KeyIndex::prefetchText(quint32 slot) const
{
    core::prefetch(keyOf(slot).data());
}

quint32 KeyIndex::findHash(quint64 hash) const
{
    return findIf(hash, [](quint32) { return true; });
}

void KeyIndex::insert(std::string_view key, quint64 hash, quint32 slot)
{
    keys.ensure(slot);
    keys[slot] = {hash, texts.add(key)};
    Part &part = parts[partOf(hash)];
    if ((part.used + 1) * 3 > part.cells.size() * 2)
        grow(part);
    place(part, hash, slot);
    ++part.used;
    ++keyCount;
}

void KeyIndex::place(Part &part, quint64 hash, quint32 slot)
{
    const std::size_t mask = part.cells.size() - 1;
    std::size_t i = homeOf(hash, part);
    while (part.cells[i].slot != noSlot)
        i = (i + 1) & mask;
    part.cells[i] = {tagOf(hash), slot};
}

void KeyIndex::grow(Part &part)
{
    constexpr std::size_t firstSize = 8;
    const std::vector<Cell> old = std::exchange(part.cells, {});
    part.cells.resize(old.empty() ? firstSize : old.size() * 2);
    for (const Cell &cell : old) {
        if (cell.slot != noSlot)
            place(part, keys[cell.slot].hash, cell.slot);
    }
}

void KeyIndex::remove(quint32 slot)
{
    const quint64 hash = keys[slot].hash;
    Part &part = parts[partOf(hash)];
    const std::size_t mask = part.cells.size() - 1;
    std::size_t hole = homeOf(hash, part);
    while (part.cells[hole].slot != slot)
        hole = (hole + 1) & mask;
    // Cells behind the hole move up unless that would put them in front of their home.
    for (std::size_t i = (hole + 1) & mask; part.cells[i].slot != noSlot; i = (i + 1) & mask) {
        const std::size_t home = homeOf(keys[part.cells[i].slot].hash, part);
        if (((i - home) & mask) >= ((i - hole) & mask)) {
            part.cells[hole] = part.cells[i];
            hole = i;
        }
    }
    part.cells[hole] = Cell();
    --part.used;
    --keyCount;
    texts.remove(keys[slot].text);
}

bool KeyIndex::checkConsistency() const
{
    int total = 0;
    for (const Part &part : parts) {
        quint32 used = 0;
        for (const Cell &cell : part.cells) {
            if (cell.slot == noSlot)
                continue;
            ++used;
            const quint64 hash = keys[cell.slot].hash;
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
