#include "account/accountlistcolumn.h"

#include <algorithm>

#include "zb/cbasetablesettingparam.h"

namespace KV {

QVector<CAccountListColumn> accountListColumns(const ZB::CBaseTableSettingParam &setting)
{
    QVector<CAccountListColumn> columns;
    int scrolls = setting.frame.frozenColumns; // counts columns that are on the screen only
    for (const ZB::CBaseTableColumnSetting &each : setting.columns)
        columns.push_back({each.column, each.fieldId, each.name, each.visible, each.visible && scrolls-- > 0});
    return columns;
}

void arrangeColumns(ZB::CBaseTableSettingParam &setting, const QVector<CAccountListColumn> &columns)
{
    QList<ZB::CBaseTableColumnSetting> rest = setting.columns;
    setting.columns.clear();
    setting.frame.frozenColumns = 0;
    for (const CAccountListColumn &wanted : columns) {
        const auto known = std::find_if(rest.begin(), rest.end(), [&wanted](const ZB::CBaseTableColumnSetting &each) {
            return each.column == wanted.column;
        });
        if (known == rest.end())
            continue;
        known->visible = wanted.visible;
        setting.frame.frozenColumns += wanted.locked ? 1 : 0;
        setting.columns.append(*known);
        rest.erase(known);
    }
    setting.columns += rest;
}

} // namespace KV
