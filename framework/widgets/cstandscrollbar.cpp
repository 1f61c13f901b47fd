#include "zb/cstandscrollbar.h"

#include <QtGui/QPainter>
#include <QtWidgets/QStyleOptionSlider>
#include <algorithm>

#include "widgets/thinscrollstyle.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

constexpr int eventScrolled = 17;

/// The second text colour, the more of it the closer the user is to using the bar: visible on every ground that texts
/// stand on.
QColor handleColor(bool hovered, bool pressed)
{
    QColor color = *CUiResource::instance()->getColor(QStringLiteral("clr_table_header_text"));
    color.setAlpha(pressed ? 220 : hovered ? 160 : 90);
    return color;
}

} // namespace

CStandScrollBar::CStandScrollBar(int eventId, Qt::Orientation orientation, QWidget *parent)
    : CEventWidgetT<QScrollBar>(orientation, parent), id(eventId), delivered(0)
{
    setStyle(ThinScrollStyle::instance());
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    setContextMenuPolicy(Qt::NoContextMenu);
}

CStandScrollBar::~CStandScrollBar() = default;

int CStandScrollBar::eventId() const
{
    return id;
}

void CStandScrollBar::themeChanged()
{
    updateGeometry();
    update();
}

void CStandScrollBar::sliderChange(SliderChange change)
{
    CEventWidgetT<QScrollBar>::sliderChange(change);
    if (sliderPosition() == delivered)
        return;
    delivered = sliderPosition();
    deliverEvent(eventScrolled, id, delivered, QString(), nullptr);
}

/// A rounded handle on what is behind the bar; nothing at all while there is nothing to scroll.
void CStandScrollBar::paintEvent(QPaintEvent *)
{
    if (maximum() <= minimum())
        return;
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect handle = style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
    const int gap = std::max(1, scaled(1));
    const QRectF bar = QRectF(handle).adjusted(gap, gap, -gap, -gap);
    const double radius = std::min(bar.width(), bar.height()) / 2.0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(handleColor(underMouse(), isSliderDown()));
    painter.drawRoundedRect(bar, radius, radius);
}

void CStandScrollBar::enterEvent(QEvent *event)
{
    CEventWidgetT<QScrollBar>::enterEvent(event);
    update();
}

void CStandScrollBar::leaveEvent(QEvent *event)
{
    CEventWidgetT<QScrollBar>::leaveEvent(event);
    update();
}

} // namespace ZB
