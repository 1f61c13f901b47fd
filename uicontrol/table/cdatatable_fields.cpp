#include <algorithm>
#include <array>

#include "table/cdatatable_p.h"
#include "table/columntotals.h"

namespace KV {

/// Takes many changes. Records, entries and rows lie anywhere in memory, and most of the time of a change is waiting
/// for it: for a group of changes everything that they read is fetched, step by step and all of them at once, before
/// the first is taken.
class CDataTable::FieldBatch
{
public:
    explicit FieldBatch(CDataTable &owner) : table(owner) {}
    /// rows: one for each change.
    void take(const FieldChange *changes, int count, int *rows);

private:
    static constexpr int groupSize = 32;

    /// A change whose record was looked at ahead.
    struct Ahead
    {
        const FieldChange *change;
        quint64 hash;
        Entry *entry; ///< the likely one; null when none was found
    };

    void fetch(const FieldChange *changes, int count);
    int take(const Ahead &ahead);
    Entry *entryOf(const Ahead &ahead) const;
    const FieldRoute &routeOf(int field);

    CDataTable &table;
    std::array<Ahead, groupSize> group{};
    std::array<FieldRoute, 4> routes; ///< by the last bits of their fields; field -1 for none
    quint64 removalsBefore = 0;       ///< as the group was looked at
};

void CDataTable::FieldBatch::take(const FieldChange *changes, int count, int *rows)
{
    for (int first = 0; first < count; first += groupSize) {
        const int size = std::min(groupSize, count - first);
        fetch(changes + first, size);
        for (int i = 0; i < size; ++i)
            rows[first + i] = take(group[static_cast<std::size_t>(i)]);
    }
}

void CDataTable::FieldBatch::fetch(const FieldChange *changes, int count)
{
    const auto forEachRecord = [&](auto look) {
        for (int i = 0; i < count; ++i)
            if (changes[i].record)
                look(group[static_cast<std::size_t>(i)], changes[i]);
    };
    const Index &index = *table.keyToRow;
    removalsBefore = table.removals;
    for (int i = 0; i < count; ++i)
        group[static_cast<std::size_t>(i)] = {changes + i, 0, nullptr};
    forEachRecord([](Ahead &, const FieldChange &change) { core::prefetchObject(change.record.get()); });
    forEachRecord([&](Ahead &ahead, const FieldChange &change) {
        ahead.hash = change.record->hashKey();
        index.prefetch(ahead.hash);
    });
    forEachRecord([&](Ahead &ahead, const FieldChange &) {
        ahead.entry = index.likely(ahead.hash);
        if (!ahead.entry)
            return;
        core::prefetch(ahead.entry);
        core::prefetch(&ahead.entry->second.hasChanged); // it lies in two lines of the processor's cache
    });
    forEachRecord([&](Ahead &ahead, const FieldChange &change) {
        if (!ahead.entry || ahead.entry->second.row < 0)
            return;
        core::prefetch(ahead.entry->second.record.get()); // it is let go
        if (const FieldRoute &route = routeOf(change.field); route.total)
            route.total->prefetch(table.placeOf(ahead.entry->second.row));
    });
}

int CDataTable::FieldBatch::take(const Ahead &ahead)
{
    const auto &[record, field] = *ahead.change;
    Entry *const known = record ? entryOf(ahead) : nullptr;
    if (!known)
        return -1;
    if (table.isSure(*known))
        return table.takeField(*known, routeOf(field), record, false);
    const int row = table.takeField(*known, table.routeOf(field), record, false);
    routes.fill(FieldRoute()); // hooks may have done anything
    return row;
}

/// Records may have come and gone since it was looked at.
CDataTable::Entry *CDataTable::FieldBatch::entryOf(const Ahead &ahead) const
{
    const std::string key = ahead.change->record->getKey();
    const bool isThere = ahead.entry && table.removals == removalsBefore && ahead.entry->first == key;
    return isThere ? ahead.entry : table.entryOf(key); // not by the record's own hash, which could be another
}

const CDataTable::FieldRoute &CDataTable::FieldBatch::routeOf(int field)
{
    FieldRoute &route = routes[static_cast<std::size_t>(field) % routes.size()];
    if (route.field != field)
        route = table.routeOf(field);
    return route;
}

int CDataTable::updateDataField(const RecordPtr &record, int field, bool flag)
{
    Entry *known = record ? entryOf(record->getKey()) : nullptr;
    return known ? takeField(*known, routeOf(field), record, flag) : -1;
}

QVector<int> CDataTable::updateDataFields(const QVector<FieldChange> &list)
{
    const QVector<FieldChange> changes = list; // hooks may change what the caller gave
    QVector<int> rows(changes.size());
    FieldBatch(*this).take(changes.constData(), changes.size(), rows.data());
    return rows;
}

/// For a change of the field that is going to be taken: its sum is stale.
CDataTable::FieldRoute CDataTable::routeOf(int field)
{
    const auto summed = summedFields.find(field);
    if (summed == summedFields.end())
        return {field, fieldID2columnID(field), nullptr};
    staleSums.insert(*summed);
    return {field, fieldID2columnID(field), totals->find(field)};
}

/// Whether a change of the record is shown without asking anybody.
bool CDataTable::isSure(const Entry &entry) const
{
    return entry.second.isShown && customFilters.empty() && columnFilters.empty();
}

int CDataTable::takeField(Entry &known, const FieldRoute &route, const RecordPtr &record, bool flag)
{
    if (isSure(known)) {
        known.second.record = record;
        known.second.hasChanged = true;
        return showField(known, route, flag);
    }
    handIn(known, record);
    if (known.second.row < 0)
        return showStored(known, flag);
    const quint64 removalsBefore = removals;
    const bool passes = passData(record);
    Entry *const entry = stillStored(known, record, removalsBefore);
    if (!entry || !passes || entry->second.row < 0)
        return entry ? entry->second.row : keyToRowID(record->getKey());
    if (!recordIn(rowFor(entry->second.row)))
        return showStored(*entry, flag); // it has its row, and waits for its turn in updateDatas()
    setShown(rowFor(entry->second.row), record, true);
    return showField(*entry, routeOf(route.field), flag); // as the hooks have left it
}

int CDataTable::showField(Entry &entry, const FieldRoute &route, bool flag)
{
    const auto &[record, row, isShown, hasChanged] = entry.second;
    const int shownIn = row;
    if (route.total)
        route.total->change(placeOf(row), numberIn(row, record, route.column));
    markCell(row, route.column);
    if (!flag)
        return shownIn;
    const std::string key = entry.first;
    repaint(true);
    return keyToRowID(key); // painting calls hooks
}

} // namespace KV
