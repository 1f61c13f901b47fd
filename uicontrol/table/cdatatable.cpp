#include "table/cdatatable.h"

#include <QtCore/QElapsedTimer>

#include "model/cfieldformat.h"

namespace KV {

namespace {

constexpr int tableOptions = 511;
constexpr int alternatingRows = 1024;
constexpr int activatedEvent = 69;
constexpr int currentEvent = 70;

} // namespace

CDataTable::CDataTable(int tableId, int metaIdOfRecords, QWidget *parent)
    : ZB::COddEvenRowTable(tableId, parent, tableOptions), metaID(metaIdOfRecords),
      sinceSums(std::make_unique<QElapsedTimer>())
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

int CDataTable::updateData(const RecordPtr &record, bool flag)
{
    if (!record)
        return -1;
    records[record->getKey()] = record;
    return refreshData(record, flag);
}

/// False for a record whose key is not stored.
bool CDataTable::takeOver(const RecordPtr &record)
{
    const auto stored = record ? records.find(record->getKey()) : records.end();
    if (stored == records.end())
        return false;
    stored->second = record;
    return true;
}

int CDataTable::refreshData(const RecordPtr &record, bool flag)
{
    return takeOver(record) ? testShowData(record, flag) : -1;
}

int CDataTable::testShowData(const RecordPtr &record, bool flag)
{
    const std::string key = record->getKey();
    int row = keyToRowID(key);
    if (!passData(record))
        return row;
    if (row >= 0) {
        showData(record, row, 0);
    } else if ((row = beginRow(record->hashKey())) >= 0) {
        giveRow(key, record, row);
        endRow();
    }
    repaint(flag);
    return row;
}

int CDataTable::updateDataField(const RecordPtr &record, int field, bool flag)
{
    if (!takeOver(record))
        return -1;
    const int row = keyToRowID(record->getKey());
    if (row < 0)
        return testShowData(record, flag);
    if (!passData(record))
        return row;
    shownRecords[row] = record;
    markCell(row, fieldID2columnID(field));
    repaint(flag);
    return row;
}

void CDataTable::refreshDatas()
{
    const Records all = records; // showing may lead anywhere
    for (const auto &[key, record] : all)
        refreshData(record, true);
}

void CDataTable::giveRow(const std::string &key, const RecordPtr &record, int row)
{
    keyToRow[key] = row;
    rowToKey.emplace_hint(rowToKey.end(), row, key);
    showData(record, row, 0);
}

QVector<int> CDataTable::updateDatas(const QVector<RecordPtr> &list)
{
    std::map<std::string, int> placeOfNew;
    QVector<RecordPtr> newRecords;
    QVector<quint64> identities;
    for (const RecordPtr &record : list) {
        if (!record)
            continue;
        const std::string key = record->getKey();
        records[key] = record;
        if (!passData(record))
            continue;
        if (const int row = keyToRowID(key); row >= 0) {
            showData(record, row, 0);
        } else if (const auto known = placeOfNew.find(key); known != placeOfNew.end()) {
            newRecords[known->second] = record;
        } else {
            placeOfNew.emplace(key, newRecords.size());
            newRecords.append(record);
            identities.append(record->hashKey());
        }
    }
    const QVector<int> rowsOfNew = addRows(identities);
    for (int at = 0; at < rowsOfNew.size(); ++at)
        giveRow(newRecords[at]->getKey(), newRecords[at], rowsOfNew[at]);
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
    const auto found = keyToRow.find(key);
    if (found == keyToRow.end())
        return -1;
    const int row = found->second;
    removeRow(row);
    keyToRow.erase(found);
    rowToKey.erase(row);
    records.erase(key);
    shownRecords.remove(row);
    return row;
}

void CDataTable::clear()
{
    records.clear();
    keyToRow.clear();
    rowToKey.clear();
    boldColumns.clear();
    shownRecords.clear();
    clearRows();
}

int CDataTable::size() const
{
    return static_cast<int>(records.size());
}

CDataTable::Records CDataTable::getAllDatas() const
{
    return records;
}

int CDataTable::keyToRowID(std::string key) const
{
    const auto found = keyToRow.find(key);
    return found == keyToRow.end() ? -1 : found->second;
}

CDataTable::RecordPtr CDataTable::getData(int row)
{
    return getDataConst(row);
}

CDataTable::RecordPtr CDataTable::getDataConst(int row) const
{
    const auto key = rowToKey.find(row);
    const auto found = records.find(key == rowToKey.end() ? std::string() : key->second);
    return found == records.end() ? RecordPtr() : found->second;
}

CDataTable::RecordPtr CDataTable::getDataByKey(std::string key)
{
    const auto found = records.find(key);
    return found == records.end() ? RecordPtr() : found->second;
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
    const auto key = rowToKey.find(second);
    if ((event == activatedEvent || event == currentEvent) && text.isEmpty() && key != rowToKey.end() &&
        !key->second.empty())
        return deliverEvent(event, first, second, QString::fromStdString(key->second), payload);
    return ZB::COddEvenRowTable::handleEvent(event, first, second, text, payload);
}

} // namespace KV
