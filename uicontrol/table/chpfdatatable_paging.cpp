// What a page model changes about the table: sorting, filters, pages.

#include <QtCore/QPointer>
#include <algorithm>
#include <utility>

#include "model/chpfdatamodel.h"
#include "pagemodel/chpfpagedatamodel.h"
#include "pagemodel/pagemenugatherer.h"
#include "table/chpfdatatable.h"

namespace KV {

using Base = ZB::CBaseHighPerformanceTable;

namespace {

constexpr int sortEvent = 33;
constexpr int pageEvent = 277;
constexpr int sliceMilliseconds = 8;

/// Appends the texts that the list does not have, in reading order.
void appendMissing(QStringList &texts, const QSet<QString> &more)
{
    QStringList missing = (more - QSet<QString>(texts.begin(), texts.end())).values();
    missing.sort();
    texts += missing;
}

} // namespace

bool CHpfDataTable::handleEvent(int event, int first, int second, QString text, void *payload)
{
    if (!pageModel || (event != sortEvent && event != pageEvent))
        return Base::handleEvent(event, first, second, text, payload);
    if (event == pageEvent) {
        showPage(second, text.toInt());
        return true;
    }
    const QPointer<CHpfDataTable> self(this);
    sortingPages = true;
    const bool handled = Base::handleEvent(event, first, second, text, payload);
    if (!self)
        return handled;
    sortingPages = false;
    if (pageModel)
        sortPages(second);
    return handled;
}

void CHpfDataTable::sortPages(int column)
{
    pageModel->reverseSortByColumn(column);
    markPageSort();
    if (dataModel)
        dataModel->onTimer();
    if (pageModel->isPending())
        pageWork.start(0);
}

void CHpfDataTable::markPageSort()
{
    if (!(tableFlags() & ZB::TablePaged))
        return;
    const int column = pageModel->sortColumn();
    Base::setSortColumns(column < 0 ? QVector<QPair<int, int>>()
                                    : QVector<QPair<int, int>>{{column, pageModel->sortOrder()}});
}

void CHpfDataTable::setSortColumns(const QVector<QPair<int, int>> &columns)
{
    if (!pageModel || sortingPages)
        return Base::setSortColumns(columns);
    if (columns.isEmpty())
        pageModel->clearSort();
    else
        pageModel->sortByColumnID(columns.first().first, columns.first().second);
    markPageSort();
    showPages();
}

void CHpfDataTable::showPage(int firstRow, int rowCount)
{
    pageModel->setStartIndex(firstRow);
    pageModel->setPageCount(rowCount);
    if (dataModel)
        dataModel->onTimer();
    setShownPage(firstRow, rowCount, pageModel->shownSize());
    updateTable();
}

/// The host's data model gets the time to bring the page's rows.
void CHpfDataTable::showPages()
{
    if (dataModel)
        dataModel->onTimer();
    setTotalCount(pageModel->shownSize());
    updateTable();
    if (pageModel->isPending())
        pageWork.start(0);
}

/// One slice; what has come of it is shown.
void CHpfDataTable::workOn()
{
    if (!pageModel)
        return pageWork.stop();
    const quint64 before = pageModel->shownRevision();
    if (pageModel->step(sliceMilliseconds))
        pageWork.stop();
    if (pageModel->shownRevision() != before) {
        markPageSort();
        showPages();
    }
}

/// The number of rows is asked for in any case: another reader may have taken the page model's mark.
void CHpfDataTable::takeTotal()
{
    if (!pageModel)
        return;
    pageModel->totalCountChange();
    if (pageModel->shownSize() != totalCount())
        setTotalCount(pageModel->shownSize());
    if (pageModel->isPending())
        pageWork.start(0);
}

void CHpfDataTable::onFilterTrigger(int column, int type, QSet<QString> &values)
{
    if (!pageModel) {
        waitingFilters.clear();
        return Base::onFilterTrigger(column, type, values);
    }
    if (!columnFilterable(column) || !ZB::isFilterType(type) || type == ZB::FilterExcept)
        return;
    CHpfPageDataModel::ColumnFilters filters = pageModel->columnFilters();
    if (values.isEmpty())
        filters.remove(column);
    else
        filters[column] = {ZB::EFilterType(type), values};
    setPaused(false);
    pageModel->filterColumn(filters);
    settingsChanged();
    showPages();
}

bool CHpfDataTable::restoreFilter(int column, const ZB::FilterConditions &conditions)
{
    if (!(tableFlags() & ZB::TablePaged))
        return Base::restoreFilter(column, conditions);
    if (conditions.size() > 1 || (!conditions.isEmpty() && conditions.first().first == ZB::FilterExcept))
        return false;
    if (pageModel)
        return Base::restoreFilter(column, conditions);
    if (conditions.isEmpty())
        waitingFilters.remove(column);
    else
        waitingFilters[column] = conditions;
    return true;
}

/// One that somebody filters already keeps its filters.
void CHpfDataTable::giveWaitingFilters()
{
    const auto waiting = std::exchange(waitingFilters, {});
    if (!pageModel->columnFilters().isEmpty())
        return;
    for (auto filter = waiting.begin(); filter != waiting.end(); ++filter)
        Base::restoreFilter(filter.key(), *filter);
}

QMap<int, ZB::FilterConditions> CHpfDataTable::columnFilters() const
{
    if (!pageModel)
        return waitingFilters.isEmpty() ? Base::columnFilters() : waitingFilters;
    QMap<int, ZB::FilterConditions> filters;
    const CHpfPageDataModel::ColumnFilters ofPages = pageModel->columnFilters();
    for (auto filter = ofPages.begin(); filter != ofPages.end(); ++filter)
        if (!filter->second.isEmpty())
            filters[filter.key()] = {*filter};
    return filters;
}

void CHpfDataTable::clearFilter()
{
    if (dataModel)
        dataModel->clearFilter();
    if (pageModel)
        pageModel->clearFilter(true);
    waitingFilters.clear();
    Base::clearFilter();
    if (pageModel)
        showPages();
}

bool CHpfDataTable::hasPageColumn(int column) const
{
    return pageModel && pageModel->getFiledIdByColumn(column) != 0;
}

int CHpfDataTable::gatherMenuItems(int column, bool anew, int milliseconds)
{
    if (!hasPageColumn(column))
        return Base::gatherMenuItems(column, anew, milliseconds);
    if (anew || !menuGatherer || menuGatherer->column() != column)
        menuGatherer = std::make_unique<PageMenuGatherer>(*pageModel, column);
    menuGatherer->step(milliseconds);
    return menuGatherer->progress();
}

QStringList CHpfDataTable::getMenuItems(int column)
{
    QStringList items;
    if (menuGatherer && menuGatherer->column() == column && menuGatherer->step(0))
        items = std::exchange(menuGatherer, nullptr)->items();
    else if (hasPageColumn(column))
        items = pageModel->getMenuItems(column);
    else
        items = Base::getMenuItems(column);
    const ZB::FilterConditions conditions = columnFilters().value(column);
    for (const ZB::FilterCondition &condition : conditions)
        if (condition.first == ZB::FilterExact)
            appendMissing(items, condition.second);
    return items;
}

} // namespace KV
