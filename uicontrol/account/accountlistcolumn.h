#pragma once

#include <QtCore/QMetaType>
#include <QtCore/QString>
#include <QtCore/QVector>

#include "uicontrolexport.h"

namespace ZB {
struct CBaseTableSettingParam;
}

namespace KV {

/// A column of the account list, as the user arranges it.
struct CAccountListColumn
{
    int column = -1;  ///< the table's number of it
    int fieldId = -1; ///< finds it again in a saved arrangement; -1 for columns that are no field
    QString name;     ///< what users read; finds a column that is no field again
    bool visible = true;
    bool locked = false; ///< stays in front, shown, and where it is

    bool operator==(const CAccountListColumn &other) const
    {
        return column == other.column && fieldId == other.fieldId && name == other.name && visible == other.visible &&
               locked == other.locked;
    }
};

/// The columns that a table's settings hold, in their order on the screen; those that do not scroll are locked.
UICONTROL_API QVector<CAccountListColumn> accountListColumns(const ZB::CBaseTableSettingParam &setting);

/// Gives a table's settings this arrangement, the locked columns being those that do not scroll. Columns of the table
/// that are not among them stay behind the others; widths, sorts and all else remain.
UICONTROL_API void arrangeColumns(ZB::CBaseTableSettingParam &setting, const QVector<CAccountListColumn> &columns);

} // namespace KV

Q_DECLARE_METATYPE(QVector<KV::CAccountListColumn>)
