#pragma once

#include <QtCore/QSet>
#include <vector>

#include "frameworkexport.h"
#include "grid/gridcolumn.h"

namespace ZB {

/// A visible column's place among its like, before any scrolling. Device pixels from the left of the first column.
struct GridPlacedColumn
{
    int column = -1;
    int left = 0;
    int width = 0;
};

/// The columns of a grid: how each is shown, in which order, which of them stay at the left. Knows no widget.
///
/// Columns are model columns; a place is an index among the visible ones, from the left.
class FRAMEWORK_API GridColumns
{
public:
    static constexpr int minimumWidth = 12;
    static constexpr int maximumWidth = 4000;

    GridColumns();

    /// That many columns as GridColumn() says, in model order.
    void reset(int count);
    /// Adds columns at the end or takes them away there; the others stay as they are.
    void resize(int count);
    int count() const { return static_cast<int>(columns.size()); }

    /// GridColumn() for columns that do not exist.
    const GridColumn &at(int column) const;
    /// Widths are brought between the bounds. True when something changed; false as well for columns that do not exist.
    bool set(int column, const GridColumn &look);

    const std::vector<int> &order() const { return sequence; }
    /// Columns that are missing follow in their old order; repeated and unknown ones are ignored.
    void setOrder(const std::vector<int> &order);
    /// Moves a column in front of the visible column at `place`, or behind the last. True when that changed the order.
    bool move(int column, int place);

    /// Device pixels per pixel of the widths.
    void setPixelRatio(double ratio);
    /// How many visible columns do not scroll, as wished and as there are.
    void setFrozen(int count);
    int frozenWish() const { return wishedFrozen; }
    int frozen() const;

    const std::vector<GridPlacedColumn> &placed() const { return places; }
    /// -1 for hidden columns and those that do not exist.
    int placeOf(int column) const;
    int width() const { return total; } ///< of all visible columns, device pixels
    int frozenWidth() const;

private:
    void layOut();

    std::vector<GridColumn> columns;
    std::vector<int> sequence; ///< model columns from the left, hidden ones included
    std::vector<GridPlacedColumn> places;
    std::vector<int> placeOfColumn;
    int wishedFrozen = 0;
    int total = 0;
    double pixelRatio = 1.0;
};

bool operator==(const GridColumn &a, const GridColumn &b);

} // namespace ZB
