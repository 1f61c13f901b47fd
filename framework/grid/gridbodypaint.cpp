#include <QtGui/QPainter>
#include <algorithm>
#include <limits>

#include "grid/gridbody.h"
#include "grid/gridcanvas.h"
#include "grid/gridcellpainter.h"
#include "zb/cbasetablecolumnsimpletextdelegate.h"

namespace ZB {

void GridBody::paint(QPainter &painter, const QRect &area) const
{
    const QRect wanted = area & body;
    if (wanted.isEmpty())
        return;
    const int first = body.top() + topOffset;
    const int count = static_cast<int>(places.size());
    for (int at = std::max(0, (wanted.top() - first) / rowHeight); at < count; ++at) {
        const int top = first + at * rowHeight;
        const QRect part = QRect(0, top, body.width(), rowHeight) & wanted;
        if (part.isEmpty())
            break;
        const int slotTop = places[static_cast<size_t>(at)].slot * rowHeight;
        painter.drawImage(part.topLeft(), strip, part.translated(0, slotTop - top));
    }
    const int top = first + count * rowHeight;
    const QRect below = QRect(0, top, body.width(), body.bottom() + 1 - top) & wanted;
    if (!below.isEmpty())
        painter.fillRect(below, cells.look().background);
}

/// The row's number and what is right of its last cell.
void GridBody::paintMargins(const GridFrame &frame, int index, quint8 decor)
{
    const int top = places[static_cast<size_t>(index)].slot * rowHeight;
    GridCanvas canvas(strip);
    if (numberWidth > 0)
        cells.paintNumber(canvas, QRect(0, top, numberWidth, rowHeight), frame.firstNumber + frame.window.first + index,
                          decor);
    const int end = shown.empty() ? numberWidth : shown.back().left + shown.back().width;
    if (end < strip.width())
        cells.paintRest(canvas, QRect(end, top, strip.width() - end, rowHeight), decor);
}

void GridBody::paintCell(const GridFrame &frame, int index, const GridShownColumn &where, GridCell &cell)
{
    const QRect rect(where.left, places[static_cast<size_t>(index)].slot * rowHeight, where.width, rowHeight);
    const GridColumn &column = frame.geometry.columns.at(where.column);
    const auto at = static_cast<size_t>(where.column);
    const bool delegated = at < frame.delegates.size() && frame.delegates[at];
    GridCanvas canvas(strip);
    canvas.setClip(QRect(where.clipLeft, rect.top(), where.clipRight - where.clipLeft, rect.height()));
    const bool isWhole = paintGround(canvas, frame, rect, where, cell);
    bool isCut = false;
    if (!delegated) {
        isCut = cells.paintContent(canvas, rect, cell, column);
    } else {
        GridCell drawn = cell;
        if (paintDelegate(frame, index, where, drawn))
            isCut = cells.paintContent(canvas, rect, drawn, column);
    }
    if (isCut && column.numeric)
        cutNumbers.insert(where.column);
    cells.paintFrame(canvas, rect, cell);
    const bool isKnown = isWhole && !delegated && (canvas.drawn() | cells.inside(rect)) == cells.inside(rect);
    cell.ground = isKnown ? cells.background(cell) : 0;
    cell.drawn = canvas.drawn().translated(-rect.topLeft());
}

/// On the ground that it had, a cell only loses what was drawn there. True when all of the cell is in sight.
bool GridBody::paintGround(GridCanvas &canvas, const GridFrame &frame, const QRect &rect, const GridShownColumn &where,
                           const GridCell &cell)
{
    const bool isWhole = where.clipLeft <= rect.left() && where.clipRight > rect.right();
    const QRgb ground = cells.background(cell);
    if (isWhole && cell.ground == ground) {
        canvas.fill(cell.drawn.translated(rect.topLeft()), ground);
    } else {
        const bool frozenEdge = where.frozen && frame.geometry.columns.placeOf(where.column) == frozen - 1;
        cells.paintBackground(canvas, rect, ground, frozenEdge);
    }
    canvas.forgetDrawn();
    return isWhole;
}

bool GridBody::paintDelegate(const GridFrame &frame, int index, const GridShownColumn &where, GridCell &cell)
{
    const auto &delegate = frame.delegates[static_cast<size_t>(where.column)];
    const double ratio = frame.pixelRatio;
    const QRect onScreen = frame.geometry.cellRect(frame.window.first + index, where.column);
    const QRect inside = cells.inside(onScreen);
    const int slotTop = places[static_cast<size_t>(index)].slot * rowHeight;

    CTableCell told;
    told.row = static_cast<int>(std::min<qint64>(frame.window.first + index, std::numeric_limits<int>::max()));
    told.column = where.column;
    told.text = cell.text;
    told.rect =
        QRectF(inside.x() / ratio, inside.y() / ratio, inside.width() / ratio, inside.height() / ratio).toAlignedRect();
    told.selected = cell.decor & GridDecorSelected;
    told.hovered = cell.decor & GridDecorHovered;

    QPainter painter(&strip);
    painter.setClipRect(QRect(where.clipLeft, slotTop, where.clipRight - where.clipLeft, rowHeight) &
                        inside.translated(0, slotTop - onScreen.top()));
    painter.translate(0, slotTop - onScreen.top());
    painter.scale(ratio, ratio);
    painter.setFont(cells.look().textFont);
    painter.setPen(cells.look().text);
    const bool textLeft = delegate->paintCell(told, &painter);
    if (const auto *simple = dynamic_cast<const CBaseTableColumnSimpleTextDelegate *>(delegate.get()))
        cell.text = simple->getText(cell.text);
    return textLeft;
}

} // namespace ZB
