#include <algorithm>
#include <unordered_map>
#include <utility>

#include "table/cdatatable_p.h"

namespace KV {

CDataTable::Entry *CDataTable::entryOf(const std::string &key) const
{
    return keyToRow->entryOf(key, kdservice::hashOfKey(key));
}

CDataTable::Entry &CDataTable::store(const RecordPtr &record)
{
    std::string key = record->getKey();
    Entry *entry = entryOf(key);
    if (!entry) {
        entry = &*records.emplace(std::move(key), Stored()).first;
        keyToRow->insert(kdservice::hashOfKey(entry->first), entry);
        inOrder.clear();
        ++additions;
    }
    handIn(*entry, record);
    return *entry;
}

/// The row goes on showing what it was given until it is given this one.
void CDataTable::handIn(Entry &entry, const RecordPtr &record)
{
    Stored &stored = entry.second;
    if (stored.isShown && stored.record != record) {
        rowFor(stored.row).shown = std::move(stored.record);
        stored.isShown = false;
    }
    stored.record = record;
}

int CDataTable::updateData(const RecordPtr &record, bool flag)
{
    if (!record)
        return -1;
    store(record);
    return refreshData(record, flag);
}

/// Null for a record whose key is not stored.
CDataTable::Entry *CDataTable::takeOver(const RecordPtr &record)
{
    Entry *entry = record ? entryOf(record->getKey()) : nullptr;
    if (entry)
        handIn(*entry, record);
    return entry;
}

int CDataTable::refreshData(const RecordPtr &record, bool flag)
{
    return testShowData(record, flag);
}

int CDataTable::testShowData(const RecordPtr &record, bool flag)
{
    Entry *entry = takeOver(record);
    return entry ? showStored(*entry, flag) : -1;
}

/// The entry of a record after hooks were called, which may have done anything to what is stored; null when another
/// record or none stands under its key.
CDataTable::Entry *CDataTable::stillStored(Entry &entry, const RecordPtr &record, quint64 removalsBefore) const
{
    Entry *const now = removals == removalsBefore ? &entry : entryOf(record->getKey());
    return now && now->second.record == record ? now : nullptr;
}

int CDataTable::showStored(Entry &known, bool flag)
{
    const RecordPtr record = known.second.record;
    const quint64 removalsBefore = removals;
    const bool passes = passData(record);
    Entry *const entry = stillStored(known, record, removalsBefore);
    if (!entry)
        return keyToRowID(record->getKey());
    int row = entry->second.row;
    if (!passes)
        return row;
    const quint64 forgottenBefore = rowsForgotten;
    if (row >= 0) {
        showRow(record, row);
    } else if ((row = beginRow(record->hashKey())) >= 0) {
        giveRow(*entry, row);
        showRow(record, row);
        endRow();
    }
    repaint(flag);
    const bool isThere = removals == removalsBefore && rowsForgotten == forgottenBefore;
    return isThere ? row : keyToRowID(record->getKey());
}

void CDataTable::refreshDatas()
{
    if (records.empty())
        return;
    forEachStored(nullptr, [this](Entry &entry, const RecordPtr &) { showStored(entry, false); });
    repaint(true); // once for all
}

void CDataTable::takeOrder()
{
    if (inOrder.size() == records.size())
        return;
    inOrder.clear();
    inOrder.reserve(records.size());
    for (Entry &entry : records)
        inOrder.push_back(&entry);
}

/// In the order of their keys. Records may come and go meanwhile. Entries and records lie anywhere in memory: those of
/// the next steps are fetched ahead.
void CDataTable::forEachStored(const std::function<bool(const Entry &)> &wanted,
                               const std::function<void(Entry &, const RecordPtr &)> &visit)
{
    constexpr std::size_t entryAhead = 16;
    constexpr std::size_t recordAhead = 8;
    takeOrder();
    for (std::size_t next = 0; next < inOrder.size();) {
        if (next + entryAhead < inOrder.size())
            core::prefetch(&inOrder[next + entryAhead]->second);
        if (next + recordAhead < inOrder.size())
            core::prefetchObject(inOrder[next + recordAhead]->second.record.get());
        Entry &entry = *inOrder[next++];
        if (wanted && !wanted(entry))
            continue;
        const RecordPtr record = entry.second.record;
        const quint64 before = additions + removals;
        visit(entry, record);
        if (additions + removals != before)
            return forEachStoredBehind(record->getKey(), wanted, visit);
    }
}

/// The rest of a walk in which records have come or gone: without fetching ahead, and without sorting again.
void CDataTable::forEachStoredBehind(const std::string &key, const std::function<bool(const Entry &)> &wanted,
                                     const std::function<void(Entry &, const RecordPtr &)> &visit)
{
    for (auto next = records.upper_bound(key); next != records.end();) {
        const RecordPtr record = next->second.record;
        const quint64 removalsBefore = removals;
        if (!wanted || wanted(*next))
            visit(*next, record);
        next = removals == removalsBefore ? std::next(next) : records.upper_bound(record->getKey());
    }
}

void CDataTable::giveRow(Entry &entry, int row)
{
    sumAnew();
    entry.second.row = row;
    entry.second.isShown = false;
    entry.second.hasChanged = false;
    rowFor(row).entry = &entry;
}

void CDataTable::showRow(const RecordPtr &record, int row)
{
    const int before = std::exchange(showingRow, row);
    showData(record, row, 0);
    showingRow = before;
}

QVector<int> CDataTable::updateDatas(const QVector<RecordPtr> &list)
{
    std::vector<NewRecord> passed;
    const quint64 removalsBefore = removals;
    const QVector<RecordPtr> held = list; // hooks may change what the caller gave
    for (const RecordPtr &record : held) {
        if (!record)
            continue;
        Entry &stored = store(record);
        const quint64 removalsSoFar = removals;
        const bool passes = passData(record);
        Entry *const entry = stillStored(stored, record, removalsSoFar);
        if (!entry || !passes)
            continue;
        if (entry->second.row >= 0)
            showRow(record, entry->second.row);
        else
            passed.push_back({entry, record});
    }
    const QVector<int> rowsOfNew = showNew(withoutRows(passed, removals != removalsBefore));
    sortNow();
    return rowsOfNew;
}

/// The later one of a key counts.
std::vector<CDataTable::NewRecord> CDataTable::withoutRows(const std::vector<NewRecord> &passed, bool lookUp) const
{
    std::vector<NewRecord> found;
    std::unordered_map<const Entry *, std::size_t> placeOf;
    for (const auto &[known, record] : passed) {
        Entry *const entry = lookUp ? entryOf(record->getKey()) : known;
        if (!entry || entry->second.row >= 0)
            continue;
        const auto [place, isNew] = placeOf.emplace(entry, found.size());
        if (isNew)
            found.push_back({entry, record});
        else
            found[place->second].record = record;
    }
    return found;
}

/// All have their rows before the first is shown, so that what a hook does to one of them meets it in its row.
QVector<int> CDataTable::showNew(const std::vector<NewRecord> &newOnes)
{
    QVector<quint64> identities;
    for (const NewRecord &one : newOnes)
        identities.append(one.record->hashKey());
    const QVector<int> rowsOfNew = addRows(identities);
    for (int at = 0; at < rowsOfNew.size(); ++at)
        giveRow(*newOnes[static_cast<std::size_t>(at)].entry, rowsOfNew[at]);
    const quint64 removalsBefore = removals;
    const quint64 forgottenBefore = rowsForgotten;
    const auto isAsBefore = [&] { return removals == removalsBefore && rowsForgotten == forgottenBefore; };
    QVector<int> rowsNow;
    for (int at = 0; at < rowsOfNew.size() && rowsForgotten == forgottenBefore; ++at) {
        const RecordPtr &record = newOnes[static_cast<std::size_t>(at)].record;
        const ShownRow *row = shownRow(rowsOfNew[at]);
        const bool isShown = row && recordIn(*row); // by the hook of another one: that may be a newer record
        if (!isShown && (isAsBefore() || keyToRowID(record->getKey()) == rowsOfNew[at]))
            showRow(record, rowsOfNew[at]);
    }
    if (isAsBefore())
        return rowsOfNew;
    for (const NewRecord &one : newOnes)
        if (const int row = keyToRowID(one.record->getKey()); row >= 0)
            rowsNow.append(row);
    return rowsNow;
}

} // namespace KV
