#include "order/quotefont.h"

#include <QtGui/QFontMetrics>

#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int smallestPixels = 8;

} // namespace

/// A cut number would be another number: what does not fit is not shown at all.
QuoteFont QuoteFont::fit(const QString &text, const QFont &font, int room)
{
    QuoteFont fitting{font, QFontMetrics(font).horizontalAdvance(text), text};
    const int smallest = ZB::scaled(smallestPixels);
    while (fitting.width > room && fitting.font.pixelSize() > smallest) {
        fitting.font.setPixelSize(fitting.font.pixelSize() - 1);
        fitting.width = QFontMetrics(fitting.font).horizontalAdvance(text);
    }
    if (fitting.width > room) {
        fitting.text = QStringLiteral("###");
        fitting.width = QFontMetrics(fitting.font).horizontalAdvance(fitting.text);
    }
    return fitting;
}

} // namespace KV
