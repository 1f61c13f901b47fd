#include "table/tableshell.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QVBoxLayout>
#include <algorithm>

#include "popups/findbar.h"
#include "popups/gridbadge.h"
#include "zb/cuiresource.h"
#include "zb/efiltertype.h"
#include "zb/etableflag.h"

namespace ZB {

namespace {

constexpr int pixelsOfCharacter = 7; ///< at 100 %, about

} // namespace

TableShell::TableShell(QWidget *table, int tableId, int flagsOfMenu, std::unique_ptr<TableRows> tableRows)
    : widget(table), id(tableId), menuFlags(flagsOfMenu), rows(std::move(tableRows)), grid(new GridView(table)),
      findBar(new FindBar(table)), overlay(grid), search(grid, findBar, *rows), transfer(overlay.transferStrip()),
      store(tableId)
{
    auto *column = new QVBoxLayout(table);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(grid, 1);
    column->addWidget(findBar);
    grid->setStatisticsTitle(QStringLiteral("合计"));
    setEmptyText(QStringLiteral("没有数据"));
    grid->setRowNumbersVisible(false);
    table->setFocusProxy(grid);
}

TableShell::~TableShell() = default;

void TableShell::connectShell()
{
    const auto on = [this](auto signal, auto action) { QObject::connect(grid, signal, widget, action); };
    on(&GridView::headerClicked, [this](int column, Qt::KeyboardModifiers keys) { sortClicked(column, keys); });
    on(&GridView::filterRequested, [this](int column, const QRect &header) { openFilter(column, header); });
    on(&GridView::columnMoved, [this] { saveSoon(); });
    on(&GridView::columnResized, [this](int column) {
        if (hasColumn(column))
            columns[std::size_t(column)].width = WidthOrigin::User;
        saveSoon();
    });
    on(&GridView::numbersCut, [this](const QSet<int> &cut) { widenForNumbers(cut); });
    on(&GridView::visibleColumnsChanged, [this] { showHiddenFilters(); });
    QObject::connect(overlay.filterBadge(), &GridBadge::clicked, widget, [this] {
        for (const int column : hiddenFilters())
            takeFilter(column, FilterExact, {});
    });
    on(&GridView::contextMenuRequested,
       [this](quint64 row, int column, const QPoint &position) { openRowMenu(row, column, position); });
    on(&GridView::headerMenuRequested,
       [this](int column, const QPoint &position) { openHeaderMenu(column, position); });
    on(&GridView::copyRequested, [this](bool withHeader) { copySelection(withHeader); });
}

/// The first click on a column descends, the next ones turn over.
void TableShell::sortClicked(int column, Qt::KeyboardModifiers modifiers)
{
    int order = 1;
    for (const auto &[sorted, present] : currentSorts())
        if (sorted == column)
            order = present ? 0 : 1;
    sortBy(column, order, modifiers & Qt::ControlModifier);
}

/// A further sort column counts less than those before it; one that is there already stays at its place.
void TableShell::applySort(int column, int order)
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
    setSorts(sorts);
}

bool TableShell::isOffered(const TableCommandEntry &entry) const
{
    if (entry.command == TableCommand::Pause && !canPause())
        return false;
    return entry.menuFlag == 0 || (menuFlags & entry.menuFlag);
}

bool TableShell::pressKey(const QKeyEvent &event)
{
    const QKeySequence pressed(event.key() | int(event.modifiers() & ~Qt::KeypadModifier));
    for (const TableCommandEntry &entry : tableCommands())
        if (entry.keys == pressed && isOffered(entry)) {
            run(entry.command);
            return true;
        }
    if (event.key() != Qt::Key_Escape)
        return false;
    if (overlay.cancelWork())
        return true;
    if (!findBar->isVisible())
        return false;
    search.close();
    return true;
}

void TableShell::run(TableCommand command)
{
    switch (command) {
    case TableCommand::Copy:
    case TableCommand::CopyWithHeader:
        return copySelection(command == TableCommand::CopyWithHeader);
    case TableCommand::SelectAll:
        return grid->selectAll();
    case TableCommand::Find:
        return search.open();
    case TableCommand::FindNext:
    case TableCommand::FindPrevious:
        return search.findNext(command == TableCommand::FindNext);
    case TableCommand::ClearFilter:
        return clearFilters();
    case TableCommand::Columns:
    case TableCommand::FreezeColumns:
        return openColumns(command == TableCommand::FreezeColumns);
    case TableCommand::FitColumns:
        return fitAll();
    case TableCommand::RowMarks:
        return openMarks();
    case TableCommand::Pause:
        return setPaused(!isPaused());
    case TableCommand::Export:
        return askExport();
    }
}

std::vector<ExportColumn> TableShell::exportColumns(const std::vector<int> &shown) const
{
    std::vector<ExportColumn> all;
    for (const int column : shown)
        all.push_back(
            {column, rows->headerText(column), rows->columnType(column),
             std::clamp(int(grid->column(column).width / CUiResource::instance()->scale()) / pixelsOfCharacter, 4,
                        60)});
    return all;
}

/// Blocks of cells go as one table, in the order of the screen; what is not selected between them is blank.
void TableShell::copySelection(bool withHeader)
{
    GridCells cells = grid->selectedTable();
    if (!isShowing() || cells.rows.empty() || cells.columns.empty())
        return;
    const auto count = qint64(cells.rows.size());
    transfer.copy(withHeader, exportColumns(cells.columns), count, rows->rowsOfIds(std::move(cells.rows)),
                  grid->selectedTableCells());
}

} // namespace ZB
