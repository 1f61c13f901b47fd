#include <QtCore/QEventLoop>
#include <QtCore/QPointer>
#include <algorithm>
#include <utility>

#include "popups/pagingbar.h"
#include "popups/taskstrip.h"
#include "table/cbasehighperformancetable_p.h"
#include "table/cellvalue.h"
#include "zb/cbasetablecolumnwidgetdelegate.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

constexpr int ticksPerSecond = 10;
constexpr int settleMilliseconds = 12; ///< what an action may wait for its result to show with the next frame
constexpr int workShownAfterMilliseconds = 250;
constexpr int defaultWidth = 80;

} // namespace

/// The same model again: its columns are others.
void CBaseHighPerformanceTable::Private::install(const boost::shared_ptr<IBaseHpfTableModel> &newShared,
                                                 IBaseHpfTableModel *newModel)
{
    store.flush([this] { return tableSetting(); });
    closePopup();
    search.cancel();
    const boost::shared_ptr<IBaseHpfTableModel> former = shared;
    releaseModel();
    shared = newShared;
    model = newModel;
    source.setModel(model, shared);
    columns.clear();
    grid->setSource(nullptr);
    grid->setSource(&source);
    if (model)
        model->setChangeListener(wakeUp.listener(), q);
    for (int column = 0; model && column < model->columnCount(); ++column)
        initColumn(column);
    frame = CBaseTableFrameSetting();
    columnSets.clear();
    applyMarks();
    restorePending = model != nullptr;
    QTimer::singleShot(0, q, [this] { restoreNow(); });
    updateMarks();
    updateFollow();
    updateStatistics();
    updateBadges();
}

/// A model that is not shared may be gone already when the table goes; its listener is safe to be called after that.
void CBaseHighPerformanceTable::Private::releaseModel()
{
    if (shared)
        shared->setChangeListener(nullptr, q);
    source.setModel(nullptr, nullptr);
    model = nullptr;
    shared.reset();
}

void CBaseHighPerformanceTable::Private::initColumn(int column)
{
    columns.emplace_back();
    columns.back().info.name = model->columnHeader(column);
    columns.back().info.defaultWidth = defaultWidth;
    GridColumn shown;
    shown.width = scaled(defaultWidth);
    shown.filterable = true;
    if (isNumberType(model->columnType(column)))
        shown.alignment = Qt::AlignRight | Qt::AlignVCenter;
    const auto unitFlags = model->columnFlag(column);
    if (unitFlags.testFlag(utils::FormatPercent))
        shown.unitSample = QStringLiteral("%");
    else if (unitFlags.testFlag(utils::FormatUnit))
        shown.unitSample = QStringLiteral("万");
    grid->setColumn(column, shown);
    updateNumeric(column);
}

/// Once per tick of the table's timer, after the table's own step.
void CBaseHighPerformanceTable::Private::housekeep()
{
    if (!model)
        return;
    if (++ticks % ticksPerSecond == 0) {
        model->onSecondTimer();
        updateStatistics();
    }
    source.takeWhenSettled();
    grid->refresh();
    updateMarks();
    updateFollow();
    updatePaging();
    updateWork();
    updateBadges();
    if (ticks % ticksPerSecond == 0)
        askAgain();
}

/// A record that many rows share, an instrument with its name, may change without one of the rows being handed in. What
/// was handed in is painted first, since cells that are asked all together do not flash.
void CBaseHighPerformanceTable::Private::askAgain()
{
    const QPointer<CBaseHighPerformanceTable> self(q);
    grid->refreshNow();
    if (self)
        source.touch();
}

/// Gives a sort or a filter a moment, so that what is quick is seen with the next frame.
void CBaseHighPerformanceTable::Private::settle()
{
    if (!model)
        return;
    HpfModelAccess::step(*model, settleMilliseconds);
    grid->refresh();
}

