#include <cmath>

#include "table/tableshell.h"
#include "zb/cuiresource.h"
#include "zb/etableflag.h"

namespace ZB {

QList<CBaseTableColumnSetting> TableShell::columnSettings() const
{
    const double scale = CUiResource::instance()->scale();
    QList<CBaseTableColumnSetting> list;
    for (const int column : grid->columnOrder()) {
        if (!hasColumn(column))
            continue;
        const Column &known = columns[std::size_t(column)];
        const bool chosen = known.width == WidthOrigin::User || known.width == WidthOrigin::Program;
        const GridColumn shown = grid->column(column);
        CBaseTableColumnSetting setting;
        setting.column = column;
        setting.fieldId = known.info.fieldId;
        setting.name = known.info.name;
        setting.width = chosen ? int(std::lround(shown.width / scale)) : 0;
        setting.visible = shown.visible;
        list.append(setting);
    }
    return list;
}

TableArrangement TableShell::applyArrangement(const QList<CBaseTableColumnSetting> &saved)
{
    TableArrangement arrangement = arranged(saved, columnInfos());
    bool anyVisible = false;
    for (const auto &[column, setting] : arrangement.settings)
        anyVisible = anyVisible || setting.visible;
    for (const auto &[column, setting] : arrangement.settings) {
        grid->setColumnVisible(column, setting.visible || !anyVisible);
        if (setting.width <= 0)
            continue;
        columns[std::size_t(column)].width = WidthOrigin::User;
        grid->setColumnWidth(column, scaled(setting.width));
    }
    grid->setColumnOrder(arrangement.order);
    return arrangement;
}

CBaseTableSettingParam TableShell::shellSetting()
{
    restoreNow();
    CBaseTableSettingParam setting;
    setting.frame = frame;
    setting.frame.sorts = currentSorts();
    setting.frame.frozenColumns = grid->frozenColumns();
    setting.columns = columnSettings();
    setting.columnSets = columnSets;
    return setting;
}

void TableShell::applyShellSetting(const CBaseTableSettingParam &setting)
{
    restorePending = false;
    const TableArrangement arrangement = applyArrangement(setting.columns);
    frame = arrangedFrame(setting.frame, arrangement, int(columns.size()));
    columnSets = setting.columnSets;
    grid->setFrozenColumns(frame.frozenColumns);
    grid->setRowNumbersVisible(frame.showRowNumbers && (flags & TableRowNumbers));
    applyMarks();
    updateStatistics();
}

/// Put off until the program has set its columns up.
void TableShell::restoreNow()
{
    if (!restorePending)
        return;
    restorePending = false;
    if (const auto saved = store.load())
        applySetting(*saved);
}

void TableShell::saveSoon()
{
    store.saveSoon([this] { return tableSetting(); });
}

void TableShell::saveColumnSet(const QString &name)
{
    if (name.isEmpty())
        return;
    restoreNow();
    columnSets[name] = columnSettings();
    frame.columnSet = name;
    saveSoon();
}

bool TableShell::applyColumnSet(const QString &name)
{
    restoreNow();
    const auto set = columnSets.constFind(name);
    if (set == columnSets.constEnd())
        return false;
    applyArrangement(*set);
    frame.columnSet = name;
    saveSoon();
    return true;
}

void TableShell::removeColumnSet(const QString &name)
{
    restoreNow();
    if (columnSets.remove(name) == 0)
        return;
    if (frame.columnSet == name)
        frame.columnSet.clear();
    saveSoon();
}

} // namespace ZB
