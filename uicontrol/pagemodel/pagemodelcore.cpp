#include "pagemodel/pagemodelcore.h"

#include <boost/make_shared.hpp>

namespace KV {

PageModelCore::PageModelCore(const void *owner_, int dataTypeId, kdservice::EVxTraderType traderType, bool append)
    : columns(traderType), keys(rows), filter(dataTypeId, columns), appendSeq(append), owner(owner_),
      askedFilter(filter), shownFilter(filter), visibleComparator(keys), allComparator(keys)
{
}

PageModelCore::~PageModelCore() = default;

PageModelCore::Result PageModelCore::addData(const Page &page)
{
    const boost::shared_ptr<kdservice::IData> record = page->getIData();
    const std::string key = record->getKey();
    const quint64 hash = record->hashKey();
    quint32 slot = rows.find(key, hash);
    const bool known = slot != PageRows::noSlot;
    if (known && visible.contains(slot))
        return updateData(slot, page);

    // The number goes on for a covered record too, which keeps its own.
    page->setDataSeq(known ? rows[slot].page->getDataSeq() : sequenceCounter);
    ++sequenceCounter;
    if (!known)
        slot = rows.add(key, hash, page);
    noteChange(slot);
    if (known)
        replace(slot, page);
    capture(slot);
    const int index = testAddDataToVisible(slot);
    if (index >= 0)
        addStatColumnData(slot);
    if (known)
        coverInAll(slot);
    else
        placeInAll(slot);
    return index >= 0 ? pageAfterInsert(index, slot) : boost::make_shared<CUpdatePageDataResult>();
}

void PageModelCore::replace(quint32 slot, const Page &page)
{
    keepRemains(slot);
    rows.replace(slot, page);
}

void PageModelCore::coverInAll(quint32 slot)
{
    const int index = all.indexOf(slot);
    logCover(slot, index);
    relocateAllData(index);
}

void PageModelCore::placeInAll(quint32 slot)
{
    if (sortColumn >= 0) {
        const int index = all.insertIndex(slot, visibleComparator);
        all.insert(index, slot);
        logInsertAll(slot, index);
    } else {
        all.insert(appendSeq ? all.size() : 0, slot);
        logUnsorted(slot, appendSeq);
    }
    countChanged = true;
}

int PageModelCore::testAddDataToVisible(quint32 slot)
{
    if (std::exchange(filterSet, false))
        shownFilter = filter;
    if (!filter.isPassAllFilter(rows[slot])) {
        logNotPassed(slot);
        return -1;
    }
    int index = appendSeq ? visible.size() : 0;
    if (sortColumn >= 0)
        index = visible.insertIndex(slot, visibleComparator);
    visible.insert(index, slot);
    if (sortColumn >= 0)
        logInsert(slot, index, visible.size());
    else
        logUnsorted(slot, appendSeq);
    return index;
}

PageModelCore::Result PageModelCore::updateData(quint32 slot, const Page &page)
{
    page->setDataSeq(rows[slot].page->getDataSeq());
    noteChange(slot);
    replace(slot, page);
    capture(slot);
    const int allIndex = all.indexOf(slot);
    relocateAllData(allIndex);

    const int from = visible.indexOf(slot);
    updateStatColumnData(slot);
    const int moved = relocateData(from);
    const int to = moved < 0 ? from : moved;
    const bool passes = filter.isPassExFilter(rows[slot]);
    if (!passes) {
        visible.erase(slot);
        removeStatColumnData(slot);
        countChanged = true;
    }
    logUpdate(slot, allIndex, to, passes);
    return passes ? pageAfterMove({from, to}, slot) : pageAfterRemoval({from, to}, slot);
}

void PageModelCore::removeData(quint32 slot)
{
    noteChange(slot, /* leaves */ true);
    removeStatColumnData(slot);
    visible.erase(slot);
    all.erase(slot);
    keepRemains(slot);
    rows.remove(slot);
    countChanged = true;
}

/// What was asked for holds for the records to come.
void PageModelCore::clear()
{
    works.clear();
    filter = shownFilter = askedFilter;
    keys.setColumn(askedColumn, codeColumn);
    takeSort(askedColumn, askedOrder);
    visible.clear();
    all.clear();
    remains.rows = std::make_unique<PageRows>(std::exchange(rows, PageRows()));
    resetStatMap();
    sequenceCounter = 0;
    countChanged = true;
}

void PageModelCore::columnsChanged()
{
    for (const int column : statistics.enabledColumns())
        statistics.setEnabled(column, true, columns.type(column));
    refreshStatColumnData();
    if (sortColumn >= 0)
        sortAnew();
}

void PageModelCore::setColumnStatEnable(int column, bool enable)
{
    statistics.setEnabled(column, enable, columns.type(column));
    if (statistics.hasSum(column))
        statistics.countColumn(column, visible.slotsInOrder(), rows, columns);
    restartFilters();
}

void PageModelCore::updateStatColumnData(quint32 slot)
{
    statistics.remove(slot);
    statistics.add(slot, rows, columns);
}

void PageModelCore::refreshStatColumnData()
{
    resetStatMap();
    if (statistics.enabledColumns().isEmpty())
        return;
    for (const quint32 slot : visible.slotsInOrder())
        addStatColumnData(slot);
}

} // namespace KV
