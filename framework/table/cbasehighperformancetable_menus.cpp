#include <QtCore/QDateTime>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMenu>
#include <algorithm>

#include "popups/columnpopup.h"
#include "popups/markpopup.h"
#include "popups/pagingbar.h"
#include "table/cbasehighperformancetable_p.h"
#include "table/cellvalue.h"
#include "zb/cstylesheetcenter.h"
#include "zb/cuiresource.h"
#include "zb/messagebox.h"

namespace ZB {

namespace {

constexpr int valueCharacters = 16; ///< of a value in a menu entry

} // namespace

void CBaseHighPerformanceTable::Private::run(TableCommand command)
{
    switch (command) {
    case TableCommand::Copy:
    case TableCommand::CopyWithHeader:
        return q->copySelection(command == TableCommand::CopyWithHeader);
    case TableCommand::SelectAll:
        return grid->selectAll();
    case TableCommand::Find:
        return search.open();
    case TableCommand::FindNext:
    case TableCommand::FindPrevious:
        return search.findNext(command == TableCommand::FindNext);
    case TableCommand::ClearFilter:
        return q->clearFilter();
    case TableCommand::Columns:
    case TableCommand::FreezeColumns:
        return openColumns(command == TableCommand::FreezeColumns);
    case TableCommand::FitColumns:
        return fitAll();
    case TableCommand::RowMarks:
        return openMarks();
    case TableCommand::Pause:
        return q->setPaused(!q->isPaused());
    case TableCommand::Export:
        return askExport();
    }
}

bool CBaseHighPerformanceTable::Private::isOffered(const TableCommandEntry &entry) const
{
    return entry.menuFlag == 0 || (menuFlags & entry.menuFlag);
}

/// Rows stay where they are while it is open.
QMenu *CBaseHighPerformanceTable::Private::newMenu()
{
    auto *menu = new QMenu(q);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setStyleSheet(CStyleSheetCenter::getStyle(QStringLiteral("QMenu")));
    const auto hold = std::make_shared<GridHold>(grid);
    QObject::connect(menu, &QObject::destroyed, grid, [hold] { *hold = GridHold(); });
    return menu;
}

void CBaseHighPerformanceTable::Private::openRowMenu(quint64 row, int column, const QPoint &position)
{
    QMenu *menu = newMenu();
    addCommands(menu, row, column);
    menu->popup(position);
}

void CBaseHighPerformanceTable::Private::addCommands(QMenu *menu, GridRowId row, int column)
{
    for (const TableCommandEntry &entry : tableCommands()) {
        if (!isOffered(entry) || entry.text.isEmpty())
            continue;
        if (entry.command == TableCommand::ClearFilter)
            addValueFilter(menu, row, column);
        const bool resuming = entry.command == TableCommand::Pause && q->isPaused();
        const QString text = resuming ? QStringLiteral("继续刷新") : entry.text;
        QAction *action = menu->addAction(text + QLatin1Char('\t') + entry.keys.toString(QKeySequence::NativeText), q,
                                          [this, command = entry.command] { run(command); });
        const bool copies = entry.command == TableCommand::Copy || entry.command == TableCommand::CopyWithHeader;
        action->setEnabled(!(copies && !grid->hasSelection()) &&
                           !(entry.command == TableCommand::ClearFilter && !isPaged() && q->columnFilters().isEmpty()));
        if (entry.endsGroup)
            menu->addSeparator();
    }
}

/// Filters by what stands under the cursor.
void CBaseHighPerformanceTable::Private::addValueFilter(QMenu *menu, GridRowId row, int column)
{
    const IBaseHpfTableModel::Row data = row == NoGridRow ? IBaseHpfTableModel::Row() : source.rowOfId(row);
    if (!data || !q->columnFilterable(column))
        return;
    const QString value = data->getFilterQString(column);
    if (value.isEmpty())
        return;
    QString shown = value.size() > valueCharacters ? value.left(valueCharacters) + QStringLiteral("…") : value;
    shown.replace(QLatin1Char('&'), QLatin1String("&&"));
    menu->addAction(QStringLiteral("只看“%1”").arg(shown.simplified()), q, [this, column, value] {
        QSet<QString> values{value};
        q->onFilterTrigger(column, FilterExact, values);
    });
}

void CBaseHighPerformanceTable::Private::openHeaderMenu(int column, const QPoint &position)
{
    if (!hasColumn(column))
        return;
    QMenu *menu = newMenu();
    menu->addAction(QStringLiteral("升序排列"), q, [this, column] { sortFromMenu(column, 0); });
    menu->addAction(QStringLiteral("降序排列"), q, [this, column] { sortFromMenu(column, 1); });
    menu->addAction(QStringLiteral("取消排序"), q, [this] { dropSort(); })->setEnabled(!currentSorts().isEmpty());
    menu->addSeparator();
    if (q->columnFilterable(column)) {
        menu->addAction(QStringLiteral("筛选…\tAlt+↓"), q,
                        [this, column] { openFilter(column, grid->headerRect(column)); });
        menu->addAction(QStringLiteral("清除此列筛选"), q,
                        [this, column] {
                            QSet<QString> none;
                            q->onFilterTrigger(column, FilterExact, none);
                        })
            ->setEnabled(grid->column(column).filtered);
        menu->addSeparator();
    }
    const std::vector<int> visible = grid->visibleColumns();
    const int place = int(std::find(visible.begin(), visible.end(), column) - visible.begin()) + 1;
    menu->addAction(QStringLiteral("最适合的列宽"), q, [this, column] {
        columns[std::size_t(column)].width = WidthOrigin::Fitted;
        grid->fitColumn(column);
        saveSoon();
    });
    menu->addAction(QStringLiteral("冻结到此列"), q, [this, place] { q->setFrozenColumns(place); });
    menu->addAction(QStringLiteral("取消冻结"), q, [this] { q->setFrozenColumns(0); })
        ->setEnabled(grid->frozenColumns() > 0);
    menu->addAction(QStringLiteral("隐藏此列"), q,
                    [this, column] {
                        grid->setColumnVisible(column, false);
                        saveSoon();
                    })
        ->setEnabled(visible.size() > 1);
    menu->addSeparator();
    menu->addAction(QStringLiteral("列设置…"), q, [this] { openColumns(false); })->setEnabled(menuFlags & MenuColumns);
    menu->popup(position);
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

void CBaseHighPerformanceTable::Private::dropSort()
{
    q->setSortColumns({});
    if (isPaged() && followsLastPage)
        pagingBar->goToLast();
    saveSoon();
}

/// Under the header, where the columns that it is about can be seen.
QRect CBaseHighPerformanceTable::Private::popupAnchor() const
{
    return QRect(grid->mapToGlobal(QPoint(0, 0)), QSize(grid->width(), grid->look().headerHeight));
}

void CBaseHighPerformanceTable::Private::closePopup()
{
    if (popup)
        popup->abandon();
    popup.clear();
}

void CBaseHighPerformanceTable::Private::openColumns(bool freezing)
{
    if (!model)
        return;
    restoreNow();
    closePopup();
    auto *box = new ColumnPopup(q);
    popup = box;
    fillColumns(box);
    connectColumns(box);
    box->showAt(popupAnchor(), Qt::RightEdge);
    if (freezing)
        box->focusFrozenColumns();
    else
        box->setFocus();
}

void CBaseHighPerformanceTable::Private::fillColumns(ColumnPopup *box)
{
    ColumnPopupState state;
    for (const int column : grid->columnOrder())
        if (const TableColumnInfo &info = columns[std::size_t(column)].info; info.offered)
            state.columns.push_back({column, info.name, grid->column(column).visible});
    state.frozenColumns = grid->frozenColumns();
    state.rowNumbers = frame.showRowNumbers;
    state.statistics = frame.showStatistics;
    state.columnSets = columnSets.keys();
    state.columnSet = frame.columnSet;
    box->setState(state);
}

void CBaseHighPerformanceTable::Private::connectColumns(ColumnPopup *box)
{
    const auto on = [this, box](auto signal, auto action) { QObject::connect(box, signal, q, action); };
    on(&ColumnPopup::visibleChanged, [this](int column, bool visible) {
        grid->setColumnVisible(column, visible);
        saveSoon();
    });
    on(&ColumnPopup::orderChanged, [this](const std::vector<int> &order) { orderOffered(order); });
    on(&ColumnPopup::frozenColumnsChanged, [this](int count) { q->setFrozenColumns(count); });
    on(&ColumnPopup::rowNumbersChanged, [this](bool shown) {
        frame.showRowNumbers = shown;
        grid->setRowNumbersVisible(shown && (flags & TableRowNumbers));
        saveSoon();
    });
    on(&ColumnPopup::statisticsChanged, [this](bool shown) {
        frame.showStatistics = shown;
        updateStatistics();
        saveSoon();
    });
    on(&ColumnPopup::fitRequested, [this] { fitAll(); });
    on(&ColumnPopup::resetRequested, [this, box] {
        resetColumns();
        fillColumns(box);
    });
    on(&ColumnPopup::setSaved, [this, box](const QString &name) {
        q->saveColumnSet(name);
        fillColumns(box);
    });
    on(&ColumnPopup::setChosen, [this, box](const QString &name) {
        q->applyColumnSet(name);
        fillColumns(box);
    });
    on(&ColumnPopup::setDeleted, [this, box](const QString &name) {
        q->removeColumnSet(name);
        fillColumns(box);
    });
}

void CBaseHighPerformanceTable::Private::openMarks()
{
    if (!model)
        return;
    closePopup();
    std::vector<MarkPopup::Column> numbers;
    for (const int column : grid->columnOrder())
        if (grid->column(column).numeric)
            numbers.push_back({column, columns[std::size_t(column)].info.name});
    auto *box = new MarkPopup(numbers, frame.marks, q);
    popup = box;
    QObject::connect(box, &MarkPopup::marksChanged, q,
                     [this](const QVector<CTableRowMark> &marks) { q->setRowMarks(marks); });
    box->showAt(popupAnchor(), Qt::RightEdge);
}

void CBaseHighPerformanceTable::Private::askExport()
{
    auto *dialog = new QFileDialog(q, QStringLiteral("导出数据"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilters({QStringLiteral("Excel 工作簿 (*.xlsx)"), QStringLiteral("CSV 文件 (*.csv)")});
    dialog->setDefaultSuffix(QStringLiteral("xlsx"));
    dialog->selectFile(
        QStringLiteral("导出_%1.xlsx").arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd_HHmmss"))));
    QObject::connect(dialog, &QFileDialog::filterSelected, dialog, [dialog](const QString &filter) {
        dialog->setDefaultSuffix(filter.contains(QLatin1String("csv")) ? QStringLiteral("csv")
                                                                       : QStringLiteral("xlsx"));
    });
    QObject::connect(
        dialog, &QFileDialog::fileSelected, q,
        [this](const QString &path) {
            const QPointer<CBaseHighPerformanceTable> self(q);
            const bool whole = q->exportData(path);
            if (!self || whole || transfer.wasCancelled())
                return;
            showInformation(q, QStringLiteral("数据导出"), QStringLiteral("导出失败：%1").arg(transfer.errorText()));
        },
        Qt::QueuedConnection);
    dialog->open();
}

} // namespace ZB
