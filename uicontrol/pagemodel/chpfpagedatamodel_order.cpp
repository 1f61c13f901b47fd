// Sorts and filters of a paged model, at once or in slices.

#include <chrono>
#include <thread>

#include "pagemodel/chpfpagedatamodel_p.h"

namespace KV {

namespace {

constexpr int doneAtOnce = 4096;  ///< records; about a millisecond's work
constexpr int finishedAtOnce = 2; ///< milliseconds under the lock while a reader waits
constexpr int pauseMicroseconds = 50;

} // namespace

/// Carries on with what was asked for, as long as one call may.
void CHpfPageDataModel::startWork(PageModelCore &c) const
{
    const int milliseconds = workPerCall;
    if (milliseconds < 0 || (milliseconds > 0 && c.all.size() <= doneAtOnce))
        c.stepWork(PageDeadline());
    else if (milliseconds > 0)
        c.stepWork(PageDeadline(milliseconds));
}

/// Piece by piece, with pauses in which other threads that wait for the lock wake up and get it: this one would always
/// be faster to take it again.
void CHpfPageDataModel::finishWork() const
{
    while (!change([](PageModelCore &c) { return c.stepWork(PageDeadline(finishedAtOnce)); }))
        std::this_thread::sleep_for(std::chrono::microseconds(pauseMicroseconds));
}

void CHpfPageDataModel::setAppendSeq(bool append)
{
    change([&](PageModelCore &c) { c.appendSeq = append; });
}

bool CHpfPageDataModel::defaultSeqAscending() const
{
    return shownRead([](const PageModelCore &c) { return c.appendSeq; });
}

void CHpfPageDataModel::sortByColumnID(int column, int order)
{
    ask([&](PageModelCore &c) { c.sortByColumnID(column, order); });
}

void CHpfPageDataModel::reverseSortByColumn(int column)
{
    ask([&](PageModelCore &c) {
        const int order = c.wantedOrder();
        if (column != c.wantedColumn())
            c.sortByColumnID(column, 1);
        else if (order == 0 || order == 1)
            c.sortByColumnID(column, 1 - order);
    });
}

void CHpfPageDataModel::clearSort()
{
    ask([](PageModelCore &c) { c.clearSort(); });
}

int CHpfPageDataModel::sortColumn() const
{
    return shownRead([](const PageModelCore &c) { return c.wantedColumn(); });
}

int CHpfPageDataModel::sortOrder() const
{
    return shownRead([](const PageModelCore &c) { return c.wantedOrder(); });
}

void CHpfPageDataModel::setCodeSortColumn(int column)
{
    settledChange([&](PageModelCore &c) { c.setCodeColumn(column); });
    finishWork();
}

void CHpfPageDataModel::setWorkPerCall(int milliseconds)
{
    workPerCall = milliseconds;
}

bool CHpfPageDataModel::isPending() const
{
    return shownRead([](const PageModelCore &c) { return c.hasWork(); });
}

bool CHpfPageDataModel::step(int milliseconds)
{
    return change([&](PageModelCore &c) { return c.stepWork(PageDeadline(milliseconds)); });
}

int CHpfPageDataModel::progress() const
{
    return shownRead([](const PageModelCore &c) { return c.workProgress(); });
}

bool CHpfPageDataModel::cancel()
{
    return change([](PageModelCore &c) {
        const bool pending = c.hasWork();
        c.cancelWork();
        return pending;
    });
}

void CHpfPageDataModel::filterColumn(const ColumnFilters &filters)
{
    ask([&](PageModelCore &c) { c.filterColumn(filters); });
}

CHpfPageDataModel::ColumnFilters CHpfPageDataModel::columnFilters() const
{
    return shownRead([](const PageModelCore &c) { return c.wantedFilter().columnFilters(); });
}

void CHpfPageDataModel::clearFilter(bool rebuild)
{
    ask([&](PageModelCore &c) { c.clearFilter(rebuild); });
}

void CHpfPageDataModel::setFilter(const QString &text)
{
    change([&](PageModelCore &c) { c.setCodeSearch(text); });
}

QString CHpfPageDataModel::codeSearch() const
{
    return shownRead([](const PageModelCore &c) { return c.wantedFilter().codeText(); });
}

void CHpfPageDataModel::setExFilterSource(int source)
{
    change([&](PageModelCore &) { filterSource = source; });
}

void CHpfPageDataModel::setExFilterStatus(int status)
{
    change([&](PageModelCore &c) { c.setStatus(status); });
}

int CHpfPageDataModel::exFilterSource() const
{
    return shownRead([&](const PageModelCore &) { return filterSource; });
}

int CHpfPageDataModel::exFilterStatus() const
{
    return shownRead([](const PageModelCore &c) { return c.wantedFilter().statusMode(); });
}

} // namespace KV
