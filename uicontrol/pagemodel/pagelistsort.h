#pragma once

#include <vector>

#include "pagemodel/pagecomparator.h"
#include "pagemodel/pagedeadline.h"
#include "rows/steppedkeysort.h"
#include "rows/steppedsort.h"

namespace KV {

/// Sorts the slots of one list, in slices: numbers by their bits, a tenth of a microsecond for each; texts, and numbers
/// that the comparison does not strictly order (doubles that are equal though they differ, missing fields), by a merge
/// sort. The result is the merge sort's either way. Not thread-safe.
class PageListSort
{
public:
    PageListSort() = default;
    PageListSort(std::vector<quint32> unsorted, const PageSortKeys &sortKeys, const PageComparator &order,
                 bool descending);

    /// True when the slots are sorted.
    bool step(const PageDeadline &deadline);
    /// The slots, once they are sorted.
    std::vector<quint32> take() { return std::move(slotList); }
    /// In thousandths.
    int progress() const;

private:
    enum class Phase
    {
        TakeSequences,
        SortBySequence,
        TakeValues,
        SortByValue,
        SettleTies,
        Merge,
        Done
    };
    bool stepPhase(const PageDeadline &deadline);
    bool takeSequences(const PageDeadline &deadline);
    bool takeValues(const PageDeadline &deadline);
    bool settleTies(const PageDeadline &deadline);
    bool merge(const PageDeadline &deadline);
    void fallBack();
    bool isOrdered(const PageSortKey &key) const;
    quint64 sequenceKey(const PageSortKey &key) const;
    quint64 valueKey(const PageSortKey &key) const;

    std::vector<quint32> slotList;
    const PageSortKeys *keys = nullptr;
    const PageComparator *comparator = nullptr;
    bool isDescending = false;
    Phase phase = Phase::Done;
    std::size_t next = 0;
    std::vector<core::SteppedKeySort::Item> items;
    core::SteppedKeySort keySort;
    core::SteppedSort mergeSort;
};

} // namespace KV
