// How a change of the visible list shows on the page, and what is asked about it.

#include "pagemodel/pagemodelcore.h"

#include <algorithm>
#include <boost/make_shared.hpp>

namespace KV {

std::string PageModelCore::visibleKey(qint64 index) const
{
    return index >= 0 && index < visible.size() ? rows.key(visible.at(static_cast<int>(index))) : std::string();
}

PageModelCore::Result PageModelCore::pageAfterInsert(int index, quint32 slot) const
{
    const auto result = boost::make_shared<CUpdatePageDataResult>();
    const qint64 end = qint64(startIndex) + pageCount;
    if (pageCount <= 0 || index >= end)
        return result;
    result->enterKey = index < startIndex ? visibleKey(startIndex) : rows.key(slot);
    result->leaveKey = visibleKey(end);
    return result;
}

PageModelCore::Result PageModelCore::pageAfterMove(Move move, quint32 slot) const
{
    const auto result = boost::make_shared<CUpdatePageDataResult>();
    if (pageCount <= 0)
        return result;
    const qint64 end = qint64(startIndex) + pageCount;
    const bool wasInside = isIndexAtShowRegion(move.from);
    const bool isInside = isIndexAtShowRegion(move.to);
    if (isInside) {
        result->enterKey = rows.key(slot);
        if (!wasInside)
            result->leaveKey = visibleKey(move.from < startIndex ? startIndex - 1 : end);
    } else if (wasInside) {
        result->leaveKey = rows.key(slot);
        result->enterKey = visibleKey(move.to < startIndex ? startIndex : end - 1);
    } else if (move.from < startIndex && move.to >= end) {
        result->leaveKey = visibleKey(startIndex - 1);
        result->enterKey = visibleKey(end - 1);
    } else if (move.from >= end && move.to < startIndex) {
        result->enterKey = visibleKey(startIndex);
        result->leaveKey = visibleKey(end);
    }
    return result;
}

/// Where the record went before it was taken off counts for one that came from in front of the page only.
PageModelCore::Result PageModelCore::pageAfterRemoval(Move move, quint32 slot) const
{
    const auto result = boost::make_shared<CUpdatePageDataResult>();
    result->leaveKey = rows.key(slot);
    if (isIndexAtShowRegion(move.from) || (move.from < startIndex && isIndexAtShowRegion(move.to)))
        result->enterKey = visibleKey(qint64(startIndex) + pageCount - 1);
    return result;
}

int PageModelCore::indexIn(const PageList &list, const Page &page) const
{
    const boost::shared_ptr<kdservice::IData> record = page ? page->getIData() : nullptr;
    const quint32 slot = record ? rows.find(*record) : PageRows::noSlot;
    return slot == PageRows::noSlot ? -1 : list.indexOf(slot);
}

int PageModelCore::insertIndexIn(const PageList &list, const Page &page)
{
    const boost::shared_ptr<kdservice::IData> record = page ? page->getIData() : nullptr;
    if (!record)
        return -1;
    const quint32 known = rows.find(*record);
    if (known != PageRows::noSlot)
        return list.insertIndex(known, visibleComparator);
    const quint32 slot = rows.add(record->getKey(), record->hashKey(), page);
    capture(slot);
    const int index = list.insertIndex(slot, visibleComparator);
    rows.remove(slot);
    return index;
}

std::vector<quint32> PageModelCore::pageSlots() const
{
    const qint64 end = std::min<qint64>(visible.size(), qint64(startIndex) + pageCount);
    std::vector<quint32> list;
    for (qint64 index = std::max(0, startIndex); index < end; ++index)
        list.push_back(visible.at(static_cast<int>(index)));
    return list;
}

bool PageModelCore::checkConsistency() const
{
    if (all.size() != rows.size())
        return false;
    for (const quint32 slot : all.slotsInOrder())
        if (rows.find(*rows[slot].record) != slot)
            return false;
    for (const quint32 slot : visible.slotsInOrder())
        if (!all.contains(slot))
            return false;
    return true;
}

} // namespace KV
