#include "table/cbasehighperformancetable_p.h"

namespace ZB {

CBaseTableSettingParam CBaseHighPerformanceTable::getTableSetting()
{
    return d->shellSetting();
}

void CBaseHighPerformanceTable::setTableSetting(const CBaseTableSettingParam &setting)
{
    d->applyShellSetting(setting);
    if (d->frame.sorts != d->currentSorts())
        setSortColumns(d->frame.sorts);
}

void CBaseHighPerformanceTable::settingsChanged()
{
    d->saveSoon();
}

void CBaseHighPerformanceTable::saveSettingsNow()
{
    d->store.flush([this] { return getTableSetting(); });
}

CBaseTableSettingParam CBaseHighPerformanceTable::Private::tableSetting()
{
    return q->getTableSetting();
}

void CBaseHighPerformanceTable::Private::applySetting(const CBaseTableSettingParam &setting)
{
    q->setTableSetting(setting);
}

QStringList CBaseHighPerformanceTable::columnSets() const
{
    return d->columnSets.keys();
}

void CBaseHighPerformanceTable::saveColumnSet(const QString &name)
{
    d->saveColumnSet(name);
}

bool CBaseHighPerformanceTable::applyColumnSet(const QString &name)
{
    return d->applyColumnSet(name);
}

void CBaseHighPerformanceTable::removeColumnSet(const QString &name)
{
    d->removeColumnSet(name);
}

} // namespace ZB
