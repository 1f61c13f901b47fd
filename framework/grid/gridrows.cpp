#include "grid/gridrows.h"

#include <algorithm>

#include "grid/gridanchor.h"

namespace ZB {

namespace {

bool sameRows(const GridWindow &a, const GridWindow &b)
{
    return a.first == b.first && std::equal(a.rows.begin(), a.rows.end(), b.rows.begin(), b.rows.end(),
                                            [](const GridRow &x, const GridRow &y) { return x.id == y.id; });
}

bool isEdge(GridFollow follow, const GridGeometry &geometry)
{
    switch (follow) {
    case GridFollow::Top:
        return geometry.scrollY == 0;
    case GridFollow::Bottom:
        return geometry.scrollY >= geometry.maximumScrollY();
    default:
        return true;
    }
}

} // namespace

void GridRows::reset()
{
    const GridFollow kept = followed;
    *this = GridRows();
    followed = kept;
}

void GridRows::setFollow(GridFollow follow, const GridGeometry &geometry)
{
    if (followed == follow)
        return;
    followed = follow;
    atEdge = isEdge(follow, geometry);
    edgeRow = NoGridRow;
    edgeCount = geometry.rowCount;
    unseenCount = 0;
}

int GridRows::indexOf(GridRowId id) const
{
    const auto found =
        std::find_if(shown.rows.begin(), shown.rows.end(), [&](const GridRow &row) { return row.id == id; });
    return found == shown.rows.end() ? -1 : static_cast<int>(found - shown.rows.begin());
}

GridRowId GridRows::idAt(qint64 row) const
{
    const qint64 index = row - shown.first;
    return index < 0 || index >= static_cast<qint64>(shown.rows.size()) ? NoGridRow
                                                                        : shown.rows[static_cast<size_t>(index)].id;
}

void GridRows::fetch(GridSource &source, const GridGeometry &geometry)
{
    source.fetch(geometry.firstRow(), geometry.shownRowCount(), shown);
}

/// Goes to the edge that the view follows; false when it is not there to be followed.
bool GridRows::pin(GridGeometry &geometry) const
{
    if (followed == GridFollow::None || !atEdge)
        return false;
    geometry.scrollTo(geometry.scrollX, followed == GridFollow::Top ? 0 : geometry.maximumScrollY());
    return true;
}

void GridRows::update(GridSource &source, GridGeometry &geometry, bool held, GridRowId current)
{
    if (held) {
        source.refetch(shown);
        return;
    }
    const GridWindow before = shown;
    const qint64 scrollY = geometry.scrollY; // the way to a row's new place begins here, whatever is possible now
    const bool sortDone = sorted && !source.isSettling(); // asked before the rows, which may become another moment's
    geometry.rowCount = source.rowCount();
    const bool pinned = pin(geometry);
    if (!pinned)
        geometry.scrollTo(geometry.scrollX, geometry.scrollY);
    fetch(source, geometry);
    if (!pinned && !before.rows.empty())
        stay(source, geometry, before, scrollY, current, sortDone);
    else if (sortDone)
        sorted = false; // the next change is no sort any more
    noteEdge(source, geometry);
}

void GridRows::stay(GridSource &source, GridGeometry &geometry, const GridWindow &before, qint64 scrollY,
                    GridRowId current, bool sortDone)
{
    if (!sortDone && sameRows(before, shown))
        return;
    GridAnchorCase change;
    change.first = before.first;
    change.sortedByUser = sorted;
    std::vector<GridRowId> ids;
    for (const GridRow &row : before.rows) {
        if (row.id == current)
            change.current = static_cast<int>(ids.size());
        ids.push_back(row.id);
    }
    qint64 wanted = 0; // whoever sorts wants to see what is first, unless he has a row in sight
    if (!sortDone || change.current >= 0) {
        source.rowsOf(ids, change.places);
        wanted = scrollY + anchorShift(change) * geometry.rowHeight;
    }
    sorted = sorted && !sortDone;
    if (geometry.scrollTo(geometry.scrollX, wanted))
        fetch(source, geometry);
}

void GridRows::noteEdge(GridSource &source, const GridGeometry &geometry)
{
    atEdge = isEdge(followed, geometry);
    if (followed == GridFollow::None || atEdge) {
        unseenCount = 0;
        edgeCount = geometry.rowCount;
        const bool top = followed == GridFollow::Top;
        edgeRow = shown.rows.empty() ? NoGridRow : top ? shown.rows.front().id : shown.rows.back().id;
        return;
    }
    const qint64 place = edgeRow == NoGridRow ? -1 : source.rowOf(edgeRow);
    if (place < 0)
        unseenCount = std::max<qint64>(0, geometry.rowCount - edgeCount);
    else
        unseenCount = followed == GridFollow::Top ? place : geometry.rowCount - 1 - place;
}

void GridRows::scrollTo(GridSource *source, GridGeometry &geometry, qint64 x, qint64 y)
{
    if (!geometry.scrollTo(x, y) || !source)
        return;
    fetch(*source, geometry);
    noteEdge(*source, geometry);
}

} // namespace ZB
