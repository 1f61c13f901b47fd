#include "table/tablesource.h"

#include <algorithm>
#include <cmath>

#include "table/cellvalue.h"
#include "table/rowrelease.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

constexpr int touchShift = 40; ///< changes of data count below it, so that neither can make up for the other
constexpr int idStretch = 8192;

} // namespace

TableSource::TableSource() = default;

TableSource::~TableSource()
{
    releasePausedRows();
}

void TableSource::setModel(IBaseHpfTableModel *newModel)
{
    resume();
    model = newModel;
    window.clear();
    before.clear();
    windowMarks.clear();
    statisticsTexts.clear();
    lastData = model ? HpfModelAccess::status(*model).dataEpoch : 0;
    touch();
}

void TableSource::touch()
{
    ++touches;
    columnBackgrounds.clear();
    windowMarks.assign(windowMarks.size(), unknownMark);
}

void TableSource::setRowMarks(const QVector<CTableRowMark> &newMarks, std::vector<QColor> tints)
{
    marks = newMarks;
    markTints = std::move(tints);
    touch();
}

void TableSource::setPlainBackground(const QColor &background)
{
    plainBackground = background;
    touch();
}

/// The mark is taken off before the state is read: what comes in between wakes the table once more. A mark without a
/// change of rows means that something else is different that rows show (a computed column), so all is asked again.
quint64 TableSource::revision() const
{
    quint64 data = pausedData;
    if (model && !paused) {
        const bool marked = model->updated();
        if (marked)
            model->setUpdated(false);
        data = HpfModelAccess::status(*model).dataEpoch;
        if (marked && data == lastData)
            ++touches;
        lastData = data;
    }
    return (touches << touchShift) + data;
}

quint64 TableSource::epoch() const
{
    return touches;
}

qint64 TableSource::rowCount() const
{
    if (paused)
        return qint64(pausedRows.size());
    return model ? HpfModelAccess::rowCount(*model) : 0;
}

void TableSource::fetchRows(qint64 first, int count, std::vector<HpfShownRow> &rows) const
{
    rows.clear();
    if (paused) {
        const auto size = qint64(pausedRows.size());
        const qint64 from = std::clamp<qint64>(first, 0, size);
        const qint64 to = std::clamp<qint64>(first + count, from, size);
        rows.assign(pausedRows.begin() + from, pausedRows.begin() + to);
    } else if (model) {
        HpfModelAccess::fetch(*model, int(first), count, rows);
    }
}

IBaseHpfTableModel::Row TableSource::rowOfId(GridRowId id) const
{
    if (paused) {
        const qint64 row = rowOf(id);
        return row < 0 ? IBaseHpfTableModel::Row() : pausedRows[std::size_t(row)].row;
    }
    return model ? HpfModelAccess::rowOf(*model, id) : IBaseHpfTableModel::Row();
}

GridRowId TableSource::idAt(qint64 row) const
{
    if (row < 0 || row >= rowCount())
        return NoGridRow;
    const quint64 id = paused ? pausedRows[std::size_t(row)].id : HpfModelAccess::idAt(*model, int(row));
    return id ? id : NoGridRow;
}

void TableSource::fetch(qint64 first, int count, GridWindow &gridWindow)
{
    std::swap(window, before);
    fetchRows(first, count, window);
    windowFirst = first;
    windowMarks.assign(window.size(), unknownMark);
    takeWindow(first, gridWindow);
}

void TableSource::takeWindow(qint64 first, GridWindow &gridWindow)
{
    gridWindow.rowCount = rowCount();
    gridWindow.first = first;
    gridWindow.rows.clear();
    for (const HpfShownRow &row : window)
        gridWindow.rows.push_back({row.id, row.version});
}

void TableSource::refetch(GridWindow &gridWindow)
{
    before = window;
    for (std::size_t at = 0; at < window.size() && !paused && model; ++at) {
        const int index = HpfModelAccess::indexOf(*model, window[at].id);
        std::vector<HpfShownRow> present;
        if (index < 0 || !HpfModelAccess::fetch(*model, index, 1, present) || present[0].id != window[at].id)
            continue;
        if (present[0].version != window[at].version)
            windowMarks[at] = unknownMark;
        window[at] = std::move(present[0]);
    }
    takeWindow(gridWindow.first, gridWindow);
}

qint64 TableSource::rowOf(GridRowId id) const
{
    if (!paused)
        return model ? HpfModelAccess::indexOf(*model, id) : -1;
    if (pausedIndex.empty()) {
        pausedIndex.reserve(pausedRows.size());
        for (std::size_t row = 0; row < pausedRows.size(); ++row)
            pausedIndex.emplace_back(pausedRows[row].id, int(row));
        std::sort(pausedIndex.begin(), pausedIndex.end());
    }
    const auto found = std::lower_bound(pausedIndex.begin(), pausedIndex.end(), std::make_pair(id, 0));
    return found != pausedIndex.end() && found->first == id ? found->second : -1;
}

void TableSource::rowIds(qint64 first, qint64 count, std::vector<GridRowId> &ids) const
{
    std::vector<HpfShownRow> rows;
    const qint64 end = std::min(first + count, rowCount());
    for (qint64 at = std::max<qint64>(first, 0); at < end; at += idStretch) {
        fetchRows(at, int(std::min<qint64>(idStretch, end - at)), rows);
        for (const HpfShownRow &row : rows)
            ids.push_back(row.id);
    }
}

int TableSource::columnCount() const
{
    return model ? model->columnCount() : 0;
}

QString TableSource::headerText(int column) const
{
    return model ? model->columnHeader(column) : QString();
}

/// Asking for a sum while a filter is being carried out would wait for it.
QString TableSource::statisticsText(int column) const
{
    if (!model)
        return QString();
    if (!HpfModelAccess::status(*model).pending)
        statisticsTexts[column] = model->getStatDispalyQString(column);
    return statisticsTexts[column];
}

} // namespace ZB
