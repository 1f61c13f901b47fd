#include "popups/checkbutton.h"

#include <QtGui/QPainter>

#include "popups/checkmark.h"
#include "zb/cuiresource.h"

namespace ZB {

CheckButton::CheckButton(const QString &text, const PopupLook &popupLook, QWidget *parent)
    : QAbstractButton(parent), look(popupLook)
{
    setText(text);
    setFont(look.font);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
}

QSize CheckButton::sizeHint() const
{
    const QFontMetrics metrics(look.font);
    return QSize(checkMarkSize() + scaled(10) + metrics.horizontalAdvance(text()), scaled(24));
}

void CheckButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const int side = checkMarkSize();
    const QRect square(scaled(2), (height() - side) / 2, side, side);
    paintCheckMark(painter, square, isChecked() ? Qt::Checked : Qt::Unchecked, isEnabled(), look);
    painter.setFont(look.font);
    painter.setPen(isEnabled() ? look.text : look.dimText);
    const QRect place = rect().adjusted(square.right() + scaled(6), 0, 0, 0);
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft, text());
    if (hasFocus()) {
        painter.setPen(look.accent);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

} // namespace ZB
