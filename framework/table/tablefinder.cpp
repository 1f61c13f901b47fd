#include "table/tablefinder.h"

#include <QtCore/QElapsedTimer>
#include <algorithm>

#include "table/tablerows.h"

namespace ZB {

namespace {

constexpr int sliceMilliseconds = 8;
constexpr int chunkSize = 128;

} // namespace

TableFinder::TableFinder(const TableRows &tableSource) : source(tableSource)
{
    connect(&slice, &QTimer::timeout, this, &TableFinder::searchOn);
}

void TableFinder::start(const Search &newSearch)
{
    search = newSearch;
    chunk.clear();
    const qint64 row = source.rowOf(search.row);
    begin = std::max<qint64>(row, 0);
    if (row < 0)
        search.includeStart = true;
    at = begin;
    seen = 0;
    wrapped = false;
    slice.start(0);
}

void TableFinder::cancel()
{
    slice.stop();
    chunk.clear();
}

bool TableFinder::isSearching() const
{
    return slice.isActive();
}

int TableFinder::progress() const
{
    const qint64 count = source.rowCount();
    return count ? int(std::min<qint64>(seen * 1000 / count, 1000)) : 1000;
}

/// The first row is looked at twice: from its start column on, and, when everything else has been seen, up to it.
void TableFinder::searchOn()
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < sliceMilliseconds) {
        const qint64 count = source.rowCount();
        if (count == 0 || seen > count || search.text.isEmpty() || search.columns.empty()) {
            cancel();
            Q_EMIT notFound();
            return;
        }
        if (!rowIsReached()) {
            advance();
            continue;
        }
        const HpfShownRow row = chunk[std::size_t(at - chunkFirst)];
        if (searchRow(row, seen == 0, seen == count))
            return;
        advance();
    }
}

bool TableFinder::rowIsReached()
{
    if (at < chunkFirst || at >= chunkFirst + qint64(chunk.size())) {
        chunkFirst = search.forward ? at : std::max<qint64>(0, at - chunkSize + 1);
        source.fetchRows(chunkFirst, chunkSize, chunk);
    }
    return at >= chunkFirst && at < chunkFirst + qint64(chunk.size());
}

void TableFinder::advance()
{
    ++seen;
    const qint64 count = source.rowCount();
    at += search.forward ? 1 : -1;
    if (at < 0 || at >= count) {
        at = search.forward ? 0 : std::max<qint64>(0, count - 1);
        wrapped = true;
    }
}

bool TableFinder::searchRow(const HpfShownRow &row, bool first, bool last)
{
    const int size = int(search.columns.size());
    const auto start = std::find(search.columns.begin(), search.columns.end(), search.column);
    int place = start == search.columns.end() ? -1 : int(start - search.columns.begin());
    if (search.includeStart)
        place += search.forward ? -1 : 1;
    for (int step = 0; step < size; ++step) {
        const int index = search.forward ? step : size - 1 - step;
        const bool behindStart = search.forward ? index > place : index < place;
        if ((first && !behindStart) || (last && behindStart) || !row.row ||
            !matches(row, search.columns[std::size_t(index)]))
            continue;
        const bool passedEnd = wrapped;
        cancel();
        Q_EMIT found(row.id, search.columns[std::size_t(index)], passedEnd);
        return true;
    }
    return false;
}

bool TableFinder::matches(const HpfShownRow &row, int column) const
{
    if (row.row->getDisplayQString(column).contains(search.text, Qt::CaseInsensitive))
        return true;
    if (column != search.columns.front())
        return false;
    const QStringList names = row.row->getIndexFromName();
    return std::any_of(names.begin(), names.end(),
                       [this](const QString &name) { return name.contains(search.text, Qt::CaseInsensitive); });
}

} // namespace ZB
