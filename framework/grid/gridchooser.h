#pragma once

#include <QtCore/Qt>
#include <vector>

#include "frameworkexport.h"
#include "grid/gridrows.h"
#include "grid/gridselection.h"

namespace ZB {

/// A cell as input means it: the row by id, and where it was shown at that time.
struct GridTarget
{
    GridRowId row = NoGridRow;
    qint64 place = -1;
    int column = -1;
};

/// The current cell and the selection, as mouse and keyboard change them. GUI thread.
class FRAMEWORK_API GridChooser
{
public:
    GridChooser(const GridRows &rows, const GridGeometry &geometry);

    void setSource(GridSource *source);

    const GridSelection &selection() const { return chosen; }
    const GridTarget &current() const { return now; }
    /// Where keys go on from: the current row's present place, or, when it has gone, the place where it was last.
    qint64 cursorPlace() const { return now.place; }
    /// Whether the current row is shown.
    bool isCurrentShown() const { return now.row != NoGridRow && currentShown; }
    /// Looks the current row up again; rows have moved.
    void follow();

    /// The target at a place of the shown order; without a row outside of it.
    GridTarget target(qint64 place, int column) const;

    void setCurrent(const GridTarget &cell);
    /// Keeps the row, shown or not.
    void setCurrentColumn(int column) { now.column = column; }
    /// A click with its modifiers, or a key that goes there: selects the row, Control toggles it, Shift selects a
    /// stretch.
    void chooseRow(const GridTarget &cell, Qt::KeyboardModifiers modifiers);
    void toggleCurrent();
    /// Makes a cell current and the beginning of what comes next, and leaves the selection alone.
    void aim(const GridTarget &cell);
    /// A stretch of rows (a block of cells) from where the last choice began; keep: what was selected before stays.
    void beginRows(bool keep);
    void extendRows(const GridTarget &cell);
    void beginCells(bool keep);
    void beginCellsAtCurrent();
    void extendCells(const GridTarget &cell);

    void selectAll();
    void selectRows(const std::vector<GridRowId> &rows);
    void clearSelection();

    /// Visible columns, from the left, between two of them.
    std::vector<int> columnsBetween(int a, int b) const;

private:
    std::vector<GridRowId> rowsBetween(qint64 a, qint64 b) const;
    qint64 anchorPlace(const GridTarget &fallback);

    const GridRows &rows;
    const GridGeometry &geometry;
    GridSource *source = nullptr;
    GridSelection chosen;
    GridTarget now;
    GridTarget anchor;
    bool currentShown = false;
};

} // namespace ZB
