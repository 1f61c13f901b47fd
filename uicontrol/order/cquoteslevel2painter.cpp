#include "order/cquoteslevel2painter.h"

#include <cmath>

#include "order/quotefont.h"
#include "order/quoteslevel2.h"
#include "zb/cuiresource.h"

namespace KV {

using namespace quotevalue;

namespace {

int sideOf(bool selling)
{
    return selling ? QuoteClickAreas::Cancel::selling : QuoteClickAreas::Cancel::buying;
}

/// The sum of the volumes that count; exact, five ints at most.
qint64 total(const std::vector<CQuoteData> &side)
{
    qint64 sum = 0;
    for (const CQuoteData &level : side)
        sum += isVolume(level.volume) && level.volume > 0 ? level.volume : 0;
    return sum;
}

} // namespace

CQuotesLevel2Painter::~CQuotesLevel2Painter() = default;

void CQuotesLevel2Painter::drawExtras()
{
    const QColor &color = directionColor(view.change, *look.text);
    drawValue(layout.percent, percentText(view.change, view.previousClose), color, Kind::Plain, view.change);
    if (view.age.isEmpty())
        drawBalance();
    drawPriceTypes();
    drawCancelMarks(true);
    drawCancelMarks(false);
    drawCancelButton(layout.cancelBuy, false, view.buyOrders);
    drawCancelButton(layout.cancelSell, true, view.sellOrders);
}

/// How the volumes of both sides stand to each other: in words, and as a bar of two colours.
void CQuotesLevel2Painter::drawBalance()
{
    const qint64 buying = total(view.bids);
    const qint64 selling = total(view.asks);
    painter.fillRect(layout.balanceBar, *look.line);
    if (buying + selling == 0)
        return;
    const double share = static_cast<double>(buying) / static_cast<double>(buying + selling);
    const QRect left = layout.balancePart(share);
    QRect right = layout.balanceBar;
    right.setLeft(left.right() + 1);
    painter.fillRect(left, shown(*look.rise));
    painter.fillRect(right, shown(*look.fall));
    const int percent = static_cast<int>(std::lround(share * 100));
    painter.setFont(*look.nameFont);
    painter.setPen(shown(*look.rise));
    painter.drawText(layout.balanceText, Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("买 %1%").arg(percent));
    painter.setPen(shown(*look.fall));
    painter.drawText(layout.balanceText, Qt::AlignRight | Qt::AlignVCenter,
                     QStringLiteral("卖 %1%").arg(100 - percent));
}

void CQuotesLevel2Painter::drawButton(const QRect &rect, int number, const QColor &border)
{
    const bool isCurrent = view.cursor && view.cursor->button == number;
    painter.fillRect(rect, isHovered(rect) || isCurrent ? *look.buttonHover : *look.button);
    painter.setPen(isCurrent ? *look.cursor : border);
    painter.drawRect(rect.adjusted(0, 0, -1, -1));
}

void CQuotesLevel2Painter::drawPriceTypes()
{
    int number = 0;
    for (const QuotePriceTypePlace &place : layout.priceTypes) {
        areas.priceTypes.push_back({place.rect, place.type});
        drawButton(place.rect, ++number, *look.buttonBorder);
        drawCentred(place.rect, quoteslevel2::captionOf(place.type), *look.buttonText);
    }
}

/// The number of orders stands behind the caption, which stays when a number is too long for the button; without any
/// there is nothing to cancel, and no colour says so.
void CQuotesLevel2Painter::drawCancelButton(const QRect &rect, bool sell, qint64 orders)
{
    areas.cancelButtons[sell ? 1 : 0] = {rect, sideOf(sell), 0};
    const QColor &side = sell ? *look.fall : *look.rise;
    const int number = static_cast<int>(layout.priceTypes.size()) + (sell ? 2 : 1);
    drawButton(rect, number, orders > 0 ? side : *look.buttonBorder);
    const QString text = quoteslevel2::cancelText(sell, orders);
    const bool isShown = QuoteFont::fit(text, *look.nameFont, rect.width()).text == text;
    drawCentred(rect, isShown ? text : quoteslevel2::cancelCaption(sell) + QStringLiteral(" ###"), *look.buttonText);
}

/// A cross at the outer end of each level that has a price.
void CQuotesLevel2Painter::drawCancelMarks(bool ask)
{
    const std::vector<CQuoteData> &side = ask ? view.asks : view.bids;
    const auto &rows = ask ? layout.asks : layout.bids;
    for (std::size_t i = 0; i < std::min(side.size(), rows.size()); ++i) {
        const QRect &rect = rows[i].cancel;
        if (rect.isEmpty() || !isPrice(side[i].price))
            continue;
        areas.cancels.push_back({rect, sideOf(ask), static_cast<int>(i) + 1});
        if (isHovered(rect))
            painter.fillRect(rect, *look.hover);
        const int half = ZB::scaled(3);
        const QPoint centre = rect.center();
        painter.setPen(QPen(*look.grey, ZB::scaled(1)));
        painter.setRenderHint(QPainter::Antialiasing);
        painter.drawLine(centre + QPoint(-half, -half), centre + QPoint(half, half));
        painter.drawLine(centre + QPoint(-half, half), centre + QPoint(half, -half));
        painter.setRenderHint(QPainter::Antialiasing, false);
    }
}

} // namespace KV
