#include <QtGui/QPainter>
#include <algorithm>

#include "grid/gridviewprivate.h"

namespace ZB {

void GridViewPrivate::paint(QPainter &painter, const QRegion &region)
{
    const QRect header = geometry.header();
    const QRect statistics = geometry.statistics();
    const int right = geometry.size.width();
    if (ratio != 1.0)
        painter.scale(1.0 / ratio, 1.0 / ratio);
    for (const QRect &rect : region) {
        const QRect area =
            QRectF(rect.x() * ratio, rect.y() * ratio, rect.width() * ratio, rect.height() * ratio).toAlignedRect();
        const auto put = [&](const QImage &picture, const QRect &place) {
            const QRect part = area & place;
            if (!part.isEmpty())
                painter.drawImage(part.topLeft(), picture, part.translated(-place.topLeft()));
        };
        const auto fill = [&](const QRect &place, const QColor &color) {
            const QRect part = place & area;
            if (!part.isEmpty())
                painter.fillRect(part, color);
        };
        body.paint(painter, area);
        if (geometry.body().contains(area))
            continue; // the many small changes of a running market
        put(headerPicture, header);
        put(statisticsPicture, statistics);
        // Behind and beside the scroll bars: header and statistics row go on to the edge of the view.
        const QRect beside(right, header.bottom() + 1, std::max(0, area.right() + 1 - right), geometry.body().height());
        fill(beside, look.background);
        fill(QRect(right, 0, beside.width(), header.height() - look.horizontalLine), look.header);
        fill(QRect(right, header.bottom() + 1 - look.horizontalLine, beside.width(), look.horizontalLine), look.line);
        fill(QRect(right, statistics.top(), beside.width(), statistics.height()), look.statisticsBackground);
        fill(QRect(0, geometry.size.height(), std::max(right, area.right() + 1),
                   std::max(0, area.bottom() + 1 - geometry.size.height())),
             look.background);
    }
    if (geometry.rowCount == 0 && !emptyText.isEmpty())
        paintEmptyText(painter);
    if (mouse.header().isMovingColumn())
        paintDrag(painter);
}

void GridViewPrivate::paintEmptyText(QPainter &painter) const
{
    painter.setFont(cells.text().glyphs(GridFont::Text).deviceFont());
    painter.setPen(look.dimText);
    painter.drawText(geometry.body(), Qt::AlignCenter | Qt::TextWordWrap, emptyText);
}

/// The header under the mouse, and a mark where its column would go.
void GridViewPrivate::paintDrag(QPainter &painter) const
{
    const GridHeaderMouse &drag = mouse.header();
    const QRect header = geometry.header();
    const QRect from = geometry.headerRect(drag.column()) & header;
    painter.setOpacity(0.95);
    painter.drawImage(from.topLeft() + QPoint(drag.draggedBy(), 0), headerPicture, from);
    painter.setOpacity(1.0);
    const int thick = std::max(2, cells.devicePixels(qRound(2 * look.scale)));
    const int x = std::clamp(geometry.gapX(drag.gap()) - thick / 2, geometry.numberWidth,
                             std::max(geometry.numberWidth, geometry.size.width() - thick));
    painter.fillRect(QRect(x, 0, thick, header.height() + geometry.body().height()), look.accent);
}

} // namespace ZB
