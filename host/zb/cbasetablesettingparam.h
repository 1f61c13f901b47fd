#pragma once

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtCore/QVector>
#include <optional>

#include "zb/ctablerowmark.h"
#include "zb/efiltertype.h"

namespace ZB {

/// How a user arranged one column. Widths are those at 100 % scale, in pixels.
struct CBaseTableColumnSetting
{
    int column = -1;  ///< model column
    int fieldId = -1; ///< finds the column again when the columns have changed; -1 for columns that are no field
    QString name;     ///< finds a column that is no field again
    int width = 0;    ///< 0: the default width
    bool visible = true;
};

/// What a user filters one column by.
struct CBaseTableColumnFilter
{
    int column = -1;             ///< model column
    FilterConditions conditions; ///< at least one
};

/// How a user arranged the table around its columns.
struct CBaseTableFrameSetting
{
    QVector<QPair<int, int>> sorts; ///< sort columns in falling weight, with their order (0 ascending)
    int frozenColumns = 0;          ///< columns at the left that do not scroll, counted on the screen
    bool showRowNumbers = true;
    bool showStatistics = true;
    QVector<CTableRowMark> marks; ///< rules that tint rows which stand out
    QString columnSet;            ///< the named column set in use; empty for none
    /// Of the columns that users may filter. Unset in settings that say nothing of filters: they leave those that the
    /// table has.
    std::optional<QVector<CBaseTableColumnFilter>> filters;
};

/// What a table's settings hold. A value type; the host keeps it in the user's configuration.
struct CBaseTableSettingParam
{
    CBaseTableFrameSetting frame;
    QList<CBaseTableColumnSetting> columns;                   ///< in the order on the screen
    QMap<QString, QList<CBaseTableColumnSetting>> columnSets; ///< arrangements that the user gave a name
};

} // namespace ZB
