#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <map>
#include <vector>

#include "frameworkexport.h"
#include "zb/cbasetablesettingparam.h"

namespace ZB {

/// What tells a column from the others, and how it starts out.
struct TableColumnInfo
{
    QString name;
    int fieldId = -1; ///< -1 for columns that are no field
    bool offered = true;
    int defaultWidth = 80; ///< pixels at 100 %
    bool defaultVisible = true;
};

/// Saved columns fitted to the columns that a table has now.
struct TableArrangement
{
    std::vector<int> order;                          ///< every model column, in the order on the screen
    std::map<int, CBaseTableColumnSetting> settings; ///< by model column; those without one start out as they are
    std::map<int, int> columnOfSaved;                ///< model column by the number that the settings know
};

/// Finds saved columns again: by field, columns that are no field by name, and settings that say neither by number.
/// What fits no column is ignored; a column that is new stays behind its left neighbour in the model.
FRAMEWORK_API TableArrangement arranged(const QList<CBaseTableColumnSetting> &saved,
                                        const std::vector<TableColumnInfo> &columns);

/// The column that settings know by the number `saved`; -1 when it is gone.
int presentColumn(const TableArrangement &arrangement, int saved, int columnCount);

/// The frame with its column numbers turned into present ones; what refers to a column that is gone is dropped.
FRAMEWORK_API CBaseTableFrameSetting arrangedFrame(const CBaseTableFrameSetting &saved,
                                                   const TableArrangement &arrangement, int columnCount);

} // namespace ZB
