#include "pagemodel/pagesortwork.h"

#include <algorithm>
#include <utility>

#include "pagemodel/pagemodelcore.h"

namespace KV {

namespace {

constexpr int capturedShare = 400; ///< of a thousand: what reading the values takes of the time
constexpr int sortedShare = 950;

} // namespace

PageSortWork::PageSortWork(PageModelCore &modelCore, int sortColumn, int sortOrder)
    : PageWork(modelCore), column(sortColumn), order(sortOrder), keys(modelCore.rows), comparator(keys)
{
    comparator.set(column, order);
    keys.setColumn(column, modelCore.codeColumn);
}

/// Taking the lists and placing them is done in one go: about ten nanoseconds for each record.
bool PageSortWork::prepare(const PageDeadline &deadline)
{
    for (; phase != Phase::Done; phase = static_cast<Phase>(static_cast<int>(phase) + 1)) {
        if (phase == Phase::Capture) {
            if (!captureSome(deadline))
                return false;
            takeLists();
        } else if (phase == Phase::SortAll) {
            if (!allSort.step(deadline))
                return false;
        } else if (phase == Phase::SortVisible) {
            if (!visibleSort.step(deadline))
                return false;
        } else if (phase == Phase::PlaceAll) {
            allOrder = allSort.take();
            all.assign(allOrder);
        } else {
            visible.assign(sameLists ? allOrder : visibleSort.take());
        }
        if (deadline.isDue()) {
            phase = static_cast<Phase>(static_cast<int>(phase) + 1);
            return phase == Phase::Done;
        }
    }
    return true;
}

bool PageSortWork::captureSome(const PageDeadline &deadline)
{
    while (nextSlot < core.rows.slotLimit()) {
        if (core.rows[nextSlot].record && !isNoted(nextSlot))
            keys.capture(nextSlot, core.columns);
        if (++nextSlot % slotsPerPiece == 0 && deadline.isDue())
            return false;
    }
    return true;
}

/// Records that have come or changed since are not among those whose values were read: they are brought in at the end.
void PageSortWork::takeLists()
{
    std::vector<quint32> allSlots = core.all.slotsInOrder();
    std::vector<quint32> visibleSlots = core.visible.slotsInOrder();
    sameLists = allSlots == visibleSlots;
    dropNoted(allSlots);
    dropNoted(visibleSlots);
    if (sameLists)
        visibleSlots.clear();
    allSort = PageListSort(std::move(allSlots), keys, comparator, order != 0);
    visibleSort = PageListSort(std::move(visibleSlots), keys, comparator, order != 0);
}

void PageSortWork::noted(quint32 slot, bool leaves)
{
    if (leaves)
        keys.keepKey(slot);
    keys.forgetRecord(slot);
}

void PageSortWork::settle(quint32 slot)
{
    all.erase(slot);
    visible.erase(slot);
    if (!core.all.contains(slot))
        return;
    keys.capture(slot, core.columns);
    all.insert(all.insertIndex(slot, comparator), slot);
    if (core.visible.contains(slot))
        visible.insert(visible.insertIndex(slot, comparator), slot);
}

void PageSortWork::publish()
{
    keys.forgetKept();
    core.keys.swap(keys);
    std::swap(core.all, all);
    std::swap(core.visible, visible);
    core.takeSort(column, order);
}

int PageSortWork::progress() const
{
    if (phase == Phase::Capture)
        return static_cast<int>(capturedShare * qint64(nextSlot) / std::max<qint64>(1, core.rows.slotLimit()));
    if (phase == Phase::SortAll)
        return capturedShare + (sortedShare - capturedShare) * allSort.progress() / 1000;
    return sortedShare;
}

} // namespace KV
