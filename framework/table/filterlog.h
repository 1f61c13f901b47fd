#pragma once

#include <QtCore/QString>

#include "zb/cbasetablesettingparam.h"

namespace ZB {

/// The name by which settings know a column; its number where they do not.
QString columnName(const CBaseTableSettingParam &setting, int column);

/// Tells the standard logger what became of a column's filter, where that is not what the user is to expect.
void logFilter(int tableId, const QString &column, const QString &what);

} // namespace ZB
