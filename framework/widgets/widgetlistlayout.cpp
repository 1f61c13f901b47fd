#include "widgets/widgetlistlayout.h"

#include <algorithm>

namespace ZB {

/// Spacing stands between two widgets only: a space is room enough by itself.
int WidgetListLayout::gapBefore(std::size_t index) const
{
    return index > 0 && !items[index].isSpace && !items[index - 1].isSpace ? spacing : 0;
}

int WidgetListLayout::neededLength() const
{
    int sum = 0;
    for (std::size_t i = 0; i < items.size(); ++i)
        sum += gapBefore(i) + items[i].length;
    return sum;
}

/// Shares the room out by the stretches. An item whose share is less than its least length takes that length, and the
/// others share what it leaves; the rounding rests go to the last ones.
std::vector<int> WidgetListLayout::lengths(int available) const
{
    std::vector<int> result;
    std::vector<std::size_t> open;
    int room = available;
    int parts = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
        result.push_back(items[i].length);
        room -= gapBefore(i) + (items[i].stretch > 0 ? 0 : items[i].length);
        parts += items[i].stretch;
        if (items[i].stretch > 0)
            open.push_back(i);
    }
    const auto tooShort = [&](std::size_t i) {
        return qint64(std::max(room, 0)) * items[i].stretch / parts < items[i].length;
    };
    for (auto it = open.begin(); parts > 0 && it != open.end();) {
        if (!tooShort(*it)) {
            ++it;
            continue;
        }
        room -= items[*it].length;
        parts -= items[*it].stretch;
        open.erase(it);
        it = open.begin();
    }
    for (const std::size_t i : open) {
        result[i] = static_cast<int>(qint64(std::max(room, 0)) * items[i].stretch / parts);
        room -= result[i];
        parts -= items[i].stretch;
    }
    return result;
}

std::vector<QRect> WidgetListLayout::place(QSize size) const
{
    const bool along = orientation == Qt::Horizontal;
    const QRect inner = QRect(QPoint(0, 0), size).marginsRemoved(margins);
    const int depth = std::max(along ? inner.height() : inner.width(), 0);
    const std::vector<int> lengthOf = lengths(along ? inner.width() : inner.height());
    std::vector<QRect> rects;
    int at = along ? inner.left() : inner.top();
    for (std::size_t i = 0; i < items.size(); ++i) {
        const WidgetListItem &item = items[i];
        at += gapBefore(i);
        const int across = item.anchor == AnchorFill ? depth : item.depth;
        const int spare = depth - across;
        const int offset = item.anchor == AnchorCentre ? spare / 2 : item.anchor == AnchorEnd ? spare : 0;
        rects.push_back(along ? QRect(at, inner.top() + offset, lengthOf[i], across)
                              : QRect(inner.left() + offset, at, across, lengthOf[i]));
        at += lengthOf[i];
    }
    return rects;
}

QSize WidgetListLayout::needed() const
{
    int depth = 0;
    for (const WidgetListItem &item : items)
        depth = std::max(depth, item.depth);
    const QSize inner = orientation == Qt::Horizontal ? QSize(neededLength(), depth) : QSize(depth, neededLength());
    return inner + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

} // namespace ZB
