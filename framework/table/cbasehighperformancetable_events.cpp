#include <QtGui/QKeyEvent>

#include "popups/gridbadge.h"
#include "popups/pagingbar.h"
#include "popups/taskstrip.h"
#include "table/cbasehighperformancetable_p.h"

namespace ZB {

namespace {

constexpr int scrolledEvent = 17;
constexpr int sortEventId = 33;
constexpr int activatedEvent = 69;
constexpr int currentEvent = 70;

} // namespace

void CBaseHighPerformanceTable::Private::connectGrid()
{
    const auto on = [this](auto signal, auto action) { QObject::connect(grid, signal, q, action); };
    on(&GridView::activated, [this](quint64 row, int column) { activated(row, column); });
    on(&GridView::currentChanged, [this](quint64 row) { currentMoved(row); });
    on(&GridView::unseenRowsChanged, [this] { updateBadges(); });
    QObject::connect(overlay.pauseBadge(), &GridBadge::clicked, q, [this] { q->setPaused(false); });
    QObject::connect(overlay.unseenBadge(), &GridBadge::clicked, q, [this] {
        grid->scrollToFollowedEdge();
        updatePaging();
    });
    QObject::connect(overlay.workStrip(), &TaskStrip::cancelRequested, q, [this] {
        q->cancelWork();
        housekeep();
    });
    QObject::connect(pagingBar, &PagingBar::pageRequested, q,
                     [this](int first, int perPage) { requestPage(first, perPage); });
}

void CBaseHighPerformanceTable::Private::sortBy(int column, int order, bool adding)
{
    const QPointer<CBaseHighPerformanceTable> self(q);
    addingSort = adding;
    q->deliverEvent(sortEventId, order, column, QString(), nullptr);
    if (!self)
        return;
    addingSort = false;
    if (isPaged())
        pagingBar->goToFirst(); // what comes first is what is wanted
    if (self)
        saveSoon();
}

/// The sort event of a paged table only turns the order over, so there the order is set directly.
void CBaseHighPerformanceTable::Private::sortFromMenu(int column, int order)
{
    if (!isPaged())
        return sortBy(column, order, false);
    q->setSortColumns({{column, order}});
    pagingBar->goToFirst();
    saveSoon();
}

void CBaseHighPerformanceTable::Private::clearSort()
{
    q->setSortColumns({});
    if (isPaged() && followsLastPage)
        pagingBar->goToLast();
    saveSoon();
}

void CBaseHighPerformanceTable::Private::setSorts(const QVector<QPair<int, int>> &sorts)
{
    q->setSortColumns(sorts);
}

void CBaseHighPerformanceTable::setSortColumns(const QVector<QPair<int, int>> &sorts)
{
    QVector<QPair<int, int>> known;
    for (const QPair<int, int> &sort : sorts)
        if (d->hasColumn(sort.first))
            known.append(sort);
    setPaused(false);
    if (d->isPaged() || !d->model)
        d->pagedSorts = known;
    else
        d->model->setSortColumns(known);
    d->settle();
    d->updateMarks();
    d->updateFollow();
    d->updatePaging();
}

bool CBaseHighPerformanceTable::handleEvent(int event, int first, int second, QString text, void *payload)
{
    if (event == scrolledEvent)
        return true;
    if (event == sortEventId) {
        d->applySort(second, first);
        return false;
    }
    return CBaseWidget::handleEvent(event, first, second, text, payload);
}

void CBaseHighPerformanceTable::Private::currentMoved(quint64 row)
{
    if (row == reportedRow)
        return;
    reportedRow = row;
    q->deliverEvent(currentEvent, grid->currentColumn(), int(source.rowOf(row)), keyText(source.rowOfId(row)), nullptr);
}

void CBaseHighPerformanceTable::Private::activated(quint64 row, int column)
{
    q->deliverEvent(activatedEvent, column, int(source.rowOf(row)), keyText(source.rowOfId(row)), nullptr);
}

void CBaseHighPerformanceTable::keyPressEvent(QKeyEvent *event)
{
    if (!d->pressKey(*event))
        CBaseWidget::keyPressEvent(event);
}

void CBaseHighPerformanceTable::setPaused(bool paused)
{
    if (paused == d->source.isPaused())
        return;
    if (paused)
        d->source.pause([this] { d->grid->refresh(); });
    else
        d->source.resume();
    d->grid->refresh();
    d->updateBadges();
}

bool CBaseHighPerformanceTable::isPaused() const
{
    return d->source.isPaused();
}

bool CBaseHighPerformanceTable::Private::canPause() const
{
    return true;
}

bool CBaseHighPerformanceTable::Private::isPaused() const
{
    return source.isPaused();
}

void CBaseHighPerformanceTable::Private::setPaused(bool paused)
{
    q->setPaused(paused);
}

} // namespace ZB
