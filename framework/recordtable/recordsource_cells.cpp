#include <boost/make_shared.hpp>
#include <cmath>

#include "recordtable/recordrowcopy.h"
#include "recordtable/recordsource.h"
#include "table/cellvalue.h"

namespace ZB {

void RecordSource::setCell(RecordRow &row, int column, const QString &text, const QColor *color, const QString &unit)
{
    RecordCell &cell = row.cell(column);
    cell.due = false;
    cell.text = text;
    cell.color = color;
    cell.unit = unit;
    if (showing > 0)
        return;
    row.version = rows.nextVersion();
    noteChange();
}

void RecordSource::markRow(RecordRow &row)
{
    for (RecordCell &cell : row.cells)
        cell.due = true;
    row.version = rows.nextVersion();
    rows.touch(row);
    noteChange();
}

void RecordSource::markCell(RecordRow &row, int column)
{
    if (static_cast<std::size_t>(column) < row.cells.size())
        row.cells[static_cast<std::size_t>(column)].due = true;
    row.version = rows.nextVersion();
    if (rows.sortsBy(column))
        rows.touch(row);
    noteChange();
}

const RecordCell &RecordSource::shownCell(RecordRow &row, int column) const
{
    row.cells.reserve(columns.size()); // most are asked for one after the other
    if (row.cell(column).due && !row.gone)
        show(row, column);
    return row.cell(column);
}

/// Whoever fills the cell may do anything to the table, this row included.
void RecordSource::show(RecordRow &row, int column) const
{
    const RecordRowPtr keep = row.shared_from_this();
    row.cell(column).due = false;
    ++showing;
    showCell(row.id, column);
    --showing;
    if (!hasColumn(column) || !columns[static_cast<std::size_t>(column)].flashes || !isNumberType(columnType(column)))
        return;
    const QVariant value = row.gone ? QVariant() : valueOf(row.id, column);
    RecordCell &cell = row.cell(column);
    cell.change = cell.hasNumber && value.isValid() ? value.toDouble() - cell.number : 0;
    cell.hasNumber = value.isValid();
    cell.number = value.toDouble();
}

void RecordSource::content(int index, int column, GridContent &content)
{
    RecordRow *row = windowRow(index);
    if (!row || !hasColumn(column))
        return;
    const RecordRowPtr keep = row->shared_from_this();
    const RecordCell &cell = shownCell(*row, column);
    content.text = cell.text;
    content.unit = cell.unit;
    content.color = cell.color;
    content.background = markOf(*row);
}

const QColor *RecordSource::markOf(const RecordRow &row) const
{
    if (row.gone)
        return nullptr;
    for (int rule = 0; rule < marks.size(); ++rule) {
        const QVariant value = valueOf(row.id, marks[rule].column);
        if (value.isValid() && std::abs(value.toDouble()) >= marks[rule].threshold)
            return &markTints[static_cast<std::size_t>(rule)];
    }
    return nullptr;
}

GridFlash RecordSource::flash(int index, int column)
{
    RecordRow *row = windowRow(index);
    if (!row || !hasColumn(column) || !columns[static_cast<std::size_t>(column)].flashes)
        return GridFlash::None;
    return flashOfChange(row->cell(column).change, columnType(column));
}

TableRows::Row RecordSource::copyOf(RecordRow &row) const
{
    const RecordRowPtr keep = row.shared_from_this();
    std::vector<RecordRowCopy::Cell> cells(columns.size());
    for (const int column : takenColumns ? takenColumns() : std::vector<int>()) {
        const RecordCell &cell = shownCell(row, column);
        cells[static_cast<std::size_t>(column)] = {cell.text + cell.unit, valueOf(row.id, column)};
    }
    return boost::make_shared<RecordRowCopy>(std::move(cells));
}

void RecordSource::fetchRows(qint64 first, int count, std::vector<HpfShownRow> &taken) const
{
    taken.clear();
    std::vector<GridRowId> ids;
    rowIds(first, count, ids);
    for (const GridRowId id : ids)
        if (Row row = rowOfId(id))
            taken.push_back({id, 0, std::move(row)});
}

TableRows::Row RecordSource::rowOfId(GridRowId id) const
{
    RecordRow *row = rows.findOnScreen(id);
    return row ? copyOf(*row) : Row();
}

GridRowId RecordSource::idAt(qint64 row) const
{
    std::vector<GridRowId> ids;
    rowIds(row, 1, ids);
    return ids.empty() ? NoGridRow : ids.front();
}

RowTaker RecordSource::allRows() const
{
    std::vector<HpfShownRow> all;
    fetchRows(0, rows.count(), all);
    return [snapshot = makeSnapshot(std::move(all), SharedModel())] { return snapshot; };
}

RowTaker RecordSource::rowsOfIds(std::vector<GridRowId> ids) const
{
    std::vector<HpfShownRow> some;
    for (const GridRowId id : ids)
        if (Row row = rowOfId(id))
            some.push_back({id, 0, std::move(row)});
    return [snapshot = makeSnapshot(std::move(some), SharedModel())] { return snapshot; };
}

qint64 RecordSource::rowOf(GridRowId id) const
{
    return rows.placeOf(id);
}

void RecordSource::rowIds(qint64 first, qint64 count, std::vector<GridRowId> &ids) const
{
    const std::vector<RecordRow *> &shown = rows.shown();
    const auto size = static_cast<qint64>(shown.size());
    const qint64 end = std::min(first + count, size);
    for (qint64 at = std::max<qint64>(first, 0); at < end; ++at)
        ids.push_back(shown[static_cast<std::size_t>(at)]->gridId);
}

} // namespace ZB
