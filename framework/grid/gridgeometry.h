#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <vector>

#include "frameworkexport.h"
#include "grid/gridcolumns.h"

namespace ZB {

/// What lies at a point of a grid.
enum class GridArea
{
    Outside,
    Corner,       ///< header of the row numbers
    Header,       ///< of a column
    HeaderEdge,   ///< where its column is resized
    HeaderFunnel, ///< where its filter opens
    HeaderRest,   ///< right of the last header
    RowNumber,
    Cell,
    RowRest, ///< right of a row's last cell
    Below,   ///< below the last row
    Statistics,
    StatisticsTitle
};

struct GridHit
{
    GridArea area = GridArea::Outside;
    int column = -1;
    qint64 row = -1;
    bool operator==(const GridHit &o) const { return area == o.area && column == o.column && row == o.row; }
};

/// A column of which something is on the screen. left and width are the whole column's, the clip is what shows.
struct GridShownColumn
{
    int column = -1;
    int left = 0;
    int width = 0;
    int clipLeft = 0;
    int clipRight = 0; ///< one past
    bool frozen = false;

    bool operator==(const GridShownColumn &o) const
    {
        return column == o.column && left == o.left && width == o.width && clipLeft == o.clipLeft &&
               clipRight == o.clipRight && frozen == o.frozen;
    }
};

/// Where everything in a grid is: the one place that painting, mouse, keyboard and accessibility ask. Knows no widget,
/// no painter, no colour.
///
/// Device pixels; (0, 0) is the view's corner. From the top: header, body with the rows, statistics row. From the left:
/// row numbers, frozen columns, scrolled columns. Exact at the last of any number of rows: positions in the contents
/// are 64-bit, rectangles are those on the screen.
struct FRAMEWORK_API GridGeometry
{
    QSize size; ///< without scroll bars
    int headerHeight = 0;
    int rowHeight = 1;        ///< its line included
    int statisticsHeight = 0; ///< 0: no statistics row
    int numberWidth = 0;      ///< 0: no row numbers
    int edge = 4;             ///< how far beside a header's edge the mouse still takes hold of it
    int funnel = 16;          ///< width of a header's funnel
    qint64 rowCount = 0;
    qint64 scrollX = 0;
    qint64 scrollY = 0;
    GridColumns columns;

    QRect header() const;
    QRect body() const;
    QRect statistics() const;
    QRect scrolledArea() const; ///< the part of the body in which columns scroll

    qint64 maximumScrollX() const;
    qint64 maximumScrollY() const;
    /// Sets the scroll position, brought between 0 and its maximum. True when it is another one.
    bool scrollTo(qint64 x, qint64 y);

    qint64 firstRow() const; ///< the first row of which something shows; 0 without rows
    int shownRowCount() const;
    int wholeRowCount() const; ///< rows that fit into the body, at least 1
    qint64 rowAt(int y) const; ///< -1 outside the rows
    int rowTop(qint64 row) const;
    QRect rowRect(qint64 row) const;

    std::vector<GridShownColumn> shownColumns() const;
    GridShownColumn shownColumn(int column) const; ///< column -1 when nothing of it shows
    int columnAt(int x) const;
    /// The whole cell with its lines, uncut; empty for hidden columns.
    QRect cellRect(qint64 row, int column) const;
    QRect headerRect(int column) const;
    QRect funnelRect(int column) const;
    /// The gap between visible columns that is nearest to x: 0 in front of the first. What a dragged column is dropped
    /// into.
    int gapAt(int x) const;
    int gapX(int gap) const;

    GridHit hit(const QPoint &point) const;

    /// The scroll position that brings a row (column) into the view with the least movement, or into its middle.
    qint64 scrollYFor(qint64 row, bool center) const;
    qint64 scrollXFor(int column) const;

private:
    GridShownColumn shown(int place) const;
    GridHit hitHeader(const QPoint &point) const;
};

} // namespace ZB
