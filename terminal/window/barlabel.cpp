#include "window/barlabel.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QToolTip>
#include <algorithm>
#include <cmath>

#include "zb/cuiresource.h"

namespace terminal {

namespace {

/// Rounded up: a text in the width that it is said to need must not be cut off for a fraction of a pixel.
int widthOf(const QString &text, const QFont &font)
{
    return static_cast<int>(std::ceil(QFontMetricsF(font).horizontalAdvance(text)));
}

} // namespace

BarLabel::BarLabel(Style labelStyle, QWidget *parent) : QWidget(parent), style(labelStyle)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

BarLabel::~BarLabel() = default;

void BarLabel::setLook(const WindowLook &newLook)
{
    look = newLook;
    updateGeometry();
    update();
}

void BarLabel::setStyle(Style newStyle)
{
    if (style == newStyle)
        return;
    style = newStyle;
    updateGeometry();
    update();
}

void BarLabel::setText(const QString &text)
{
    if (shown == text)
        return;
    const QSize before = sizeHint();
    shown = text;
    if (sizeHint() != before)
        updateGeometry();
    update();
}

void BarLabel::setWidestText(const QString &text)
{
    widest = text;
    updateGeometry();
}

void BarLabel::setDetails(const QString &text)
{
    details = text;
}

QFont BarLabel::labelFont() const
{
    if (style == Style::Bold)
        return look.boldFont;
    return style == Style::Number ? look.numberFont : look.font;
}

QSize BarLabel::sizeHint() const
{
    return QSize(std::max(widthOf(shown, labelFont()), widthOf(widest, labelFont())), ZB::scaled(24));
}

QSize BarLabel::minimumSizeHint() const
{
    const int least = widthOf(shown.left(1) + QChar(0x2026), labelFont());
    return QSize(std::max(std::min(least, sizeHint().width()), widthOf(widest, labelFont())), ZB::scaled(24));
}

void BarLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setFont(labelFont());
    painter.setPen(style == Style::Dim ? look.dimText : style == Style::Error ? look.error : look.text);
    const QString fitting = painter.fontMetrics().elidedText(shown, Qt::ElideRight, width());
    painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft, fitting);
}

bool BarLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const bool isCut = widthOf(shown, labelFont()) > width();
    const QString tip = !details.isEmpty() ? details : isCut ? shown : QString();
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), tip, this);
    return true;
}

} // namespace terminal
