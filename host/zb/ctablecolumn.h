#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/Qt>

namespace ZB {

/// What a column of a table with rows of its own is. A value type.
struct CTableColumn
{
    QString header;
    int fieldId = -1; ///< finds the column again in saved settings; -1 for columns that are no field
    QVariant::Type type = QVariant::String;
    int alignment = Qt::AlignLeft | Qt::AlignVCenter; ///< of cells and statistics
    int width = 80;                                   ///< to start with, pixels at 100 %
    bool bold = false;                                ///< cells and statistics
    bool filterable = false;
    bool flashes = false; ///< when a cell changes
    bool visible = true;
    bool inList = true; ///< offered in the list of columns
    QString unitSample; ///< the widest unit of its cells ("万"); keeps figures in line
};

} // namespace ZB
