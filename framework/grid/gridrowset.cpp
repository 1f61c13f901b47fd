#include "grid/gridrowset.h"

#include <algorithm>

namespace ZB {

bool GridRowSet::insert(GridRowId id)
{
    quint64 &word = words[id >> 6];
    const quint64 bit = quint64(1) << (id & 63);
    if (word & bit)
        return false;
    word |= bit;
    ++count;
    return true;
}

bool GridRowSet::remove(GridRowId id)
{
    const auto word = words.find(id >> 6);
    const quint64 bit = quint64(1) << (id & 63);
    if (word == words.end() || !(*word & bit))
        return false;
    *word &= ~bit;
    if (*word == 0)
        words.erase(word);
    --count;
    return true;
}

void GridRowSet::clear()
{
    words.clear();
    count = 0;
}

std::vector<GridRowId> GridRowSet::ids() const
{
    std::vector<GridRowId> result;
    result.reserve(static_cast<size_t>(count));
    for (auto word = words.begin(); word != words.end(); ++word)
        for (quint64 bit = 0; bit < 64; ++bit)
            if ((word.value() >> bit) & 1)
                result.push_back((word.key() << 6) | bit);
    std::sort(result.begin(), result.end());
    return result;
}

} // namespace ZB
