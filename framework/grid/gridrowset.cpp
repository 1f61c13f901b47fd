#include "grid/gridrowset.h"

#include <algorithm>
#include <utility>

namespace ZB {

namespace {

constexpr int smallestBits = 4;

} // namespace

size_t GridRowSet::placeOf(GridRowId id) const
{
    const size_t mask = table.size() - 1;
    size_t place = homeOf(id);
    while (table[place] != id && table[place] != NoGridRow)
        place = (place + 1) & mask;
    return place;
}

void GridRowSet::reserve(qint64 size)
{
    int bits = smallestBits;
    while ((qint64(1) << bits) < 2 * size)
        ++bits;
    if ((size_t(1) << bits) <= table.size())
        return;
    const std::vector<GridRowId> former =
        std::exchange(table, std::vector<GridRowId>(size_t(1) << bits, GridRowId(NoGridRow)));
    shift = 64 - bits;
    for (const GridRowId id : former)
        if (id != NoGridRow)
            table[placeOf(id)] = id;
}

bool GridRowSet::insert(GridRowId id)
{
    if (id == NoGridRow)
        return false;
    reserve(count + 1);
    GridRowId &place = table[placeOf(id)];
    if (place == id)
        return false;
    place = id;
    ++count;
    return true;
}

/// The ids behind it move up, so that none is cut off from its home by a free place.
bool GridRowSet::remove(GridRowId id)
{
    if (!contains(id))
        return false;
    const size_t mask = table.size() - 1;
    size_t hole = placeOf(id);
    for (size_t next = (hole + 1) & mask; table[next] != NoGridRow; next = (next + 1) & mask) {
        const size_t fromHome = (next - homeOf(table[next])) & mask;
        if (fromHome < ((next - hole) & mask))
            continue;
        table[hole] = table[next];
        hole = next;
    }
    table[hole] = NoGridRow;
    --count;
    return true;
}

void GridRowSet::clear()
{
    table = {};
    shift = 64;
    count = 0;
}

std::vector<GridRowId> GridRowSet::ids() const
{
    std::vector<GridRowId> result;
    result.reserve(static_cast<size_t>(count));
    std::copy_if(table.begin(), table.end(), std::back_inserter(result), [](GridRowId id) { return id != NoGridRow; });
    std::sort(result.begin(), result.end());
    return result;
}

} // namespace ZB
