#include "pagemodel/pagelistsort.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace KV {

namespace {

using State = PageSortKey::State;

constexpr std::size_t slotsPerPiece = 4096; ///< between two looks at the clock
constexpr std::size_t longestRun = 4096;    ///< of equal numbers that is sorted in one go
constexpr quint64 emptyKey = std::numeric_limits<quint64>::max();
constexpr quint64 signBit = quint64(1) << 63;
constexpr quint64 sequenceMask = 0xffffffffu;

/// Numbers in their order; both zeros are the same.
quint64 bitsOf(const PageSortKey &key)
{
    if (key.state == State::Integer)
        return static_cast<quint64>(key.integer) ^ signBit;
    const double value = key.real + 0.0;
    quint64 bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits & signBit ? ~bits : bits | signBit;
}

} // namespace

PageListSort::PageListSort(std::vector<quint32> unsorted, const PageSortKeys &sortKeys, const PageComparator &order,
                           bool descending)
    : slotList(std::move(unsorted)), keys(&sortKeys), comparator(&order), isDescending(descending),
      phase(slotList.empty() ? Phase::Done : Phase::TakeSequences)
{
}

bool PageListSort::step(const PageDeadline &deadline)
{
    while (phase != Phase::Done && stepPhase(deadline))
        if (deadline.isDue())
            break;
    return phase == Phase::Done;
}

/// False when the phase is not over.
bool PageListSort::stepPhase(const PageDeadline &deadline)
{
    const auto isDue = [&] { return deadline.isDue(); };
    switch (phase) {
    case Phase::TakeSequences:
        return takeSequences(deadline);
    case Phase::TakeValues:
        return takeValues(deadline);
    case Phase::SettleTies:
        return settleTies(deadline);
    case Phase::Merge:
        return merge(deadline);
    default:
        if (!keySort.step(isDue))
            return false;
        items = keySort.take();
        phase = phase == Phase::SortBySequence ? Phase::TakeValues : Phase::SettleTies;
        return true;
    }
}

/// Whether numbers alone tell where a record stands among those like the first.
bool PageListSort::isOrdered(const PageSortKey &key) const
{
    const PageSortKey &first = (*keys)[slotList.front()];
    const bool sameState = key.state == State::Empty || key.state == State::Integer || key.state == State::Real;
    return sameState && key.kind == first.kind && (key.state == State::Empty || valueKey(key) != emptyKey);
}

bool PageListSort::takeSequences(const PageDeadline &deadline)
{
    if (next == 0)
        items.reserve(slotList.size());
    while (next < slotList.size()) {
        const PageSortKey &key = (*keys)[slotList[next]];
        if (!isOrdered(key)) {
            fallBack();
            return true;
        }
        items.push_back({sequenceKey(key), slotList[next]});
        if (++next % slotsPerPiece == 0 && deadline.isDue())
            return false;
    }
    next = 0;
    keySort = core::SteppedKeySort(std::move(items));
    phase = Phase::SortBySequence;
    return true;
}

bool PageListSort::takeValues(const PageDeadline &deadline)
{
    while (next < items.size()) {
        items[next].key = valueKey((*keys)[items[next].slot]);
        if (++next % slotsPerPiece == 0 && deadline.isDue())
            return false;
    }
    next = 0;
    keySort = core::SteppedKeySort(std::move(items));
    phase = Phase::SortByValue;
    return true;
}

/// Orders, and deals, of one value and sequence are told apart by their keys.
bool PageListSort::settleTies(const PageDeadline &deadline)
{
    const bool tiesBroken = (*keys)[slotList.front()].kind != PageSortKey::Kind::Other;
    while (next < items.size()) {
        std::size_t end = next + 1;
        while (tiesBroken && end < items.size() && items[end].key == items[next].key && end - next <= longestRun &&
               sequenceKey((*keys)[items[end].slot]) == sequenceKey((*keys)[items[next].slot]))
            ++end;
        const std::size_t before = next;
        next = end;
        const bool isLast = end == items.size();
        // In front of the following value by more than what counts as equal, or it is the same.
        const bool apart =
            isLast || items[end].key == items[before].key || comparator->differ(items[before].slot, items[end].slot);
        if (!apart || end - before > longestRun) {
            fallBack();
            return true;
        }
        if (end - before > 1)
            std::stable_sort(items.begin() + static_cast<std::ptrdiff_t>(before),
                             items.begin() + static_cast<std::ptrdiff_t>(end),
                             [this](const auto &a, const auto &b) { return comparator->compare(a.slot, b.slot) < 0; });
        if (before / slotsPerPiece != end / slotsPerPiece && deadline.isDue())
            return false;
    }
    std::transform(items.begin(), items.end(), slotList.begin(), [](const auto &item) { return item.slot; });
    phase = Phase::Done;
    return true;
}

void PageListSort::fallBack()
{
    items = {};
    mergeSort = core::SteppedSort(std::move(slotList));
    phase = Phase::Merge;
}

bool PageListSort::merge(const PageDeadline &deadline)
{
    if (!mergeSort.step([this](quint32 a, quint32 b) { return comparator->compare(a, b); },
                        [&] { return deadline.isDue(); }))
        return false;
    slotList = mergeSort.take();
    phase = Phase::Done;
    return true;
}

/// The same for all where no sequence breaks ties.
quint64 PageListSort::sequenceKey(const PageSortKey &key) const
{
    if (key.kind == PageSortKey::Kind::Other)
        return 0;
    if (key.entrySequence == std::numeric_limits<int>::max())
        return sequenceMask + 1;
    const quint64 bits = static_cast<quint32>(key.entrySequence) ^ (quint64(1) << 31);
    return isDescending ? ~bits & sequenceMask : bits;
}

quint64 PageListSort::valueKey(const PageSortKey &key) const
{
    if (key.state == State::Empty)
        return emptyKey;
    return isDescending ? ~bitsOf(key) : bitsOf(key);
}

int PageListSort::progress() const
{
    if (phase == Phase::Merge)
        return mergeSort.progress();
    return 1000 * static_cast<int>(phase) / static_cast<int>(Phase::Done);
}

} // namespace KV
