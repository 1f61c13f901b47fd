#include "popups/checkmark.h"

#include <QtGui/QPainter>

#include "popups/popuplook.h"
#include "zb/cuiresource.h"

namespace ZB {

int checkMarkSize()
{
    return scaled(14);
}

void paintCheckMark(QPainter &painter, const QRect &square, Qt::CheckState state, bool enabled, const PopupLook &look)
{
    const bool filled = state != Qt::Unchecked;
    const QColor box = enabled ? look.accent : look.border;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor outline = mixed(look.border, look.dimText, enabled ? 600 : 250);
    painter.setPen(filled ? box : outline);
    painter.setBrush(filled ? box : look.background);
    const QRectF edge = QRectF(square).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(edge, scaled(2), scaled(2));
    if (filled) {
        painter.setPen(QPen(look.accentText, qreal(square.width()) / 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const auto at = [&edge](qreal x, qreal y) {
            return QPointF(edge.left() + edge.width() * x, edge.top() + edge.height() * y);
        };
        if (state == Qt::Checked)
            painter.drawPolyline(QPolygonF({at(0.22, 0.52), at(0.43, 0.74), at(0.80, 0.28)}));
        else
            painter.drawLine(at(0.25, 0.5), at(0.75, 0.5));
    }
    painter.restore();
}

} // namespace ZB
