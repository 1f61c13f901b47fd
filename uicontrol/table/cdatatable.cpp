#include "table/cdatatable.h"

#include <QtCore/QElapsedTimer>
#include <algorithm>
#include <functional>
#include <unordered_map>

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

CDataTable::~CDataTable() = default;

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

int CDataTable::showStored(Entry &entry, bool flag)
{
    const RecordPtr record = entry.second.record;
    int row = entry.second.row;
    if (!passData(record))
        return row;
    if (row >= 0) {
        showData(record, row, 0);
    } else if ((row = beginRow(record->hashKey())) >= 0) {
        giveRow(entry, record, row);
        endRow();
    }
    repaint(flag);
    return row;
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
    takeSummed(field, shown);
    markCell(row, fieldID2columnID(field));
    repaint(flag);
    return row;
}

void CDataTable::refreshDatas()
{
    const Records all = getAllDatas(); // showing may lead anywhere
    for (const auto &[key, record] : all)
        refreshData(record, true);
}

void CDataTable::giveRow(Entry &entry, const RecordPtr &record, int row)
{
    entry.second.row = row;
    rowFor(row).entry = &entry;
    showData(record, row, 0);
}

QVector<int> CDataTable::updateDatas(const QVector<RecordPtr> &list)
{
    std::vector<std::pair<Entry *, RecordPtr>> newOnes;
    std::unordered_map<const Entry *, std::size_t> placeOfNew;
    QVector<quint64> identities;
    for (const RecordPtr &record : list) {
        if (!record)
            continue;
        Entry &entry = store(record);
        if (!passData(record))
            continue;
        if (entry.second.row >= 0) {
            showData(record, entry.second.row, 0);
        } else if (const auto [known, isNew] = placeOfNew.emplace(&entry, newOnes.size()); isNew) {
            newOnes.emplace_back(&entry, record);
            identities.append(record->hashKey());
        } else {
            newOnes[known->second].second = record;
        }
    }
    const QVector<int> rowsOfNew = addRows(identities);
    for (int at = 0; at < rowsOfNew.size(); ++at)
        giveRow(*newOnes[static_cast<std::size_t>(at)].first, newOnes[static_cast<std::size_t>(at)].second,
                rowsOfNew[at]);
    sortNow();
    return rowsOfNew;
}

int CDataTable::removeData(const RecordPtr &record)
{
    return record ? removeDataByKey(record->getKey()) : -1;
}

int CDataTable::removeDataByID(int row)
{
    return removeData(getData(row));
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
    rowToKey.erase(rowToKey.begin() + (shownRow(row) - rowToKey.data()));
    records.erase(key);
    return row;
}

void CDataTable::clear()
{
    forgetRows();
    keyToRow->clear();
    records.clear();
    boldColumns.clear();
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
    return *rowToKey.insert(place, {row, nullptr, RecordPtr()});
}

/// No row is any record's any more.
void CDataTable::forgetRows()
{
    for (const ShownRow &row : rowToKey)
        if (row.entry)
            row.entry->second.row = -1;
    rowToKey.clear();
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
