#include "grid/gridgeometry.h"

#include <algorithm>
#include <limits>

namespace ZB {

namespace {

/// Rows far away from the screen stay far away when their position becomes an int.
int onScreen(qint64 position)
{
    constexpr qint64 far = std::numeric_limits<int>::max() / 4;
    return static_cast<int>(std::clamp(position, -far, far));
}

} // namespace

QRect GridGeometry::header() const
{
    return QRect(0, 0, size.width(), std::min(headerHeight, size.height()));
}

QRect GridGeometry::body() const
{
    const int top = header().height();
    return QRect(0, top, size.width(), std::max(0, size.height() - top - statisticsHeight));
}

QRect GridGeometry::statistics() const
{
    const int top = header().height() + body().height();
    return QRect(0, top, size.width(), std::min(statisticsHeight, size.height() - top));
}

QRect GridGeometry::scrolledArea() const
{
    const QRect all = body();
    const int left = std::min(numberWidth + columns.frozenWidth(), all.width());
    return QRect(left, all.top(), all.width() - left, all.height());
}

qint64 GridGeometry::maximumScrollX() const
{
    return std::max(0, numberWidth + columns.width() - size.width());
}

qint64 GridGeometry::maximumScrollY() const
{
    return std::max<qint64>(0, rowCount * rowHeight - body().height());
}

bool GridGeometry::scrollTo(qint64 x, qint64 y)
{
    x = std::clamp<qint64>(x, 0, maximumScrollX());
    y = std::clamp<qint64>(y, 0, maximumScrollY());
    const bool moved = x != scrollX || y != scrollY;
    scrollX = x;
    scrollY = y;
    return moved;
}

qint64 GridGeometry::firstRow() const
{
    return scrollY / rowHeight;
}

int GridGeometry::shownRowCount() const
{
    const qint64 end = (scrollY + body().height() + rowHeight - 1) / rowHeight;
    return static_cast<int>(std::max<qint64>(0, std::min(end, rowCount) - firstRow()));
}

int GridGeometry::wholeRowCount() const
{
    return std::max(1, body().height() / rowHeight);
}

qint64 GridGeometry::rowAt(int y) const
{
    const QRect area = body();
    if (y < area.top() || y > area.bottom())
        return -1;
    const qint64 row = (scrollY + y - area.top()) / rowHeight;
    return row < rowCount ? row : -1;
}

int GridGeometry::rowTop(qint64 row) const
{
    return onScreen(body().top() + row * rowHeight - scrollY);
}

QRect GridGeometry::rowRect(qint64 row) const
{
    return QRect(0, rowTop(row), size.width(), rowHeight);
}

GridShownColumn GridGeometry::shown(int place) const
{
    const GridPlacedColumn &placed = columns.placed()[static_cast<size_t>(place)];
    GridShownColumn result;
    result.frozen = place < columns.frozen();
    result.left = onScreen(numberWidth + placed.left - (result.frozen ? 0 : scrollX));
    result.width = placed.width;
    result.clipLeft = std::max(result.left, result.frozen ? numberWidth : numberWidth + columns.frozenWidth());
    result.clipRight = std::min(result.left + result.width, size.width());
    if (result.clipLeft < result.clipRight)
        result.column = placed.column;
    return result;
}

std::vector<GridShownColumn> GridGeometry::shownColumns() const
{
    std::vector<GridShownColumn> result;
    const auto count = static_cast<int>(columns.placed().size());
    for (int place = 0; place < count; ++place) {
        const GridShownColumn column = shown(place);
        if (column.column >= 0)
            result.push_back(column);
        else if (column.left >= size.width())
            break;
    }
    return result;
}

GridShownColumn GridGeometry::shownColumn(int column) const
{
    const int place = columns.placeOf(column);
    return place < 0 ? GridShownColumn() : shown(place);
}

int GridGeometry::columnAt(int x) const
{
    for (const GridShownColumn &column : shownColumns())
        if (x >= column.clipLeft && x < column.clipRight)
            return column.column;
    return -1;
}

QRect GridGeometry::cellRect(qint64 row, int column) const
{
    const int place = columns.placeOf(column);
    if (place < 0)
        return QRect();
    const GridShownColumn where = shown(place);
    return QRect(where.left, rowTop(row), where.width, rowHeight);
}

QRect GridGeometry::headerRect(int column) const
{
    const int place = columns.placeOf(column);
    if (place < 0)
        return QRect();
    const GridShownColumn where = shown(place);
    return QRect(where.left, 0, where.width, header().height());
}

QRect GridGeometry::funnelRect(int column) const
{
    const GridColumn &look = columns.at(column);
    const QRect whole = headerRect(column);
    if (whole.isEmpty() || !look.filterable || whole.width() < 2 * funnel)
        return QRect();
    // Opposite to the text, which stands over the cells' texts.
    const bool left = (look.alignment & Qt::AlignRight) != 0;
    return QRect(left ? whole.left() : whole.right() - funnel, whole.top(), funnel, whole.height());
}

int GridGeometry::gapX(int gap) const
{
    const auto count = static_cast<int>(columns.placed().size());
    if (count == 0)
        return numberWidth;
    if (gap < count)
        return shown(std::max(0, gap)).left;
    const GridShownColumn last = shown(count - 1);
    return last.left + last.width;
}

int GridGeometry::gapAt(int x) const
{
    const auto count = static_cast<int>(columns.placed().size());
    const bool overFrozen = x < numberWidth + columns.frozenWidth();
    const int first = overFrozen ? 0 : columns.frozen();
    const int end = overFrozen ? columns.frozen() : count;
    for (int place = first; place < end; ++place) {
        const GridShownColumn column = shown(place);
        if (x < column.left + column.width / 2)
            return place;
    }
    return end;
}

GridHit GridGeometry::hitHeader(const QPoint &point) const
{
    if (point.x() < numberWidth)
        return {GridArea::Corner, -1, -1};
    GridHit hit{GridArea::HeaderRest, -1, -1};
    for (const GridShownColumn &column : shownColumns()) {
        const int right = column.left + column.width;
        // The edge belongs to the column left of it, on both sides, unless that edge has scrolled out of sight.
        if (right <= size.width() && right > column.clipLeft && std::abs(point.x() - right) <= edge)
            return {GridArea::HeaderEdge, column.column, -1};
        if (point.x() >= column.clipLeft && point.x() < column.clipRight)
            hit = {funnelRect(column.column).contains(point) ? GridArea::HeaderFunnel : GridArea::Header, column.column,
                   -1};
    }
    return hit;
}

GridHit GridGeometry::hit(const QPoint &point) const
{
    if (!QRect(QPoint(), size).contains(point))
        return {};
    if (header().contains(point))
        return hitHeader(point);
    if (statistics().contains(point))
        return point.x() < numberWidth ? GridHit{GridArea::StatisticsTitle, -1, -1}
                                       : GridHit{GridArea::Statistics, columnAt(point.x()), -1};
    const qint64 row = rowAt(point.y());
    if (row < 0)
        return {GridArea::Below, point.x() < numberWidth ? -1 : columnAt(point.x()), -1};
    if (point.x() < numberWidth)
        return {GridArea::RowNumber, -1, row};
    const int column = columnAt(point.x());
    return {column < 0 ? GridArea::RowRest : GridArea::Cell, column, row};
}

qint64 GridGeometry::scrollYFor(qint64 row, bool center) const
{
    const qint64 top = row * rowHeight;
    const int height = body().height();
    if (center)
        return std::clamp<qint64>(top - (height - rowHeight) / 2, 0, maximumScrollY());
    if (top < scrollY || height < rowHeight)
        return top;
    return std::max(scrollY, top + rowHeight - height);
}

qint64 GridGeometry::scrollXFor(int column) const
{
    const int place = columns.placeOf(column);
    if (place < columns.frozen())
        return scrollX;
    const GridPlacedColumn &placed = columns.placed()[static_cast<size_t>(place)];
    const int room = size.width() - numberWidth - columns.frozenWidth();
    const qint64 left = placed.left - columns.frozenWidth();
    if (left < scrollX || placed.width > room)
        return left;
    return std::max(scrollX, left + placed.width - room);
}

} // namespace ZB
