#pragma once

#include <vector>

#include "pagemodel/pagelist.h"
#include "pagemodel/pagelistsort.h"
#include "pagemodel/pagework.h"

namespace KV {

/// Sorts both lists by a column.
class PageSortWork : public PageWork
{
public:
    PageSortWork(PageModelCore &modelCore, int sortColumn, int sortOrder);

    bool isFilter() const override { return false; }
    int progress() const override;

protected:
    bool prepare(const PageDeadline &deadline) override;
    void noted(quint32 slot, bool leaves) override;
    void settle(quint32 slot) override;
    void publish() override;

private:
    enum class Phase
    {
        Capture,
        SortAll,
        SortVisible,
        PlaceAll,
        PlaceVisible,
        Done
    };
    bool captureSome(const PageDeadline &deadline);
    void takeLists();

    const int column;
    const int order;
    PageSortKeys keys;
    PageComparator comparator;
    Phase phase = Phase::Capture;
    quint32 nextSlot = 0;
    bool sameLists = false; ///< the visible list is the all list
    PageListSort allSort;
    PageListSort visibleSort;
    std::vector<quint32> allOrder;
    PageList all;
    PageList visible;
};

} // namespace KV
