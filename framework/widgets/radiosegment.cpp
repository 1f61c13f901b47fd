#include "widgets/radiosegment.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>

#include "widgets/buttonpaint.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

constexpr int sideMargin = 7;
constexpr int leastHeight = 20;

QColor themeColor(const char *key)
{
    return *CUiResource::instance()->getColor(QLatin1String(key));
}

const char *groundKey(const RadioSegment &segment)
{
    switch (stateOf(segment)) {
    case StatePressed:
        return segment.isChecked() ? "clr_accent_fill_press" : "clr_background_pressed";
    case StateHover:
        return segment.isChecked() ? "clr_accent_fill_hover" : "clr_background_hover";
    case StateDisabled:
        return segment.isChecked() ? "clr_background_pressed" : "clr_btn_background_color";
    default:
        return segment.isChecked() ? "clr_accent_fill" : "clr_btn_background_color";
    }
}

} // namespace

RadioSegment::RadioSegment(const QString &text, QWidget *parent)
    : QAbstractButton(parent), stripEnds(Qt::LeftEdge | Qt::RightEdge | Qt::TopEdge | Qt::BottomEdge)
{
    setText(text);
    setCheckable(true);
    setAutoExclusive(true); // said to screen readers; its group sees to it
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    applyTheme();
}

RadioSegment::~RadioSegment() = default;

void RadioSegment::setEnds(Ends ends)
{
    stripEnds = ends;
    update();
}

void RadioSegment::applyTheme()
{
    setFont(*CUiResource::instance()->getFont(QStringLiteral("fnt_default_normal")));
    updateGeometry();
    update();
}

QSize RadioSegment::sizeHint() const
{
    return QSize(fontMetrics().horizontalAdvance(text()) + 2 * scaled(sideMargin), scaled(leastHeight));
}

QSize RadioSegment::minimumSizeHint() const
{
    return QSize(fontMetrics().horizontalAdvance(text()) + 2, fontMetrics().height());
}

bool RadioSegment::event(QEvent *event)
{
    if (changesState(*event))
        update();
    return QAbstractButton::event(event);
}

/// The whole round box, moved beyond the edges at which it goes on in a neighbour. Neighbours share one line.
void RadioSegment::paintGround(QPainter &painter) const
{
    const int beyond = scaled(8);
    const QRect box = rect().adjusted(
        stripEnds.testFlag(Qt::LeftEdge) ? 0 : -beyond, stripEnds.testFlag(Qt::TopEdge) ? 0 : -beyond,
        stripEnds.testFlag(Qt::RightEdge) ? 0 : beyond, stripEnds.testFlag(Qt::BottomEdge) ? 0 : beyond);
    const QColor line = themeColor(isEnabled() ? "clr_border" : "clr_line");
    paintButtonBox(painter, box, themeColor(groundKey(*this)), isChecked() && isEnabled() ? QColor() : line);
    if (isChecked())
        return;
    if (!stripEnds.testFlag(Qt::RightEdge))
        painter.fillRect(QRect(width() - 1, 0, 1, height()), line);
    if (!stripEnds.testFlag(Qt::BottomEdge))
        painter.fillRect(QRect(0, height() - 1, width(), 1), line);
}

void RadioSegment::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintGround(painter);
    painter.setFont(font());
    const char *key = !isEnabled() ? "clr_text_disabled" : isChecked() ? "clr_text_on_fill" : "clr_btn_text_color";
    painter.setPen(themeColor(key));
    painter.drawText(rect(), Qt::AlignCenter, fontMetrics().elidedText(text(), Qt::ElideRight, width()));
    if (hasFocus())
        paintFocusRing(painter, rect());
}

void RadioSegment::keyPressEvent(QKeyEvent *event)
{
    if (!clickedByEnter(*this, *event))
        QAbstractButton::keyPressEvent(event);
}

} // namespace ZB
