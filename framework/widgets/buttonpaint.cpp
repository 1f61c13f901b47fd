#include "widgets/buttonpaint.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPixmap>
#include <QtWidgets/QAbstractButton>
#include <algorithm>

#include "zb/cuiresource.h"

namespace ZB {

namespace {

constexpr int cornerRadius = 3;

QColor themeColor(const char *key)
{
    return *CUiResource::instance()->getColor(QLatin1String(key));
}

void strokeRounded(QPainter &painter, const QRect &rect, const QColor &color, double radius)
{
    painter.setPen(color);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

} // namespace

ButtonState stateOf(const QAbstractButton &button)
{
    if (!button.isEnabled())
        return StateDisabled;
    if (button.isDown())
        return StatePressed;
    return button.underMouse() ? StateHover : StateNormal;
}

QString keyEnding(ButtonState state)
{
    static const char *const endings[ButtonStates] = {"", "_hover", "_press", "_disable"};
    return QLatin1String(endings[state]);
}

void paintButtonBox(QPainter &painter, const QRect &rect, const QColor &ground, const QColor &border)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    const double radius = scaled(cornerRadius);
    painter.drawRoundedRect(QRectF(rect), radius, radius);
    if (border.isValid())
        strokeRounded(painter, rect, border, radius);
    painter.restore();
}

void paintFocusRing(QPainter &painter, const QRect &rect, bool isError)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const double radius = scaled(cornerRadius);
    strokeRounded(painter, rect, themeColor(isError ? "clr_text_error" : "clr_accent"), radius);
    strokeRounded(painter, rect.adjusted(1, 1, -1, -1), themeColor("clr_background"), std::max(0.0, radius - 1));
    painter.restore();
}

void paintStretched(QPainter &painter, const QRect &rect, const QPixmap &image)
{
    const double ratio = image.devicePixelRatio();
    const QSizeF size = QSizeF(image.size()) / ratio;
    const double corner = std::min(
        {scaled(cornerRadius) + 1.0, size.width() / 2, size.height() / 2, rect.width() / 2.0, rect.height() / 2.0});
    const QRectF place(rect);
    const double targetX[] = {place.left(), place.left() + corner, place.right() - corner, place.right()};
    const double targetY[] = {place.top(), place.top() + corner, place.bottom() - corner, place.bottom()};
    const double sourceX[] = {0, corner, size.width() - corner, size.width()};
    const double sourceY[] = {0, corner, size.height() - corner, size.height()};
    for (int column = 0; column < 3; ++column)
        for (int row = 0; row < 3; ++row)
            painter.drawPixmap(
                QRectF(QPointF(targetX[column], targetY[row]), QPointF(targetX[column + 1], targetY[row + 1])), image,
                QRectF(QPointF(sourceX[column], sourceY[row]) * ratio,
                       QPointF(sourceX[column + 1], sourceY[row + 1]) * ratio));
}

void paintDropArrow(QPainter &painter, const QRect &place, const QColor &color)
{
    const double half = scaled(7) / 2.0;
    const QPointF tip = QRectF(place).center() + QPointF(0, half / 2);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, std::max(1.0, scaled(10) / 8.0)));
    painter.drawPolyline(QPolygonF({tip - QPointF(half, half), tip, tip + QPointF(half, -half)}));
    painter.restore();
}

bool clickedByEnter(QAbstractButton &button, const QKeyEvent &event)
{
    if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter)
        return false;
    if (!event.isAutoRepeat())
        button.click();
    return true;
}

bool changesState(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::EnabledChange:
        return true;
    default:
        return false;
    }
}

} // namespace ZB
