#pragma once

#include <vector>

#include "pagemodel/pagecomparator.h"
#include "rows/chunkedsequence.h"

namespace KV {

/// One ordered list of a paged model: slots in display order. Not thread-safe.
class PageList
{
public:
    int size() const { return sequence.size(); }
    quint32 at(int index) const { return sequence.at(index).slot; }
    bool contains(quint32 slot) const { return sequence.contains(slot); }
    /// -1 when the slot is not in the list. Logarithmic, sorted or not.
    int indexOf(quint32 slot) const { return sequence.indexOf(slot); }
    std::vector<quint32> slotsInOrder() const;

    /// Where the comparator puts a slot that is not in the list: a bisection that ends at the first equal entry it
    /// meets. Sorted lists only.
    int insertIndex(quint32 slot, const PageComparator &comparator) const;

    void insert(int index, quint32 slot) { sequence.insert(index, {0, slot, false}); }
    void erase(quint32 slot) { sequence.erase(slot); }
    void clear() { sequence.clear(); }
    void assign(const std::vector<quint32> &slotList);

    /// Whether the slot at an index stands between its neighbours no longer; never without a sort column.
    bool isMisplaced(int index, const PageComparator &comparator) const;
    /// Moves the slot at an index to its sorted place; the new index, or -1 when that is the old one.
    int relocate(int index, const PageComparator &comparator);

    bool operator==(const PageList &other) const;

private:
    core::ChunkedSequence sequence;
};

} // namespace KV
