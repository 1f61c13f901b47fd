#include "recordtable/recordrows.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace ZB {

RecordRows::RecordRows(KeyOf key) : keyOf(std::move(key)) {}

/// Identities are odd on the screen and serial numbers even, so that they never meet.
GridRowId RecordRows::takeScreenId(quint64 identity, RecordRow *row)
{
    const bool isFree = identity != 0 && !rowOnScreen(identity | 1);
    const GridRowId id = isFree ? identity | 1 : lastSerial += 2;
    rowOfScreenId.insert(id, row);
    return id;
}

RecordRowPtr RecordRows::freshRow()
{
    while (!spare.empty()) {
        const RecordRowPtr row = std::move(spare.back());
        spare.pop_back();
        if (row.use_count() > 1)
            continue; // still on the screen
        row->reset();
        return row;
    }
    return std::make_shared<RecordRow>();
}

RecordRow *RecordRows::add(quint64 identity)
{
    if (nextId == std::numeric_limits<int>::max())
        return nullptr;
    arrival.push_back(freshRow());
    RecordRow &row = *arrival.back();
    row.id = nextId++;
    row.version = nextVersion();
    known.push_back(false);
    row.gridId = takeScreenId(identity, &row);
    touch(row);
    return &row;
}

bool RecordRows::remove(int id)
{
    RecordRow *row = find(id);
    if (!row)
        return false;
    row->gone = true;
    rowOfScreenId.remove(row->gridId, row);
    ++goneCount;
    return true;
}

void RecordRows::clear()
{
    // Rows that nobody knows are not even looked at: tables of thousands are filtered while somebody waits.
    for (int id = 0; id < nextId; ++id) {
        RecordRow *row = isKnown(id) ? peek(id) : nullptr;
        if (row && row->weak_from_this().use_count() == 1)
            row->reset();
        else if (row)
            row->gone = true;
    }
    std::move(arrival.begin(), arrival.end(), std::back_inserter(spare));
    order.clear();
    touchedRows.clear();
    rowOfScreenId.clear();
    arrival.clear();
    known.clear();
    nextId = 0;
    goneCount = 0;
    allStale = true; // what comes now comes all at once
}

int RecordRows::count() const
{
    return static_cast<int>(arrival.size()) - goneCount;
}

/// Rows stand by id, and at the place of their id unless earlier ones have gone.
RecordRow *RecordRows::peek(int id) const
{
    if (id < 0 || id >= nextId)
        return nullptr;
    auto found = arrival.end();
    if (const auto guess = static_cast<std::size_t>(id); guess < arrival.size() && arrival[guess]->id == id)
        found = arrival.begin() + id;
    else
        found = std::lower_bound(arrival.begin(), arrival.end(), id,
                                 [](const RecordRowPtr &row, int wanted) { return row->id < wanted; });
    return found != arrival.end() && (*found)->id == id && !(*found)->gone ? found->get() : nullptr;
}

RecordRow *RecordRows::find(int id)
{
    RecordRow *row = peek(id);
    if (row)
        noteKnown(*row);
    return row;
}

RecordRow *RecordRows::findOnScreen(GridRowId id)
{
    RecordRow *row = rowOnScreen(id);
    if (row)
        noteKnown(*row);
    return row;
}

void RecordRows::setSorts(const Sorts &sorts)
{
    sortColumns = sorts;
    allStale = true;
}

bool RecordRows::isAmongSorts(int column) const
{
    return std::any_of(sortColumns.begin(), sortColumns.end(),
                       [column](const QPair<int, int> &sort) { return sort.first == column; });
}

void RecordRows::touch(RecordRow &row)
{
    if (row.touched)
        return;
    row.touched = true;
    touchedRows.push_back(&row);
}

void RecordRows::touchAll()
{
    allStale = true;
}

const std::vector<RecordRow *> &RecordRows::shown()
{
    if (goneCount > 0)
        dropGone();
    if (allStale)
        sortAll();
    else if (!touchedRows.empty())
        moveTouched();
    if (placesStale)
        for (std::size_t place = 0; place < order.size(); ++place)
            order[place]->place = static_cast<int>(place);
    placesStale = false;
    return order;
}

int RecordRows::placeOf(GridRowId id)
{
    shown();
    const RecordRow *row = findOnScreen(id);
    return row ? row->place : -1;
}

void RecordRows::dropGone()
{
    const auto drop = [](auto &list) {
        list.erase(std::remove_if(list.begin(), list.end(), [](const auto &row) { return row->gone; }), list.end());
    };
    drop(order);
    drop(touchedRows);
    drop(arrival); // last: it owns them
    goneCount = 0;
    placesStale = true;
}

void RecordRows::takeKeys(RecordRow &row) const
{
    row.keys.clear();
    for (const auto &[column, direction] : sortColumns)
        row.keys.push_back(keyOf(row, column, direction != 0));
}

bool RecordRows::goesBefore(const RecordRow &a, const RecordRow &b) const
{
    for (std::size_t at = 0; at < a.keys.size(); ++at) {
        if (a.keys[at].key != b.keys[at].key)
            return a.keys[at].key < b.keys[at].key;
        if (const int text = a.keys[at].text.compare(b.keys[at].text))
            return (text < 0) == (sortColumns[static_cast<int>(at)].second == 0);
    }
    return a.id < b.id;
}

void RecordRows::sortAll()
{
    allStale = false;
    placesStale = true;
    order.clear();
    touchedRows.clear();
    for (const RecordRowPtr &row : arrival) {
        row->touched = false;
        takeKeys(*row);
        order.push_back(row.get());
    }
    if (!sortColumns.isEmpty())
        std::sort(order.begin(), order.end(),
                  [this](const RecordRow *a, const RecordRow *b) { return goesBefore(*a, *b); });
}

/// Takes out the rows whose keys are others, and merges them in again with the new ones.
void RecordRows::moveTouched()
{
    const auto before = [this](const RecordRow *a, const RecordRow *b) { return goesBefore(*a, *b); };
    std::vector<RecordRow *> moved;
    bool leaving = false;
    for (RecordRow *row : touchedRows) {
        const std::vector<RecordSortKey> keys = row->keys;
        const bool isNew = row->place < 0;
        takeKeys(*row);
        row->touched = !isNew && !(keys == row->keys); // for a moment: it leaves its place
        leaving = leaving || row->touched;
        if (isNew || row->touched)
            moved.push_back(row);
    }
    touchedRows.clear();
    if (moved.empty())
        return;
    if (leaving)
        order.erase(std::remove_if(order.begin(), order.end(), [](const RecordRow *row) { return row->touched; }),
                    order.end());
    std::sort(moved.begin(), moved.end(), before);
    const auto rest = static_cast<std::ptrdiff_t>(order.size());
    order.insert(order.end(), moved.begin(), moved.end());
    std::inplace_merge(order.begin(), order.begin() + rest, order.end(), before);
    for (RecordRow *row : moved)
        row->touched = false;
    placesStale = true;
}

} // namespace ZB
