#include "zb/cbasenormaltable.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QShowEvent>

#include "recordtable/recordshell.h"

namespace ZB {

namespace {

constexpr int scrolledEvent = 17;
constexpr int sortEvent = 33;

} // namespace

CBaseNormalTable::CBaseNormalTable(int tableId, QWidget *parent, int options)
    : CBaseWidget(parent), d(std::make_unique<RecordShell>(this, tableId, options))
{
}

CBaseNormalTable::~CBaseNormalTable()
{
    d->shutDown();
}

int CBaseNormalTable::tableId() const
{
    return d->id;
}

void CBaseNormalTable::addOptions(int options)
{
    d->applyOptions(options);
}

int CBaseNormalTable::options() const
{
    return d->flags;
}

void CBaseNormalTable::setEmptyText(const QString &text)
{
    d->setEmptyText(text);
}

void CBaseNormalTable::setSortColumns(const QVector<QPair<int, int>> &columns)
{
    QVector<QPair<int, int>> known;
    for (const QPair<int, int> &sort : columns)
        if (d->source.hasColumn(sort.first))
            known.append(sort);
    d->source.rows.setSorts(known);
    d->changed();
    d->updateMarks();
}

QVector<QPair<int, int>> CBaseNormalTable::sortColumns() const
{
    return d->currentSorts();
}

void CBaseNormalTable::sortNow()
{
    d->source.rows.shown();
    d->changed();
}

QVector<int> CBaseNormalTable::selectedRows() const
{
    QVector<int> selected;
    for (const GridRowId row : d->grid->selectedRows())
        if (const int id = d->idOf(row); id >= 0)
            selected.append(id);
    return selected;
}

int CBaseNormalTable::currentRow() const
{
    return d->idOf(d->grid->currentRow());
}

void CBaseNormalTable::setCurrentRow(int row)
{
    const RecordRow *found = d->rowOf(row);
    d->grid->refreshNow();
    d->grid->setCurrent(found ? found->gridId : NoGridRow, std::max(0, d->grid->currentColumn()));
}

void CBaseNormalTable::scrollToRow(int row)
{
    d->grid->refreshNow();
    if (const RecordRow *found = d->rowOf(row))
        d->grid->scrollTo(found->gridId);
}

void CBaseNormalTable::updateTable()
{
    d->restoreNow();
    d->applyLook();
    d->grid->refreshNow();
}

void CBaseNormalTable::onTimer() {}

bool CBaseNormalTable::handleEvent(int event, int first, int second, QString text, void *payload)
{
    if (event == scrolledEvent)
        return true;
    if (event == sortEvent) {
        d->applySort(second, first);
        return false;
    }
    return CBaseWidget::handleEvent(event, first, second, text, payload);
}

void CBaseNormalTable::themeChanged()
{
    d->lookStale = true;
    d->applyLook();
    d->closePopup();
    CBaseWidget::themeChanged();
}

void CBaseNormalTable::showCell(int, int) {}

QVariant CBaseNormalTable::cellValue(int row, int column) const
{
    RecordRow *found = d->rowOf(row);
    return found && d->source.hasColumn(column) ? found->cell(column).value : QVariant();
}

void CBaseNormalTable::showFilterMenu(int, QRect) {}

QMap<int, FilterConditions> CBaseNormalTable::filterConditions() const
{
    return {};
}

bool CBaseNormalTable::awaitsSettings() const
{
    return d->restorePending;
}

void CBaseNormalTable::settingsChanged()
{
    d->saveSoon();
}

void CBaseNormalTable::saveSettingsNow()
{
    d->store.flush([this] { return getTableSetting(); });
}

void CBaseNormalTable::clearFilter()
{
    const QList<int> filtered = d->filteredColumns;
    for (const int column : filtered) {
        QSet<QString> none;
        onFilterTrigger(column, FilterExact, none);
    }
}

void CBaseNormalTable::showEvent(QShowEvent *event)
{
    CBaseWidget::showEvent(event);
    d->restoreNow();
    d->applyLook();
    onTimer();
    d->setTicking(true);
}

void CBaseNormalTable::hideEvent(QHideEvent *event)
{
    CBaseWidget::hideEvent(event);
    d->setTicking(false);
}

void CBaseNormalTable::keyPressEvent(QKeyEvent *event)
{
    if (!d->pressKey(*event))
        CBaseWidget::keyPressEvent(event);
}

} // namespace ZB
