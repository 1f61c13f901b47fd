#include "table/cdatatable.h"

#include <QtCore/QElapsedTimer>
#include <algorithm>
#include <functional>
#include <unordered_map>
#include <utility>

#include "model/cfieldformat.h"
#include "rows/pointerindex.h"
#include "table/columntotals.h"

namespace KV {

namespace {

constexpr int tableOptions = 511;
constexpr int alternatingRows = 1024;
constexpr int activatedEvent = 69;
constexpr int currentEvent = 70;

quint64 hashOf(const std::string &key)
{
    return std::hash<std::string>()(key);
}

} // namespace

class CDataTable::Index : public core::PointerIndex<Entry>
{
};

CDataTable::CDataTable(int tableId, int metaIdOfRecords, QWidget *parent)
    : ZB::COddEvenRowTable(tableId, parent, tableOptions), keyToRow(std::make_unique<Index>()), metaID(metaIdOfRecords),
      totals(std::make_unique<ColumnTotals>()), sinceSums(std::make_unique<QElapsedTimer>())
{
    addOptions(alternatingRows);
    CDataTable::initColumns(getMetaIDs(metaID, tradeType, {}));
}

CDataTable::~CDataTable()
{
    saveSettingsNow();
}

void CDataTable::setImmediateUpdate(bool immediate)
{
    immediateUpdate = immediate;
}

void CDataTable::repaint(bool flag)
{
    if (flag && immediateUpdate)
        updateTable();
}

CDataTable::Entry *CDataTable::entryOf(const std::string &key) const
{
    return keyToRow->find(hashOf(key), [&key](const Entry &entry) { return entry.first == key; });
}

CDataTable::Entry &CDataTable::store(const RecordPtr &record)
{
    std::string key = record->getKey();
    Entry *entry = entryOf(key);
    if (!entry) {
        entry = &*records.emplace(std::move(key), Stored()).first;
        keyToRow->insert(hashOf(entry->first), entry);
    }
    entry->second.record = record;
    return *entry;
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
        entry->second.record = record;
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

int CDataTable::updateDataField(const RecordPtr &record, int field, bool flag)
{
    Entry *const entry = takeOver(record);
    if (!entry)
        return -1;
    const int row = entry->second.row;
    if (row < 0)
        return showStored(*entry, flag);
    if (!passData(record))
        return row;
    ShownRow &shown = rowFor(row);
    shown.shown = record;
    shown.hasChanged = true;
    const int column = fieldID2columnID(field);
    takeSummed(field, column, shown);
    markCell(row, column);
    repaint(flag);
    return row;
}

void CDataTable::refreshDatas()
{
    if (records.empty())
        return;
    forEachStored([this](Entry &entry) { showStored(entry, false); });
    repaint(true); // once for all
}

/// In the order of their keys. Records may come and go meanwhile.
void CDataTable::forEachStored(const std::function<void(Entry &)> &visit)
{
    for (auto next = records.begin(); next != records.end();) {
        const RecordPtr record = next->second.record;
        const quint64 removalsBefore = removals;
        visit(*next);
        next = removals == removalsBefore ? std::next(next) : records.upper_bound(record->getKey());
    }
}

void CDataTable::giveRow(Entry &entry, int row)
{
    sumAnew();
    entry.second.row = row;
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
    for (const RecordPtr &record : list) {
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
        if (isAsBefore() || keyToRowID(record->getKey()) == rowsOfNew[at])
            showRow(record, rowsOfNew[at]);
    }
    if (isAsBefore())
        return rowsOfNew;
    for (const NewRecord &one : newOnes)
        if (const int row = keyToRowID(one.record->getKey()); row >= 0)
            rowsNow.append(row);
    return rowsNow;
}

int CDataTable::removeData(const RecordPtr &record)
{
    return record ? removeDataByKey(record->getKey()) : -1;
}

int CDataTable::removeDataByID(int row)
{
    const ShownRow *shown = shownRow(row);
    return shown && shown->entry ? removeDataByKey(shown->entry->first) : -1;
}

int CDataTable::removeDataByKey(std::string key)
{
    Entry *entry = entryOf(key);
    if (!entry || entry->second.row < 0)
        return -1;
    const int row = entry->second.row;
    sumAnew();
    removeRow(row);
    keyToRow->remove(hashOf(key), entry);
    ++removals;
    rowToKey.erase(rowToKey.begin() + (shownRow(row) - rowToKey.data()));
    records.erase(key);
    return row;
}

void CDataTable::clear()
{
    forgetRows();
    keyToRow->clear();
    ++removals;
    records.clear();
    boldColumns.clear();
    boldKnown = false;
    clearRows();
}

int CDataTable::size() const
{
    return static_cast<int>(records.size());
}

CDataTable::Records CDataTable::getAllDatas() const
{
    Records all;
    for (const auto &[key, stored] : records)
        all.emplace_hint(all.end(), key, stored.record);
    return all;
}

int CDataTable::keyToRowID(std::string key) const
{
    const Entry *entry = entryOf(key);
    return entry ? entry->second.row : -1;
}

/// Rows stand by number, and at the place of their number unless earlier ones have gone.
const CDataTable::ShownRow *CDataTable::shownRow(int row) const
{
    const auto guess = static_cast<std::size_t>(row);
    if (row >= 0 && guess < rowToKey.size() && rowToKey[guess].row == row)
        return &rowToKey[guess];
    const auto found = std::lower_bound(rowToKey.begin(), rowToKey.end(), row,
                                        [](const ShownRow &one, int wanted) { return one.row < wanted; });
    return found != rowToKey.end() && found->row == row ? &*found : nullptr;
}

CDataTable::ShownRow &CDataTable::rowFor(int row)
{
    if (const ShownRow *known = shownRow(row))
        return rowToKey[static_cast<std::size_t>(known - rowToKey.data())];
    const auto place = std::lower_bound(rowToKey.begin(), rowToKey.end(), row,
                                        [](const ShownRow &one, int wanted) { return one.row < wanted; });
    return *rowToKey.insert(place, {row, false, nullptr, RecordPtr()});
}

/// No row is any record's any more.
void CDataTable::forgetRows()
{
    for (const ShownRow &row : rowToKey)
        if (row.entry)
            row.entry->second.row = -1;
    rowToKey.clear();
    ++rowsForgotten;
    sumAnew();
}

CDataTable::RecordPtr CDataTable::getData(int row)
{
    return getDataConst(row);
}

CDataTable::RecordPtr CDataTable::getDataConst(int row) const
{
    const ShownRow *shown = shownRow(row);
    const Entry *entry = shown ? shown->entry : entryOf(std::string());
    return entry ? entry->second.record : RecordPtr();
}

CDataTable::RecordPtr CDataTable::getDataByKey(std::string key)
{
    const Entry *entry = entryOf(key);
    return entry ? entry->second.record : RecordPtr();
}

int CDataTable::getMetaID() const
{
    return metaID;
}

kdservice::EVxTraderType CDataTable::getTradeType() const
{
    return tradeType;
}

bool CDataTable::isColBoldFont(int column) const
{
    return boldColumns.count(column) > 0;
}

bool CDataTable::handleEvent(int event, int first, int second, QString text, void *payload)
{
    const ShownRow *row = shownRow(second);
    if ((event == activatedEvent || event == currentEvent) && text.isEmpty() && row && row->entry &&
        !row->entry->first.empty())
        return deliverEvent(event, first, second, QString::fromStdString(row->entry->first), payload);
    return ZB::COddEvenRowTable::handleEvent(event, first, second, text, payload);
}

} // namespace KV
