#pragma once

#include <QtCore/Qt>
#include <QtGui/QColor>
#include <QtGui/QFont>

namespace ZB {

/// Colours, fonts and sizes of a grid: looked up by the table once per theme or scale change and handed over whole.
/// Sizes are device-independent pixels at the present scale, unless they say otherwise.
struct GridLook
{
    double scale = 1.0; ///< for the few lengths that are no theme size (edge of a header, arrows)

    QFont textFont;
    QFont numberFont;    ///< cells of numeric columns
    QFont rowNumberFont; ///< the column of row numbers
    QFont headerFont;
    QFont statisticsFont;

    int rowHeight = 24; ///< with its line
    int headerHeight = 28;
    int statisticsHeight = 24;
    int margin = 8;           ///< between a cell's edge and its text
    int statisticsMargin = 8; ///< the same in the statistics row
    int horizontalLine = 1;   ///< under each row; device pixels
    int verticalLine = 1;     ///< right of each column; device pixels
    int statisticsBorder = 0; ///< above the statistics row; device pixels
    Qt::Alignment rowNumberAlignment = Qt::AlignRight | Qt::AlignVCenter;
    bool oddEvenRows = false; ///< every second row on oddBackground

    QColor background;
    QColor oddBackground;
    QColor numberBackground; ///< behind row numbers
    QColor line;
    QColor sortLine;         ///< right of a sorted column
    QColor inactiveSortLine; ///< the same while the grid lacks the focus
    QColor text;
    QColor dimText; ///< absent values, the text of an empty table
    QColor rowNumberText;
    QColor selected;
    QColor selectedNoFocus;
    QColor selectedText; ///< in place of `text` in selected rows; cells with a colour of their own keep it
    QColor headerText;
    QColor header;
    QColor headerHover;
    QColor headerPressed;
    QColor headerDisabled;
    QColor statisticsText;
    QColor statisticsBackground;
    QColor statisticsTitleBackground;
    QColor statisticsBorderColor;
    QColor accent; ///< frame of the current cell, insertion mark, lit funnel
    QColor rise;   ///< flashes
    QColor fall;
    QColor equal;
    QColor hit; ///< behind text that the table's search looks for
};

} // namespace ZB
