#include "recordtable/recordsource.h"

#include <algorithm>
#include <limits>

#include "rows/sortkey.h"
#include "table/cellvalue.h"

namespace ZB {

namespace {

constexpr int touchShift = 40; ///< changes of rows count below it, so that neither can make up for the other

} // namespace

RecordSource::RecordSource(ShowCell show, ValueOf value)
    : rows([this](const RecordRow &row, int column, bool descending) { return sortKey(row, column, descending); }),
      showCell(std::move(show)), valueOf(std::move(value))
{
}

RecordSource::~RecordSource() = default;

int RecordSource::addColumn(const CTableColumn &column)
{
    columns.push_back(column);
    statistics.append(QString());
    touch();
    return columnCount() - 1;
}

void RecordSource::clearColumns()
{
    rows.clear();
    rows.setSorts({});
    columns.clear();
    statistics.clear();
    marks.clear();
    touch();
}

bool RecordSource::hasColumn(int column) const
{
    return column >= 0 && column < columnCount();
}

void RecordSource::setStatistics(int column, const QString &text)
{
    if (statistics[column] == text)
        return;
    statistics[column] = text;
    noteChange();
}

bool RecordSource::hasStatistics() const
{
    return std::any_of(statistics.begin(), statistics.end(), [](const QString &text) { return !text.isEmpty(); });
}

void RecordSource::setTakenColumns(std::function<std::vector<int>()> taken)
{
    takenColumns = std::move(taken);
}

RecordSortKey RecordSource::sortKey(const RecordRow &row, int column, bool descending) const
{
    const QVariant value = valueOf(row.id, column);
    if (!isNumberType(columnType(column))) {
        const QString text = value.toString();
        return {core::SortKey::ofText(text, descending), text};
    }
    if (!value.isValid())
        return {core::SortKey::noValue, QString()};
    if (columnType(column) == QVariant::Double)
        return {core::SortKey::ofReal(value.toDouble(), descending), QString()};
    return {core::SortKey::ofInteger(value.toLongLong(), descending), QString()};
}

void RecordSource::touch()
{
    ++touches;
}

void RecordSource::setRowMarks(const QVector<CTableRowMark> &newMarks, std::vector<QColor> tints)
{
    marks = newMarks;
    markTints = std::move(tints);
    touch();
}

/// Cells here have no backgrounds of their own that could be the table's.
void RecordSource::setPlainBackground(const QColor &) {}

QVariant::Type RecordSource::columnType(int column) const
{
    return hasColumn(column) ? columns[static_cast<std::size_t>(column)].type : QVariant::Invalid;
}

quint64 RecordSource::revision() const
{
    return (touches << touchShift) + changes;
}

quint64 RecordSource::epoch() const
{
    return touches;
}

qint64 RecordSource::rowCount() const
{
    return rows.count();
}

void RecordSource::fetch(qint64 first, int count, GridWindow &gridWindow)
{
    const std::vector<RecordRow *> &shown = rows.shown();
    const auto size = static_cast<qint64>(shown.size());
    const qint64 from = std::clamp<qint64>(first, 0, size);
    const qint64 to = std::clamp<qint64>(first + count, from, size);
    window.clear();
    for (qint64 at = from; at < to; ++at) {
        window.push_back(shown[static_cast<std::size_t>(at)]->shared_from_this());
        rows.noteKnown(*window.back());
    }
    gridWindow.first = first;
    takeWindow(gridWindow);
}

void RecordSource::refetch(GridWindow &gridWindow)
{
    takeWindow(gridWindow);
}

void RecordSource::takeWindow(GridWindow &gridWindow) const
{
    gridWindow.rowCount = rowCount();
    gridWindow.rows.clear();
    for (const RecordRowPtr &row : window)
        gridWindow.rows.push_back({row->gridId, row->version});
}

RecordRow *RecordSource::windowRow(int index) const
{
    const auto at = static_cast<std::size_t>(index);
    return index >= 0 && at < window.size() ? window[at].get() : nullptr;
}

int RecordSource::columnCount() const
{
    return static_cast<int>(columns.size());
}

QString RecordSource::headerText(int column) const
{
    return hasColumn(column) ? columns[static_cast<std::size_t>(column)].header : QString();
}

QString RecordSource::statisticsText(int column) const
{
    return statistics.value(column);
}

} // namespace ZB
