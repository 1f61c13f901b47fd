#include "zb/cbasehighperformancetable.h"

#include <QtGui/QShowEvent>
#include <QtWidgets/QLayout>

#include "popups/pagingbar.h"
#include "table/cbasehighperformancetable_p.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

constexpr int timerMilliseconds = 100;

/// A model that somebody else owns, as a shared pointer that does not own it either.
boost::shared_ptr<IBaseHpfTableModel> notOwned(IBaseHpfTableModel *model)
{
    return boost::shared_ptr<IBaseHpfTableModel>(model, [](IBaseHpfTableModel *) {});
}

} // namespace

CBaseHighPerformanceTable::Private::Private(CBaseHighPerformanceTable *table, int tableId, int flagsOfMenu)
    : TableShell(table, tableId, flagsOfMenu, std::make_unique<TableSource>()), q(table),
      source(static_cast<TableSource &>(*rows)), pagingBar(new PagingBar(table))
{
    table->layout()->addWidget(pagingBar);
    timer.setInterval(timerMilliseconds);
    connectShell();
    connectGrid();
    lookChanged();
}

/// The grid outlives this as a child widget; the source does not.
void CBaseHighPerformanceTable::Private::shutDown()
{
    store.flush([this] { return q->CBaseHighPerformanceTable::getTableSetting(); });
    closePopup();
    grid->disconnect(q); // from nobody else: accessibility, say, waits to hear that the grid is destroyed
    search.cancel();
    grid->setSource(nullptr);
    releaseModel();
}

CBaseHighPerformanceTable::CBaseHighPerformanceTable(int tableId, QWidget *parent, int menuFlags)
    : CBaseWidget(parent), d(std::make_unique<Private>(this, tableId, menuFlags))
{
    connect(&d->timer, &QTimer::timeout, this, [this] {
        const QPointer<CBaseHighPerformanceTable> self(this);
        onTimer();
        if (self)
            d->housekeep();
    });
    connect(&d->wakeUp, &ModelWakeUp::woken, this, [this] { d->grid->refresh(); });
}

CBaseHighPerformanceTable::~CBaseHighPerformanceTable()
{
    d->shutDown();
}

int CBaseHighPerformanceTable::tableId() const
{
    return d->id;
}

void CBaseHighPerformanceTable::addTableFlag(int flag)
{
    d->flags |= flag;
    d->look.oddEvenRows = d->flags & TableOddEvenRows;
    d->lookChanged();
    d->grid->setRowNumbersVisible((d->flags & TableRowNumbers) && d->frame.showRowNumbers);
    d->pagingBar->setVisible(d->isPaged() && d->queryType == PagingByIndex);
    d->updateFollow();
}

int CBaseHighPerformanceTable::tableFlags() const
{
    return d->flags;
}

bool CBaseHighPerformanceTable::Private::isPaged() const
{
    return flags & TablePaged;
}

void CBaseHighPerformanceTable::setDataModel(IBaseHpfTableModel *model)
{
    d->install(nullptr, model);
}

void CBaseHighPerformanceTable::installDataModel(const boost::shared_ptr<IBaseHpfTableModel> &model)
{
    d->install(model, model.get());
}

boost::shared_ptr<IBaseHpfTableModel> CBaseHighPerformanceTable::baseDataModel() const
{
    if (d->shared || !d->model)
        return d->shared;
    return notOwned(d->model);
}

void CBaseHighPerformanceTable::updateTable()
{
    d->restoreNow();
    d->applyLook();
    d->settle();
    if (d->model)
        d->model->setUpdated(false);
    d->updateMarks();
    d->updateStatistics();
    d->grid->refreshNow();
}

void CBaseHighPerformanceTable::onTimer()
{
    if (d->model)
        d->model->onTimer();
}

void CBaseHighPerformanceTable::clear()
{
    if (d->model)
        d->model->clear();
    updateTable();
}

void CBaseHighPerformanceTable::paintEvent(QPaintEvent *event)
{
    CBaseWidget::paintEvent(event);
}

void CBaseHighPerformanceTable::resizeEvent(QResizeEvent *event)
{
    CBaseWidget::resizeEvent(event);
}

void CBaseHighPerformanceTable::showEvent(QShowEvent *event)
{
    CBaseWidget::showEvent(event);
    d->restoreNow();
    d->applyLook();
    d->housekeep();
    d->timer.start();
}

void CBaseHighPerformanceTable::hideEvent(QHideEvent *event)
{
    CBaseWidget::hideEvent(event);
    d->timer.stop();
}

} // namespace ZB
