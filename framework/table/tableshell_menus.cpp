#include <QtWidgets/QMenu>
#include <algorithm>

#include "table/tableshell.h"
#include "zb/cstylesheetcenter.h"
#include "zb/efiltertype.h"
#include "zb/etableflag.h"

namespace ZB {

namespace {

constexpr int valueCharacters = 16; ///< of a value in a menu entry

} // namespace

/// Rows stay where they are while it is open.
QMenu *TableShell::newMenu()
{
    auto *menu = new QMenu(widget);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setStyleSheet(CStyleSheetCenter::getStyle(QStringLiteral("QMenu")));
    const auto hold = std::make_shared<GridHold>(grid);
    QObject::connect(menu, &QObject::destroyed, grid, [hold] { *hold = GridHold(); });
    return menu;
}

void TableShell::openRowMenu(quint64 row, int column, const QPoint &position)
{
    QMenu *menu = newMenu();
    addCommands(menu, row, column);
    menu->popup(position);
}

void TableShell::addCommands(QMenu *menu, GridRowId row, int column)
{
    for (const TableCommandEntry &entry : tableCommands()) {
        if (!isOffered(entry) || entry.text.isEmpty())
            continue;
        if (entry.command == TableCommand::ClearFilter)
            addValueFilter(menu, row, column);
        const bool resuming = entry.command == TableCommand::Pause && isPaused();
        const QString text = resuming ? QStringLiteral("继续刷新") : entry.text;
        QAction *action = menu->addAction(text + QLatin1Char('\t') + entry.keys.toString(QKeySequence::NativeText),
                                          widget, [this, command = entry.command] { run(command); });
        const bool copies = entry.command == TableCommand::Copy || entry.command == TableCommand::CopyWithHeader;
        action->setEnabled(!(copies && !grid->hasSelection()) &&
                           !(entry.command == TableCommand::ClearFilter && !hasFilters()));
        if (entry.endsGroup)
            menu->addSeparator();
    }
}

/// Filters by what stands under the cursor.
void TableShell::addValueFilter(QMenu *menu, GridRowId row, int column)
{
    const TableRows::Row under = row == NoGridRow ? TableRows::Row() : rows->rowOfId(row);
    if (!under || !hasColumn(column) || !grid->column(column).filterable)
        return;
    const QString value = under->getFilterQString(column);
    if (value.isEmpty())
        return;
    QString shown = value.size() > valueCharacters ? value.left(valueCharacters) + QStringLiteral("…") : value;
    shown.replace(QLatin1Char('&'), QLatin1String("&&"));
    menu->addAction(QStringLiteral("只看“%1”").arg(shown.simplified()), widget,
                    [this, column, value] { takeFilter(column, FilterExact, {value}); });
}

void TableShell::sortFromMenu(int column, int order)
{
    sortBy(column, order, false);
}

void TableShell::addSorts(QMenu *menu, int column)
{
    menu->addAction(QStringLiteral("升序排列"), widget, [this, column] { sortFromMenu(column, 0); });
    menu->addAction(QStringLiteral("降序排列"), widget, [this, column] { sortFromMenu(column, 1); });
    menu->addAction(QStringLiteral("取消排序"), widget, [this] { clearSort(); })->setEnabled(!currentSorts().isEmpty());
    menu->addSeparator();
}

void TableShell::addFilters(QMenu *menu, int column)
{
    if (!grid->column(column).filterable)
        return;
    menu->addAction(QStringLiteral("筛选…\tAlt+↓"), widget,
                    [this, column] { openFilter(column, grid->headerRect(column)); });
    menu->addAction(QStringLiteral("清除此列筛选"), widget, [this, column] { takeFilter(column, FilterExact, {}); })
        ->setEnabled(grid->column(column).filtered);
    menu->addSeparator();
}

void TableShell::openHeaderMenu(int column, const QPoint &position)
{
    if (!hasColumn(column))
        return;
    QMenu *menu = newMenu();
    addSorts(menu, column);
    addFilters(menu, column);
    const std::vector<int> visible = grid->visibleColumns();
    const int place = int(std::find(visible.begin(), visible.end(), column) - visible.begin()) + 1;
    menu->addAction(QStringLiteral("最适合的列宽"), widget, [this, column] {
        columns[std::size_t(column)].width = WidthOrigin::Fitted;
        grid->fitColumn(column);
        saveSoon();
    });
    menu->addAction(QStringLiteral("冻结到此列"), widget, [this, place] { setFrozenColumns(place); });
    menu->addAction(QStringLiteral("取消冻结"), widget, [this] { setFrozenColumns(0); })
        ->setEnabled(grid->frozenColumns() > 0);
    menu->addAction(QStringLiteral("隐藏此列"), widget,
                    [this, column] {
                        grid->setColumnVisible(column, false);
                        saveSoon();
                    })
        ->setEnabled(visible.size() > 1);
    menu->addSeparator();
    menu->addAction(QStringLiteral("列设置…"), widget, [this] { openColumns(false); })
        ->setEnabled(menuFlags & MenuColumns);
    menu->popup(position);
}

} // namespace ZB
