#include "popups/gridbadge.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include "zb/cuiresource.h"

namespace ZB {

GridBadge::GridBadge(QWidget *parent) : QWidget(parent), look(PopupLook::fromResources())
{
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void GridBadge::setText(const QString &text)
{
    if (shown == text)
        return;
    shown = text;
    resize(sizeHint());
    update();
}

QString GridBadge::text() const
{
    return shown;
}

void GridBadge::setStrong(bool on)
{
    strong = on;
    update();
}

void GridBadge::setLook(const PopupLook &popupLook)
{
    look = popupLook;
    resize(sizeHint());
    update();
}

QSize GridBadge::sizeHint() const
{
    return QSize(QFontMetrics(look.font).horizontalAdvance(shown) + scaled(20), scaled(24));
}

void GridBadge::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor plain = strong ? look.accent : look.raised;
    painter.setBrush(hovered ? mixed(plain, look.text, 120) : plain);
    painter.setPen(strong ? plain : mixed(look.border, look.dimText, 400));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), height() / 2.0, height() / 2.0);
    painter.setFont(look.font);
    painter.setPen(strong ? look.accentText : look.text);
    painter.drawText(rect(), Qt::AlignCenter, shown);
}

/// Taken, or the press would go on to the row below.
void GridBadge::mousePressEvent(QMouseEvent *event)
{
    event->accept();
}

void GridBadge::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        Q_EMIT clicked();
}

void GridBadge::enterEvent(QEvent *)
{
    hovered = true;
    update();
}

void GridBadge::leaveEvent(QEvent *)
{
    hovered = false;
    update();
}

} // namespace ZB
