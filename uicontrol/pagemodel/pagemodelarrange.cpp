// Sorts and filters: what is asked for, and how it is carried out beside the lists.

#include <algorithm>

#include "pagemodel/pagefilterwork.h"
#include "pagemodel/pagemodelcore.h"
#include "pagemodel/pagesortwork.h"

namespace KV {

/// A sort takes the place of a sort that stands just before it, carried out or not, and a filter that of a filter.
void PageModelCore::ask(std::unique_ptr<PageWork> work)
{
    if (hasWork() && works.back()->isFilter() == work->isFilter())
        works.pop_back();
    if (work->isFilter()) {
        filter = shownFilter;
        filterSet = false;
    }
    works.push_back(std::move(work));
}

void PageModelCore::filterColumn(const PageColumnFilters &filters)
{
    askedFilter.setColumnFilters(filters);
    ask(std::make_unique<PageFilterWork>(*this, askedFilter, PageFilterWork::Mode::Passing));
}

void PageModelCore::clearFilter(bool rebuild)
{
    askedFilter.setColumnFilters({});
    if (rebuild && (hasWork() || !(visible == all)))
        ask(std::make_unique<PageFilterWork>(*this, askedFilter, PageFilterWork::Mode::Everything));
    else if (!filtersPending())
        filter = shownFilter = askedFilter;
    countChanged = true;
}

void PageModelCore::sortByColumnID(int column, int order)
{
    logSort(column, order);
    if (column < 0)
        clearSort();
    askedColumn = column;
    askedOrder = order;
    if (column < 0)
        takeSort(column, order);
    else
        ask(std::make_unique<PageSortWork>(*this, column, order));
}

/// A filter that is under way starts again, since it puts its records where the sort says.
void PageModelCore::clearSort()
{
    std::deque<std::unique_ptr<PageWork>> dropped;
    dropped.swap(works);
    askedColumn = PageComparator::NoColumn;
    takeSort(askedColumn, askedOrder);
    for (const std::unique_ptr<PageWork> &work : dropped)
        if (work->isFilter())
            ask(std::make_unique<PageFilterWork>(*this, static_cast<PageFilterWork &>(*work)));
}

void PageModelCore::setCodeColumn(int column)
{
    const int former = std::exchange(codeColumn, column);
    if (sortColumn >= 0 && former != column && (sortColumn == former || sortColumn == column))
        sortAnew();
}

void PageModelCore::sortAnew()
{
    ask(std::make_unique<PageSortWork>(*this, sortColumn, sortOrder));
}

/// Those that are under way start again, since what they go by has changed.
void PageModelCore::restartFilters()
{
    for (std::unique_ptr<PageWork> &work : works)
        if (work->isFilter())
            work = std::make_unique<PageFilterWork>(*this, static_cast<PageFilterWork &>(*work));
}

void PageModelCore::setStatus(int mode)
{
    askedFilter.setStatus(mode);
    filterAsked();
}

void PageModelCore::setCodeSearch(const QString &text)
{
    askedFilter.setCodeSearch(text);
    filterAsked();
}

void PageModelCore::filterAsked()
{
    if (filtersPending())
        return;
    filter = askedFilter;
    filterSet = true;
}

bool PageModelCore::filtersPending() const
{
    return std::any_of(works.begin(), works.end(), [](const auto &work) { return work->isFilter(); });
}

bool PageModelCore::stepWork(const PageDeadline &deadline)
{
    while (hasWork()) {
        if (!works.front()->step(deadline))
            return false;
        works.pop_front();
    }
    return true;
}

int PageModelCore::workProgress() const
{
    return hasWork() ? works.front()->progress() : 1000;
}

void PageModelCore::cancelWork()
{
    works.clear();
    askedColumn = sortColumn;
    askedOrder = sortOrder;
    askedFilter = filter;
}

void PageModelCore::takeSort(int column, int order)
{
    ++revision;
    sortColumn = column;
    sortOrder = order;
    visibleComparator.set(column, order);
    allComparator.set(column, order);
    if (column < 0)
        keys.setColumn(column, codeColumn);
}

/// What was asked for since counts from now on, unless another filter is to come.
void PageModelCore::takeFilter(const PageFilter &carriedOut)
{
    const auto filters = std::count_if(works.begin(), works.end(), [](const auto &work) { return work->isFilter(); });
    shownFilter = carriedOut;
    filter = filters > 1 ? carriedOut : askedFilter;
    filterSet = true;
    ++revision;
    countChanged = true;
}

} // namespace KV
