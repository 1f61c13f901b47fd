#include <QtGui/QPainter>
#include <QtWidgets/QScrollBar>
#include <algorithm>

#include "popups/checklist.h"
#include "popups/checkmark.h"
#include "zb/cuiresource.h"

namespace ZB {

void CheckList::paintEvent(QPaintEvent *)
{
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), look.background);
    painter.setFont(look.font);
    if (shown.empty()) {
        painter.setPen(look.dimText);
        painter.drawText(viewport()->rect(), Qt::AlignCenter, emptyText);
        return;
    }
    const int first = verticalScrollBar()->value() / lineHeight();
    const int last = std::min(int(shown.size()) - 1, first + viewport()->height() / lineHeight() + 1);
    for (int line = first; line <= last; ++line)
        paintLine(painter, line);
    if (gap >= 0)
        painter.fillRect(QRect(0, lineRect(gap).top() - 1, viewport()->width(), scaled(2)), look.accent);
}

void CheckList::paintLine(QPainter &painter, int line) const
{
    const CheckItem &item = list[std::size_t(shown[std::size_t(line)])];
    const QRect place = lineRect(line);
    if (line == pressed && gap >= 0)
        painter.fillRect(place, look.pressed);
    else if (line == hovered)
        painter.fillRect(place, look.hover);
    const int margin = scaled(8);
    const int side = checkMarkSize();
    const QRect square(margin, place.top() + (place.height() - side) / 2, side, side);
    paintCheckMark(painter, square, item.checked ? Qt::Checked : Qt::Unchecked, true, look);

    int right = place.right() - margin;
    if (!item.note.isEmpty()) {
        const int width = painter.fontMetrics().horizontalAdvance(item.note);
        painter.setPen(look.dimText);
        painter.drawText(QRect(right - width, place.top(), width + 1, place.height()), Qt::AlignVCenter, item.note);
        right -= width + margin;
    }
    const QRect room(square.right() + margin, place.top(), right - square.right() - margin, place.height());
    painter.setPen(look.text);
    painter.drawText(room, Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(item.text, Qt::ElideRight, room.width()));
    if (line == current && hasFocus()) {
        painter.setPen(look.accent);
        painter.drawRect(place.adjusted(0, 0, -1, -1));
    }
}

} // namespace ZB
