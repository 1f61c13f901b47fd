#pragma once

#include "frameworkexport.h"
#include "grid/gridgeometry.h"
#include "grid/gridsource.h"

namespace ZB {

/// Where a grid stays when rows come and go.
enum class GridFollow
{
    None,  ///< always on the rows that it shows
    Top,   ///< at the top edge while it is there, otherwise on its rows
    Bottom ///< at the bottom edge while it is there, otherwise on its rows
};

/// Which rows are on the screen: fetches them, keeps the view on them when the order changes, follows an edge. Works on
/// the geometry's row count and vertical position; knows no widget. GUI thread.
class FRAMEWORK_API GridRows
{
public:
    /// Another source: no rows, at the edge that is followed.
    void reset();

    GridFollow follow() const { return followed; }
    void setFollow(GridFollow follow, const GridGeometry &geometry);
    bool isAtEdge() const { return atEdge; }
    /// Rows beyond the ones that were at the followed edge when the view left it.
    qint64 unseen() const { return unseenCount; }
    /// The user has asked for another order, which may come at any time. Then the current row keeps its place on the
    /// screen; without one there the view goes to what is first.
    void expectSort() { sorted = true; }

    /// Brings window and geometry up to date. held: rows stay where they are, only their contents change.
    void update(GridSource &source, GridGeometry &geometry, bool held, GridRowId current);
    /// Scrolls, by the user's will. Fetches the rows there.
    void scrollTo(GridSource *source, GridGeometry &geometry, qint64 x, qint64 y);

    const GridWindow &window() const { return shown; }
    /// Index into the window's rows of a row (an id); -1 when it is not on the screen.
    int indexOf(GridRowId id) const;
    /// The id of a row that is on the screen, as it is shown there.
    GridRowId idAt(qint64 row) const;

private:
    void fetch(GridSource &source, const GridGeometry &geometry);
    bool pin(GridGeometry &geometry) const;
    void stay(GridSource &source, GridGeometry &geometry, const GridWindow &before, qint64 scrollY, GridRowId current,
              bool sortDone);
    void noteEdge(GridSource &source, const GridGeometry &geometry);

    GridWindow shown;
    GridFollow followed = GridFollow::None;
    bool atEdge = true;
    bool sorted = false;
    GridRowId edgeRow = NoGridRow; ///< the row at the followed edge while the view was there
    qint64 edgeCount = 0;          ///< rows at that time
    qint64 unseenCount = 0;
};

} // namespace ZB
