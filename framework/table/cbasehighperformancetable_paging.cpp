#include <algorithm>
#include <utility>

#include "popups/pagingbar.h"
#include "table/cbasehighperformancetable_p.h"

namespace ZB {

namespace {

constexpr int pageEvent = 277;

} // namespace

/// A page that the user asks for begins at its top; the one that goes along with new rows stays where it is. Who hears
/// the event may delete the table.
void CBaseHighPerformanceTable::Private::requestPage(int first, int perPage)
{
    const QPointer<CBaseHighPerformanceTable> self(q);
    const bool goesAlong = pagingBar->isAtEnd();
    q->setPaused(false);
    updateFollow();
    grid->setFirstRowNumber(first + 1);
    const bool requestedBefore = std::exchange(requestingPage, true);
    q->deliverEvent(pageEvent, 0, first, QString::number(perPage), nullptr);
    if (!self)
        return;
    requestingPage = requestedBefore;
    if (goesAlong)
        grid->scrollToFollowedEdge();
    else
        grid->scrollToRow(0);
}

void CBaseHighPerformanceTable::setPagingQueryType(int type)
{
    d->queryType = type;
    d->pagingBar->setVisible(d->isPaged() && type == PagingByIndex);
}

int CBaseHighPerformanceTable::pagingQueryType() const
{
    return d->queryType;
}

void CBaseHighPerformanceTable::setTotalCount(int count)
{
    d->total = std::max(0, count);
    d->updatePaging();
    d->pagingBar->setTotalCount(d->total);
}

void CBaseHighPerformanceTable::setShownPage(int firstRow, int rowCount, int totalCount)
{
    if (d->requestingPage)
        return setTotalCount(totalCount);
    setPaused(false);
    d->total = std::max(0, totalCount);
    d->pagingBar->setPage(firstRow, rowCount, d->total);
    d->updateFollow();
    d->grid->setFirstRowNumber(firstRow + 1);
    if (d->pagingBar->isAtEnd())
        d->grid->scrollToFollowedEdge();
    else
        d->grid->scrollToRow(0);
}

void CBaseHighPerformanceTable::setFollowsLastPage(bool follows)
{
    d->followsLastPage = follows;
    d->updatePaging();
}

int CBaseHighPerformanceTable::totalCount() const
{
    return d->total;
}

} // namespace ZB
