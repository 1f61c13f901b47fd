#include "recordtable/recordshell.h"

#include "zb/efiltertype.h"

namespace ZB {

namespace {

constexpr int tickMilliseconds = 100;
constexpr int sortEventId = 33;
constexpr int activatedEvent = 69;
constexpr int currentEvent = 70;
constexpr int menuBits = MenuAll;

} // namespace

RecordShell::RecordShell(CBaseNormalTable *table, int tableId, int options)
    : TableShell(
          table, tableId, options & menuBits,
          std::make_unique<RecordSource>([table](int row, int column) { table->showCell(row, column); },
                                         [table](int row, int column) { return table->cellValue(row, column); })),
      q(table), source(static_cast<RecordSource &>(*rows)), widgets(grid, source)
{
    source.setTakenColumns([this] { return grid->visibleColumns(); });
    grid->setSource(&source);
    timer.setInterval(tickMilliseconds);
    QObject::connect(&timer, &QTimer::timeout, q, [this] { q->onTimer(); });
    connectShell();
    connectGrid();
    applyOptions(options);
    restorePending = true;
    QTimer::singleShot(0, q, [this] { restoreNow(); });
    lookChanged();
}

/// The grid outlives this as a child widget; the source does not.
void RecordShell::shutDown()
{
    store.flush([this] { return shellSetting(); });
    closePopup();
    grid->disconnect(q); // from nobody else: accessibility, say, waits to hear that the grid is destroyed
    grid->disconnect(&widgets);
    search.cancel();
    widgets.clear();
    grid->setSource(nullptr);
}

void RecordShell::connectGrid()
{
    QObject::connect(grid, &GridView::activated, q, [this](quint64 row, int column) {
        q->deliverEvent(activatedEvent, column, idOf(row), QString(), nullptr);
    });
    QObject::connect(grid, &GridView::currentChanged, q, [this](quint64 row) {
        const int current = idOf(row);
        if (current == reportedRow)
            return;
        reportedRow = current;
        q->deliverEvent(currentEvent, grid->currentColumn(), current, QString(), nullptr);
    });
}

void RecordShell::applyOptions(int options)
{
    flags |= options;
    look.oddEvenRows = flags & TableOddEvenRows;
    lookChanged();
    grid->setRowNumbersVisible((flags & TableRowNumbers) && frame.showRowNumbers);
}

int RecordShell::idOf(GridRowId row) const
{
    const RecordRow *found = source.rows.findOnScreen(row);
    return found ? found->id : -1;
}

void RecordShell::changed()
{
    source.noteChange();
    grid->refresh();
}

void RecordShell::setTicking(bool on)
{
    if (on)
        timer.start();
    else
        timer.stop();
}

bool RecordShell::isShowing() const
{
    return source.columnCount() > 0;
}

QVector<QPair<int, int>> RecordShell::currentSorts() const
{
    return source.rows.sorts();
}

/// Who hears the event may delete the table.
void RecordShell::sortBy(int column, int order, bool adding)
{
    const QPointer<QWidget> self(q);
    addingSort = adding;
    q->deliverEvent(sortEventId, order, column, QString(), nullptr);
    if (!self)
        return;
    addingSort = false;
    saveSoon();
}

void RecordShell::setSorts(const QVector<QPair<int, int>> &sorts)
{
    q->setSortColumns(sorts);
}

void RecordShell::clearSort()
{
    q->setSortColumns({});
    saveSoon();
}

void RecordShell::updateMarks()
{
    showMarks(currentSorts(), filteredColumns);
}

void RecordShell::openFilter(int column, const QRect &header)
{
    if (q->columnFilterable(column))
        q->showFilterMenu(column, QRect(grid->mapTo(q, header.topLeft()), header.size()));
}

void RecordShell::takeFilter(int column, int type, QSet<QString> values)
{
    q->onFilterTrigger(column, type, values);
}

QMap<int, FilterConditions> RecordShell::currentFilters() const
{
    return q->filterConditions();
}

bool RecordShell::hasFilters() const
{
    return !filteredColumns.isEmpty();
}

void RecordShell::clearFilters()
{
    q->clearFilter();
}

/// Rows are few enough to be read while they change.
bool RecordShell::canPause() const
{
    return false;
}

bool RecordShell::isPaused() const
{
    return false;
}

void RecordShell::setPaused(bool) {}

void RecordShell::updateStatistics()
{
    grid->setStatisticsVisible(source.hasStatistics() && frame.showStatistics);
}

bool RecordShell::exportTo(const QString &path)
{
    return q->exportData(path);
}

CBaseTableSettingParam RecordShell::tableSetting()
{
    return q->getTableSetting();
}

void RecordShell::applySetting(const CBaseTableSettingParam &setting)
{
    q->setTableSetting(setting);
}

} // namespace ZB
