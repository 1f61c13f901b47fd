#include "table/tablefinder.h"

#include <QtCore/QElapsedTimer>
#include <algorithm>

#include "table/tablerows.h"

namespace ZB {

namespace {

constexpr int sliceMilliseconds = 8;
constexpr int rowsPerPiece = 32; ///< between two looks at the clock

} // namespace

TableFinder::TableFinder(const TableRows &tableSource) : source(tableSource)
{
    connect(&slice, &QTimer::timeout, this, &TableFinder::searchOn);
}

void TableFinder::start(const Search &newSearch)
{
    search = newSearch;
    ids.clear();
    source.rowIds(0, source.rowCount(), ids);
    const auto begin = std::find(ids.begin(), ids.end(), search.row);
    if (begin == ids.end())
        search.includeStart = true;
    at = begin == ids.end() ? 0 : std::size_t(begin - ids.begin());
    seen = 0;
    wrapped = false;
    slice.start(0);
}

void TableFinder::cancel()
{
    slice.stop();
    ids = {};
}

bool TableFinder::isSearching() const
{
    return slice.isActive();
}

int TableFinder::progress() const
{
    return ids.empty() ? 1000 : int(std::min<std::size_t>(seen * 1000 / ids.size(), 1000));
}

/// The first row is looked at twice: from its start column on, and, when everything else has been seen, up to it.
void TableFinder::searchOn()
{
    QElapsedTimer clock;
    clock.start();
    for (int rows = 0; rows % rowsPerPiece != 0 || clock.elapsed() < sliceMilliseconds; ++rows) {
        if (ids.empty() || seen > ids.size() || search.text.isEmpty() || search.columns.empty()) {
            cancel();
            Q_EMIT notFound();
            return;
        }
        const auto row = source.rowOfId(ids[at]);
        if (row && searchRow(ids[at], *row))
            return;
        advance();
    }
}

void TableFinder::advance()
{
    ++seen;
    const std::size_t last = ids.size() - 1;
    const bool atEnd = at == (search.forward ? last : 0);
    if (atEnd)
        at = search.forward ? 0 : last;
    else
        at = search.forward ? at + 1 : at - 1;
    wrapped = wrapped || atEnd;
}

bool TableFinder::searchRow(quint64 id, IBaseHpfTableData &row)
{
    const bool first = seen == 0;
    const bool last = seen == ids.size();
    const int size = int(search.columns.size());
    const auto start = std::find(search.columns.begin(), search.columns.end(), search.column);
    int place = start == search.columns.end() ? -1 : int(start - search.columns.begin());
    if (search.includeStart)
        place += search.forward ? -1 : 1;
    for (int step = 0; step < size; ++step) {
        const int index = search.forward ? step : size - 1 - step;
        const bool behindStart = search.forward ? index > place : index < place;
        if ((first && !behindStart) || (last && behindStart) || !matches(row, search.columns[std::size_t(index)]) ||
            source.rowOf(id) < 0)
            continue;
        const bool passedEnd = wrapped;
        cancel();
        Q_EMIT found(id, search.columns[std::size_t(index)], passedEnd);
        return true;
    }
    return false;
}

bool TableFinder::matches(IBaseHpfTableData &row, int column) const
{
    if (row.getDisplayQString(column).contains(search.text, Qt::CaseInsensitive))
        return true;
    if (column != search.columns.front())
        return false;
    const QStringList names = row.getIndexFromName();
    return std::any_of(names.begin(), names.end(),
                       [this](const QString &name) { return name.contains(search.text, Qt::CaseInsensitive); });
}

} // namespace ZB
