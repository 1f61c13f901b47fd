#include "table/cdatatable.h"

#include <QtCore/QElapsedTimer>
#include <algorithm>

#include "model/cfieldformat.h"
#include "table/cdatatable_p.h"
#include "table/columntotals.h"

namespace KV {

namespace {

constexpr int tableOptions = 511;
constexpr int alternatingRows = 1024;
constexpr int activatedEvent = 69;
constexpr int currentEvent = 70;

} // namespace

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
    keyToRow->remove(kdservice::hashOfKey(key), entry);
    inOrder.clear();
    ++removals;
    rowToKey.erase(rowToKey.begin() + (shownRow(row) - rowToKey.data()));
    records.erase(key);
    return row;
}

void CDataTable::clear()
{
    forgetRows();
    keyToRow->clear();
    inOrder.clear();
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
    if (rowToKey.empty() || row > rowToKey.back().row)
        return rowToKey.emplace_back(ShownRow{row, false, nullptr, RecordPtr()});
    if (const ShownRow *known = shownRow(row))
        return rowToKey[static_cast<std::size_t>(known - rowToKey.data())];
    const auto place = std::lower_bound(rowToKey.begin(), rowToKey.end(), row,
                                        [](const ShownRow &one, int wanted) { return one.row < wanted; });
    return *rowToKey.insert(place, {row, false, nullptr, RecordPtr()});
}

/// Of a row that stands in rowToKey.
std::size_t CDataTable::placeOf(int row) const
{
    const bool nothingHasGone = rowToKey.back().row + 1 == static_cast<int>(rowToKey.size());
    return static_cast<std::size_t>(nothingHasGone ? row : shownRow(row) - rowToKey.data());
}

const CDataTable::RecordPtr &CDataTable::recordIn(const ShownRow &row)
{
    return row.entry && row.entry->second.isShown ? row.entry->second.record : row.shown;
}

bool CDataTable::hasChanged(const ShownRow &row)
{
    return row.entry ? row.entry->second.hasChanged : row.hasChanged;
}

void CDataTable::setShown(ShownRow &row, const RecordPtr &record, bool hasChanged)
{
    Stored *stored = row.entry ? &row.entry->second : nullptr;
    const bool isStored = stored && stored->record == record;
    row.shown = isStored ? RecordPtr() : record;
    row.hasChanged = hasChanged;
    if (stored) {
        stored->isShown = isStored;
        stored->hasChanged = hasChanged;
    }
}

/// No row is any record's any more.
void CDataTable::forgetRows()
{
    for (ShownRow &row : rowToKey)
        if (row.entry)
            row.entry->second = {std::move(row.entry->second.record)};
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
