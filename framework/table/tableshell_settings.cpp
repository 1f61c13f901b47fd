#include <QtCore/QScopedValueRollback>
#include <cmath>

#include "table/filterconditions.h"
#include "table/filterlog.h"
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
        const GridColumn shown = grid->column(column);
        CBaseTableColumnSetting setting;
        setting.column = column;
        setting.fieldId = known.info.fieldId;
        setting.name = known.info.name;
        if (known.width == WidthOrigin::User)
            setting.width = int(std::lround(shown.width / scale));
        else if (known.width == WidthOrigin::Program || known.width == WidthOrigin::Arranged)
            setting.width = known.info.defaultWidth; // what it has grown to belongs to what it shows now
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
        Column &known = columns[std::size_t(column)];
        const bool given = known.widthGiven && setting.width == known.info.defaultWidth;
        known.width = given ? WidthOrigin::Arranged : WidthOrigin::User;
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
    setting.frame.filters = filterSettings();
    setting.frame.frozenColumns = grid->frozenColumns();
    setting.columns = columnSettings();
    setting.columnSets = columnSets;
    return setting;
}

void TableShell::applyShellSetting(const CBaseTableSettingParam &setting)
{
    restorePending = false;
    const QScopedValueRollback<bool> applying(applyingSetting, true);
    const TableArrangement arrangement = applyArrangement(setting.columns);
    frame = arrangedFrame(setting.frame, arrangement, int(columns.size()));
    columnSets = setting.columnSets;
    grid->setFrozenColumns(frame.frozenColumns);
    grid->setRowNumbersVisible(frame.showRowNumbers && (flags & TableRowNumbers));
    applyMarks();
    updateStatistics();
    applyFilters(setting, arrangement);
}

/// Of columns that users may filter; other filters are the program's own.
QVector<CBaseTableColumnFilter> TableShell::filterSettings() const
{
    QVector<CBaseTableColumnFilter> filters;
    const auto present = currentFilters();
    for (auto filter = present.begin(); filter != present.end(); ++filter)
        if (canFilter(filter.key()))
            filters.append({filter.key(), plainConditions(*filter)});
    return filters;
}

bool TableShell::canFilter(int column) const
{
    return hasColumn(column) && grid->column(column).filterable;
}

/// Settings that say nothing of filters leave them as they are.
void TableShell::applyFilters(const CBaseTableSettingParam &setting, const TableArrangement &arrangement)
{
    if (!setting.frame.filters)
        return;
    QMap<int, FilterConditions> present;
    for (const CBaseTableColumnFilter &filter : filterSettings())
        present.insert(filter.column, filter.conditions);
    for (const CBaseTableColumnFilter &filter : *setting.frame.filters) {
        const int column = presentColumn(arrangement, filter.column, int(columns.size()));
        if (restoring && present.contains(column))
            continue;
        const FilterConditions former = present.take(column);
        const FilterConditions wanted = plainConditions(filter.conditions);
        if (column < 0)
            logFilter(id, columnName(setting, filter.column), QStringLiteral("is dropped: there is no such column"));
        else if (!canFilter(column) || (former != wanted && !restoreFilter(column, wanted)))
            logFilter(id, columnName(setting, filter.column),
                      QStringLiteral("is dropped: this table has no such filter"));
    }
    const QList<int> unwanted = restoring ? QList<int>() : present.keys();
    for (const int column : unwanted)
        restoreFilter(column, {});
}

bool TableShell::restoreFilter(int column, const FilterConditions &conditions)
{
    const FilterCondition condition = filterToTake(conditions);
    if (conditions.size() < 2)
        takeFilter(column, condition.first, condition.second);
    return conditions.size() < 2;
}

/// Put off until the program has set its columns up. Filters that it has set by then are its own and stay.
void TableShell::restoreNow()
{
    if (!restorePending)
        return;
    restorePending = false;
    const QScopedValueRollback<bool> restores(restoring, true);
    if (const auto saved = store.load())
        applySetting(*saved);
}

void TableShell::saveSoon()
{
    if (!applyingSetting)
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
