#include <algorithm>
#include <cmath>

#include "table/cbasehighperformancetable_p.h"
#include "zb/cuiresource.h"

namespace ZB {

QList<CBaseTableColumnSetting> CBaseHighPerformanceTable::Private::columnSettings() const
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

TableArrangement CBaseHighPerformanceTable::Private::applyArrangement(const QList<CBaseTableColumnSetting> &saved)
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

CBaseTableSettingParam CBaseHighPerformanceTable::getTableSetting()
{
    d->restoreNow();
    CBaseTableSettingParam setting;
    setting.frame = d->frame;
    setting.frame.sorts = d->currentSorts();
    setting.frame.frozenColumns = d->grid->frozenColumns();
    setting.columns = d->columnSettings();
    setting.columnSets = d->columnSets;
    return setting;
}

void CBaseHighPerformanceTable::setTableSetting(const CBaseTableSettingParam &setting)
{
    d->restorePending = false;
    const TableArrangement arrangement = d->applyArrangement(setting.columns);
    d->frame = arrangedFrame(setting.frame, arrangement, int(d->columns.size()));
    d->columnSets = setting.columnSets;
    d->grid->setFrozenColumns(d->frame.frozenColumns);
    d->grid->setRowNumbersVisible(d->frame.showRowNumbers && (d->flags & TableRowNumbers));
    d->applyMarks();
    d->updateStatistics();
    if (d->frame.sorts != d->currentSorts())
        setSortColumns(d->frame.sorts);
}

/// Put off until the program has set its columns up after installing a model.
void CBaseHighPerformanceTable::Private::restoreNow()
{
    if (!restorePending)
        return;
    restorePending = false;
    if (const auto saved = store.load())
        q->setTableSetting(*saved);
}

void CBaseHighPerformanceTable::Private::saveSoon()
{
    store.saveSoon([this] { return q->getTableSetting(); });
}

QStringList CBaseHighPerformanceTable::columnSets() const
{
    return d->columnSets.keys();
}

void CBaseHighPerformanceTable::saveColumnSet(const QString &name)
{
    if (name.isEmpty())
        return;
    d->restoreNow();
    d->columnSets[name] = d->columnSettings();
    d->frame.columnSet = name;
    d->saveSoon();
}

bool CBaseHighPerformanceTable::applyColumnSet(const QString &name)
{
    d->restoreNow();
    const auto set = d->columnSets.constFind(name);
    if (set == d->columnSets.constEnd())
        return false;
    d->applyArrangement(*set);
    d->frame.columnSet = name;
    d->saveSoon();
    return true;
}

void CBaseHighPerformanceTable::removeColumnSet(const QString &name)
{
    d->restoreNow();
    if (d->columnSets.remove(name) == 0)
        return;
    if (d->frame.columnSet == name)
        d->frame.columnSet.clear();
    d->saveSoon();
}

} // namespace ZB
