#include "widgets/thinscrollstyle.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtWidgets/QStyleOptionSlider>
#include <algorithm>

#include "zb/cuiresource.h"

namespace ZB {

namespace {

constexpr int thickness = 8;
constexpr int shortestHandle = 24;

} // namespace

ThinScrollStyle *ThinScrollStyle::instance()
{
    static QPointer<ThinScrollStyle> style;
    if (!style) {
        style = new ThinScrollStyle;
        style->setParent(QCoreApplication::instance());
    }
    return style;
}

int ThinScrollStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    if (metric == PM_ScrollBarExtent)
        return scaled(thickness);
    if (metric == PM_ScrollBarSliderMin)
        return scaled(shortestHandle);
    return QCommonStyle::pixelMetric(metric, option, widget);
}

QRect ThinScrollStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                                      const QWidget *widget) const
{
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || !bar)
        return QCommonStyle::subControlRect(control, option, part, widget);
    const bool lying = bar->orientation == Qt::Horizontal;
    const int length = lying ? bar->rect.width() : bar->rect.height();
    const qint64 range = static_cast<qint64>(bar->maximum) - bar->minimum;
    const qint64 wanted = range > 0 ? bar->pageStep * static_cast<qint64>(length) / (range + bar->pageStep) : length;
    const int handle = static_cast<int>(
        std::clamp<qint64>(wanted, std::min(length, pixelMetric(PM_ScrollBarSliderMin, option, widget)), length));
    const int start =
        sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition, length - handle, bar->upsideDown);
    const auto along = [&](int from, int to) {
        const QRect rect =
            lying ? QRect(from, 0, to - from, bar->rect.height()) : QRect(0, from, bar->rect.width(), to - from);
        return visualRect(bar->direction, bar->rect, rect.translated(bar->rect.topLeft()));
    };
    switch (part) {
    case SC_ScrollBarGroove:
        return bar->rect;
    case SC_ScrollBarSlider:
        return along(start, start + handle);
    case SC_ScrollBarSubPage:
        return along(0, start);
    case SC_ScrollBarAddPage:
        return along(start + handle, length);
    default:
        return QRect();
    }
}

} // namespace ZB
