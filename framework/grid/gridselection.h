#pragma once

#include <vector>

#include "frameworkexport.h"
#include "grid/gridrowset.h"

namespace ZB {

/// What is selected: whole rows, or blocks of cells. Both are kept by row id, so they stay on their records whatever
/// happens to the order; a row that is filtered out is selected again when it comes back.
///
/// Rows and blocks exclude one another: choosing one ends the other. GUI thread.
class FRAMEWORK_API GridSelection
{
public:
    bool isRowSelected(GridRowId row) const { return !rowSet.isEmpty() && rowSet.contains(row); }
    bool isCellSelected(GridRowId row, int column) const;
    /// Rows that are filtered out at present included.
    qint64 selectedRowCount() const { return rowSet.size(); }
    bool hasBlocks() const { return !blocks.empty(); }
    bool isEmpty() const { return rowSet.isEmpty() && blocks.empty(); }
    /// Another number after every change.
    quint64 serial() const { return changes; }

    void clear();
    void selectRow(GridRowId row);
    void toggleRow(GridRowId row);
    /// The rows of a stretch, which replaces the stretch that was set last (while the mouse or Shift moves its end) but
    /// not what was selected before that. keep: what was selected before stays.
    void beginStretch(bool keep);
    void setStretch(const std::vector<GridRowId> &rows);
    void selectRows(const std::vector<GridRowId> &rows);

    /// A further block of cells, empty at first. keep: the other blocks stay.
    void beginBlock(bool keep);
    /// Sets the cells of the last block; columns in any order.
    void setBlock(const std::vector<GridRowId> &rows, const std::vector<int> &columns);

    /// Selected rows that are shown, in shown order; for blocks one list per block.
    std::vector<GridRowId> shownRows(const GridSource &source) const;
    struct Block
    {
        GridRowSet rows;
        std::vector<int> columns; ///< ascending
    };
    const std::vector<Block> &cellBlocks() const { return blocks; }
    static std::vector<GridRowId> inShownOrder(const GridSource &source, const GridRowSet &rows);

private:
    GridRowSet rowSet;
    GridRowSet keptRows; ///< selected before the stretch began
    std::vector<Block> blocks;
    quint64 changes = 0;
};

} // namespace ZB
