#pragma once

#include <QtCore/QString>
#include <QtCore/Qt>
#include <vector>

class QColor;

namespace ZB {

/// How one column is shown. A value type; the index that it is set under is the model column.
struct GridColumn
{
    int width = 80; ///< device-independent pixels at the present scale, its separating line included
    bool visible = true;
    bool numeric = false; ///< number font; a text that does not fit shows as "###" instead of with an ellipsis
    bool bold = false;    ///< cells and statistics
    bool statisticsBold = false;
    bool filterable = false; ///< the header offers the filter funnel
    bool filtered = false;   ///< a filter is on: the funnel is shown lit
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
    Qt::Alignment statisticsAlignment = Qt::AlignRight | Qt::AlignVCenter;
    const QColor *statisticsColor = nullptr; ///< null for the look's; owned by the resource service
    /// The widest unit that its cells carry ("万"); room for it is kept in every cell, so that figures stay in line.
    /// Empty: units follow their text directly.
    QString unitSample;
};

/// A sort column, as the header marks it.
struct GridSortMark
{
    int column = -1;
    bool descending = false;
};
using GridSortMarks = std::vector<GridSortMark>; ///< in falling weight

} // namespace ZB
