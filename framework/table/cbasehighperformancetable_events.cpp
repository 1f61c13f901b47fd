#include <QtGui/QKeyEvent>
#include <algorithm>
#include <utility>

#include "popups/filterpopup.h"
#include "popups/findbar.h"
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
constexpr int pageEvent = 277;

/// The texts of the model's rows, and time for what the table itself has to gather.
class MenuTexts : public HpfDistinctTexts
{
public:
    MenuTexts(CBaseHighPerformanceTable &filteredTable, const IBaseHpfTableModel &model, int menuColumn)
        : HpfDistinctTexts(model, menuColumn), table(filteredTable), column(menuColumn)
    {
    }
    bool step(int milliseconds) override
    {
        gathered = table.gatherMenuItems(column, std::exchange(anew, false), milliseconds);
        return HpfDistinctTexts::step(milliseconds) && gathered >= 1000;
    }
    int progress() const override { return std::min(gathered, HpfDistinctTexts::progress()); }

private:
    CBaseHighPerformanceTable &table;
    const int column;
    bool anew = true;
    int gathered = 0;
};

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
    overlay.workStrip()->setTask(QStringLiteral("正在排序和筛选"));
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

/// A further sort column counts less than those before it; one that is there already stays at its place.
void CBaseHighPerformanceTable::Private::applySort(int column, int order)
{
    if (!hasColumn(column))
        return;
    QVector<QPair<int, int>> sorts;
    if (addingSort)
        sorts = currentSorts();
    const auto known = std::find_if(sorts.begin(), sorts.end(),
                                    [column](const QPair<int, int> &sort) { return sort.first == column; });
    if (known != sorts.end())
        known->second = order;
    else
        sorts.append({column, order});
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

void CBaseHighPerformanceTable::Private::openFilter(int column, const QRect &header)
{
    if (!model || !q->columnFilterable(column))
        return;
    closePopup();
    const auto filters = q->columnFilters();
    auto *box = new FilterPopup(column, model->columnHeader(column), filters.value(column),
                                std::make_unique<MenuTexts>(*q, *model, column), q);
    box->setFiltered(filters.contains(column));
    box->setCountsShown(!isPaged()); // of one page only
    popup = box;
    QObject::connect(box, &FilterPopup::gathered, q, [this, box, column] { box->setTexts(q->getMenuItems(column)); });
    QObject::connect(box, &FilterPopup::chosen, q,
                     [this, column](int type, QSet<QString> values) { q->onFilterTrigger(column, type, values); });
    box->showAt(QRect(grid->mapToGlobal(header.topLeft()), header.size()));
    box->setFocus();
}

/// While its filter box is open, the texts that the box has gathered; otherwise gathers them now.
QStringList CBaseHighPerformanceTable::getMenuItems(int column)
{
    if (const auto *box = qobject_cast<FilterPopup *>(d->popup); box && box->isGathered() && box->column() == column)
        return box->texts();
    QStringList texts;
    if (!d->model || !d->hasColumn(column))
        return texts;
    HpfDistinctTexts gatherer(*d->model, column);
    while (!gatherer.step(1000)) {
    }
    for (const HpfDistinctTexts::Value &value : gatherer.values())
        texts.append(value.text);
    return texts;
}

int CBaseHighPerformanceTable::gatherMenuItems(int, bool, int)
{
    return 1000;
}

int CBaseHighPerformanceTable::workProgress() const
{
    const bool pending = d->model && HpfModelAccess::status(*d->model).pending;
    return pending ? std::min(999, HpfModelAccess::progress(*d->model)) : 1000;
}

void CBaseHighPerformanceTable::cancelWork()
{
    if (d->model)
        HpfModelAccess::cancel(*d->model);
}

void CBaseHighPerformanceTable::onFilterTrigger(int column, int type, QSet<QString> &values)
{
    if (!d->model || !columnFilterable(column) || (type != FilterExact && type != FilterContains))
        return;
    QPair<EFilterType, QSet<QString>> filter(EFilterType(type), values);
    setPaused(false);
    d->model->filterColumn(column, filter);
    d->settle();
    d->updateMarks();
    d->updateStatistics();
}

void CBaseHighPerformanceTable::Private::takeFilter(int column, int type, QSet<QString> values)
{
    q->onFilterTrigger(column, type, values);
}

bool CBaseHighPerformanceTable::Private::hasFilters() const
{
    return isPaged() || !q->columnFilters().isEmpty();
}

void CBaseHighPerformanceTable::Private::clearFilters()
{
    q->clearFilter();
}

QMap<int, IBaseHpfTableModel::ColumnFilter> CBaseHighPerformanceTable::columnFilters() const
{
    return d->model ? d->model->columnFilters() : QMap<int, IBaseHpfTableModel::ColumnFilter>();
}

void CBaseHighPerformanceTable::clearFilter()
{
    setPaused(false);
    if (d->model)
        d->model->clearFilter();
    d->settle();
    d->updateMarks();
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
