#include "window/barbutton.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <algorithm>

#include "zb/cuiresource.h"

namespace terminal {

BarButton::BarButton(QWidget *parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

BarButton::~BarButton() = default;

void BarButton::setLook(const WindowLook &newLook)
{
    look = newLook;
    setFont(look.font);
    updateGeometry();
    update();
}

void BarButton::setOpensMenu(bool opens)
{
    opensMenu = opens;
    updateGeometry();
}

void BarButton::setWidestTexts(const QStringList &texts)
{
    widestTexts = texts;
    updateGeometry();
}

int BarButton::arrowWidth() const
{
    return opensMenu ? ZB::scaled(14) : 0;
}

QSize BarButton::sizeHint() const
{
    const QFontMetrics metrics(look.font);
    int width = metrics.horizontalAdvance(text());
    for (const QString &other : widestTexts)
        width = std::max(width, metrics.horizontalAdvance(other));
    return QSize(width + arrowWidth() + 2 * ZB::scaled(8), ZB::scaled(24));
}

void BarButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const bool enabled = isEnabled();
    if (enabled && (isDown() || isChecked()))
        painter.fillRect(rect(), look.pressed);
    else if (enabled && underMouse())
        painter.fillRect(rect(), look.hover);
    if (isChecked())
        painter.fillRect(QRect(0, height() - ZB::scaled(2), width(), ZB::scaled(2)), look.accent);
    painter.setFont(look.font);
    painter.setPen(enabled ? look.text : look.dimText);
    painter.drawText(rect().adjusted(0, 0, -arrowWidth(), 0), Qt::AlignCenter, text());
    if (opensMenu)
        paintArrow(painter, QRect(width() - ZB::scaled(8) - ZB::scaled(7), 0, ZB::scaled(7), height()));
    if (hasFocus()) {
        painter.setPen(look.accent);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void BarButton::paintArrow(QPainter &painter, const QRect &place) const
{
    const double half = place.width() / 2.0;
    const QPointF tip(place.left() + half, place.top() + place.height() / 2.0 + half / 2);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(look.dimText, std::max(1.0, ZB::scaled(10) / 8.0)));
    painter.drawPolyline(QPolygonF({tip - QPointF(half, half), tip, tip + QPointF(half, -half)}));
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void BarButton::keyPressEvent(QKeyEvent *event)
{
    const bool presses =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || (opensMenu && event->key() == Qt::Key_Down);
    if (presses)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void BarButton::enterEvent(QEvent *event)
{
    QAbstractButton::enterEvent(event);
    update();
}

void BarButton::leaveEvent(QEvent *event)
{
    QAbstractButton::leaveEvent(event);
    update();
}

} // namespace terminal