/// A model that somebody else owns may go at any event, so no other thread can wait for its order. False when the table
/// has gone meanwhile.
bool CBaseHighPerformanceTable::Private::waitForOrder()
{
    const QPointer<CBaseHighPerformanceTable> self(q);
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, &QEventLoop::quit);
    poll.start(settleMilliseconds);
    while (self && model && !shared && !source.isPaused() && !HpfModelAccess::step(*model, 0))
        loop.exec();
    return self;
}

void CBaseHighPerformanceTable::Private::updateMarks()
{
    showMarks(currentSorts(), q->columnFilters().keys());
}

bool CBaseHighPerformanceTable::Private::isShowing() const
{
    return model != nullptr;
}

QVector<QPair<int, int>> CBaseHighPerformanceTable::Private::currentSorts() const
{
    if (isPaged() || !model)
        return pagedSorts;
    QVector<QPair<int, int>> sorts = model->sortColumns();
    sorts.erase(std::remove_if(sorts.begin(), sorts.end(),
                               [this](const QPair<int, int> &sort) { return !hasColumn(sort.first); }),
                sorts.end());
    return sorts;
}

/// Rows in the order of arrival come in at one edge; under a sort they come in anywhere.
void CBaseHighPerformanceTable::Private::updateFollow()
{
    GridFollow follow = GridFollow::None;
    if (isPaged())
        follow = pagingBar->isAtEnd() ? GridFollow::Bottom : GridFollow::None;
    else if (model && model->sortColumns().isEmpty())
        follow = model->appendSeq() ? GridFollow::Bottom : GridFollow::Top;
    if (grid->follow() != follow)
        grid->setFollow(follow);
}

/// The last page goes along with new rows as long as the view is at its end.
void CBaseHighPerformanceTable::Private::updatePaging()
{
    if (!isPaged())
        return;
    const bool before = pagingBar->isAtEnd();
    pagingBar->setFollowsEnd(followsLastPage && pagedSorts.isEmpty() && model && model->appendSeq());
    updateFollow();
    if (!before && pagingBar->isAtEnd())
        grid->scrollToFollowedEdge();
    pagingBar->setHeld(pagingBar->isAtEnd() && (source.isPaused() || !grid->isAtFollowedEdge()));
}

void CBaseHighPerformanceTable::Private::updateStatistics()
{
    bool any = false;
    for (int column = 0; model && column < int(columns.size()) && !any; ++column)
        any = model->columnStatEnable(column) || !source.statisticsText(column).isEmpty();
    grid->setStatisticsVisible(any && frame.showStatistics);
}

void CBaseHighPerformanceTable::Private::updateWork()
{
    const int progress = q->workProgress();
    if (progress >= 1000) {
        workClock.invalidate();
        overlay.workStrip()->hide();
        return;
    }
    HpfModelAccess::step(*model, 0);
    const quint64 number = q->workNumber();
    if (std::exchange(workNumber, number) != number || !workClock.isValid())
        workClock.start();
    overlay.workStrip()->setTask(q->workText());
    overlay.workStrip()->setProgress(progress);
    overlay.workStrip()->setVisible(workClock.elapsed() >= workShownAfterMilliseconds);
}

void CBaseHighPerformanceTable::Private::updateBadges()
{
    QString paused;
    if (source.isPaused())
        paused = QStringLiteral("已暂停刷新 · 新增 %L1 条（Pause 键继续）")
                     .arg(source.arrivalsSincePause() + pagingBar->missedRows());
    overlay.setPauseText(paused);
    const bool top = grid->follow() == GridFollow::Top;
    const qint64 unseen = source.isPaused() ? 0 : grid->unseenRows() + pagingBar->missedRows();
    QString text;
    if (unseen > 0)
        text = QStringLiteral("%1 %L2 条新记录").arg(top ? QStringLiteral("↑") : QStringLiteral("↓")).arg(unseen);
    overlay.setUnseenText(text, top);
}

QString CBaseHighPerformanceTable::Private::keyText(const IBaseHpfTableModel::Row &row) const
{
    return row ? row->qsKey() : QString();
}

} // namespace ZB
