#include "table/filterlog.h"

#include "utils/clogcenter.h"

namespace ZB {

QString columnName(const CBaseTableSettingParam &setting, int column)
{
    for (const CBaseTableColumnSetting &known : setting.columns)
        if (known.column == column && !known.name.isEmpty())
            return known.name;
    return QString::number(column);
}

void logFilter(int tableId, const QString &column, const QString &what)
{
    const QString line = QStringLiteral("[table|%1] the filter of column %2 %3").arg(tableId).arg(column, what);
    LOG4CXX_INFO(utils::getStdLogger(), line.toUtf8().constData());
}

} // namespace ZB
