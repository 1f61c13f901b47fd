#include "grid/gridselection.h"

#include <algorithm>

namespace ZB {

bool GridSelection::isCellSelected(GridRowId row, int column) const
{
    return std::any_of(blocks.begin(), blocks.end(), [&](const Block &block) {
        return block.rows.contains(row) && std::binary_search(block.columns.begin(), block.columns.end(), column);
    });
}

void GridSelection::clear()
{
    if (isEmpty())
        return;
    rowSet.clear();
    keptRows.clear();
    blocks.clear();
    ++changes;
}

void GridSelection::selectRow(GridRowId row)
{
    if (blocks.empty() && rowSet.size() == 1 && rowSet.contains(row))
        return;
    blocks.clear();
    rowSet.clear();
    rowSet.insert(row);
    ++changes;
}

void GridSelection::toggleRow(GridRowId row)
{
    blocks.clear();
    if (!rowSet.remove(row))
        rowSet.insert(row);
    ++changes;
}

void GridSelection::beginStretch(bool keep)
{
    if (!keep)
        keptRows.clear();
    else
        keptRows = rowSet;
}

void GridSelection::setStretch(const std::vector<GridRowId> &rows)
{
    blocks.clear();
    rowSet = keptRows;
    rowSet.reserve(rowSet.size() + qint64(rows.size()));
    for (const auto row : rows)
        rowSet.insert(row);
    ++changes;
}

void GridSelection::selectRows(const std::vector<GridRowId> &rows)
{
    beginStretch(false);
    setStretch(rows);
}

void GridSelection::beginBlock(bool keep)
{
    rowSet.clear();
    keptRows.clear();
    if (!keep)
        blocks.clear();
    blocks.emplace_back();
    ++changes;
}

void GridSelection::setBlock(const std::vector<GridRowId> &rows, const std::vector<int> &columns)
{
    if (blocks.empty())
        beginBlock(false);
    Block &block = blocks.back();
    block.rows.clear();
    for (const auto row : rows)
        block.rows.insert(row);
    block.columns = columns;
    std::sort(block.columns.begin(), block.columns.end());
    ++changes;
}

std::vector<GridRowId> GridSelection::shownRows(const GridSource &source) const
{
    return inShownOrder(source, rowSet);
}

std::vector<GridRowId> GridSelection::inShownOrder(const GridSource &source, const GridRowSet &rows)
{
    // Asking for the place of each row costs more than walking along all of them, once enough rows are selected.
    if (rows.size() > source.rowCount() / 16) {
        std::vector<GridRowId> all;
        source.rowIds(0, source.rowCount(), all);
        all.erase(std::remove_if(all.begin(), all.end(), [&](GridRowId id) { return !rows.contains(id); }), all.end());
        return all;
    }
    const std::vector<GridRowId> ids = rows.ids();
    std::vector<qint64> places;
    source.rowsOf(ids, places);
    std::vector<std::pair<qint64, GridRowId>> shown;
    for (size_t i = 0; i < ids.size(); ++i)
        if (places[i] >= 0)
            shown.emplace_back(places[i], ids[i]);
    std::sort(shown.begin(), shown.end());
    std::vector<GridRowId> result;
    result.reserve(shown.size());
    for (const auto &row : shown)
        result.push_back(row.second);
    return result;
}

} // namespace ZB
