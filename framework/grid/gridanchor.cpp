#include "grid/gridanchor.h"

#include <algorithm>
#include <map>

namespace ZB {

namespace {

struct Moved
{
    int index;    ///< among the rows on the screen
    qint64 place; ///< now
    qint64 shift; ///< from where it was
};

std::vector<Moved> survivors(const GridAnchorCase &change)
{
    std::vector<Moved> result;
    for (size_t i = 0; i < change.places.size(); ++i)
        if (change.places[i] >= 0)
            result.push_back(
                {static_cast<int>(i), change.places[i], change.places[i] - change.first - static_cast<qint64>(i)});
    return result;
}

/// Those that are still near one another; the median tells where, since single rows may have gone anywhere.
std::vector<Moved> pack(const std::vector<Moved> &rows, qint64 radius)
{
    std::vector<qint64> places;
    for (const Moved &row : rows)
        places.push_back(row.place);
    const auto middle = places.begin() + static_cast<qint64>(places.size() / 2);
    std::nth_element(places.begin(), middle, places.end());
    const qint64 median = *middle;
    std::vector<Moved> result;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(result),
                 [&](const Moved &row) { return std::abs(row.place - median) <= radius; });
    return result;
}

qint64 shiftOfRow(const std::vector<Moved> &rows, int current)
{
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const Moved &row) { return row.index == current; });
    return found == rows.end() ? rows.front().shift : found->shift;
}

} // namespace

qint64 anchorShift(const GridAnchorCase &change)
{
    const std::vector<Moved> rows = survivors(change);
    if (rows.empty())
        return 0;
    const bool currentLeft =
        std::any_of(rows.begin(), rows.end(), [&](const Moved &row) { return row.index == change.current; });
    if (change.sortedByUser && currentLeft)
        return shiftOfRow(rows, change.current);
    const std::vector<Moved> together = pack(rows, static_cast<qint64>(change.places.size()));
    if (together.size() * 2 < rows.size()) {
        const bool sameOrder =
            std::is_sorted(rows.begin(), rows.end(), [](const Moved &a, const Moved &b) { return a.place < b.place; });
        return sameOrder ? shiftOfRow(rows, change.current) : 0;
    }
    // As many rows as possible stay where they are on the screen; of equally many the upper ones.
    std::map<qint64, size_t> votes;
    size_t most = 0;
    for (const Moved &row : together)
        most = std::max(most, ++votes[row.shift]);
    const auto first =
        std::find_if(together.begin(), together.end(), [&](const Moved &row) { return votes[row.shift] == most; });
    return most * 2 >= together.size() ? first->shift : shiftOfRow(together, change.current);
}

} // namespace ZB
