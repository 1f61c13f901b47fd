#include "order/cquotespainter.h"

#include <algorithm>

#include "order/quotefont.h"
#include "zb/cnstategridimage.h"
#include "zb/cuiresource.h"

namespace KV {

using namespace quotevalue;

namespace {

constexpr int fadingTradeType = 2;
constexpr int leastAlpha = 32;

} // namespace

CQuotesPainter::CQuotesPainter(QPainter &target, const QuoteLook &colors, const QuotesLayout &places,
                               const QuoteView &values, ZB::CNStateGridImage &numbers, QuoteClickAreas &clicks)
    : painter(target), look(colors), layout(places), view(values), areas(clicks), digits(numbers),
      decimals(decimalsOf(values.tick))
{
}

CQuotesPainter::~CQuotesPainter() = default;

void CQuotesPainter::paint()
{
    painter.setRenderHint(QPainter::TextAntialiasing);
    drawGround();
    drawMiddle();
    drawSide(true);
    drawSide(false);
    drawExtras();
    drawSummary();
    if (!view.age.isEmpty())
        drawAge();
    if (view.framed) {
        painter.setPen(*look.cursor);
        painter.drawRect(layout.frame.adjusted(0, 0, -1, -1));
    }
}

void CQuotesPainter::drawGround()
{
    painter.fillRect(layout.frame, *look.background);
    painter.fillRect(layout.askArea & layout.frame, *look.askArea);
    painter.fillRect(layout.bidArea & layout.frame, *look.bidArea);
    painter.fillRect(layout.middleBand & layout.frame, *look.middleBand);
    painter.setPen(*look.line);
    painter.drawRect(layout.frame.adjusted(0, 0, -1, -1));
    for (const QLine &line : layout.lines)
        painter.drawLine(line);
}

void CQuotesPainter::drawExtras() {}

void CQuotesPainter::drawAge()
{
    drawCentred(layout.age, view.age, *look.warning);
}

const QColor &CQuotesPainter::directionColor(double difference, const QColor &otherwise) const
{
    if (!isKnown(difference))
        return otherwise;
    return difference > sameWithin ? *look.rise : difference < -sameWithin ? *look.fall : otherwise;
}

const QColor &CQuotesPainter::priceColor(double price) const
{
    return directionColor(quotevalue::change(price, view.previousClose), *look.equal);
}

void CQuotesPainter::drawMiddle()
{
    painter.setFont(*look.nameFont);
    painter.setPen(*look.text);
    painter.drawText(layout.latestCaption, QStringLiteral("最新"));
    const QColor &color = directionColor(view.change, *look.text);
    drawValue(layout.latest, priceText(view.latest, decimals), color, Kind::Price, view.latest);
    if (view.age.isEmpty() || !layout.age.isEmpty())
        drawValue(layout.change, changeText(view.change, decimals), color, Kind::Plain, view.change);
}

void CQuotesPainter::drawSide(bool ask)
{
    const std::vector<CQuoteData> &side = ask ? view.asks : view.bids;
    const int count = std::min(QuotesLayout::levels, static_cast<int>(side.size()));
    int largest = 0;
    for (int i = 0; i < count; ++i)
        if (side[static_cast<std::size_t>(i)].volume != noVolume)
            largest = std::max(largest, side[static_cast<std::size_t>(i)].volume);
    QColor captionColor = *look.text;
    for (int i = 0; i < std::max(count, 1); ++i) {
        drawLevel(ask, i, i < count ? &side[static_cast<std::size_t>(i)] : nullptr, largest, captionColor);
        if (view.tradeType == fadingTradeType)
            captionColor.setAlpha(std::max(leastAlpha, captionColor.alpha() * 3 / 5));
    }
}

void CQuotesPainter::drawLevel(bool ask, int level, const CQuoteData *quote, int largest, const QColor &captionColor)
{
    const QuoteRowPlace &place = (ask ? layout.asks : layout.bids)[static_cast<std::size_t>(level)];
    if (level == 0 && quote)
        painter.fillRect(place.band & layout.frame, ask ? *look.bestAsk : *look.bestBid);
    if (quote && quote->volume != noVolume) {
        const QColor &bar = view.grey ? *look.staleBar : ask ? *look.askBar : *look.bidBar;
        painter.fillRect(place.bar(quote->volume, largest), bar);
    }
    painter.setFont(*look.nameFont);
    painter.setPen(captionColor);
    painter.drawText(place.caption, ask ? QStringLiteral("卖") : QStringLiteral("买"));
    digits.drawCell(painter, place.digit, level, captionColor);

    const double price = quote ? quote->price : noPrice;
    const int volume = quote ? quote->volume : noVolume;
    drawValue(place.price, priceText(price, decimals), priceColor(price), Kind::Price, price);
    drawValue(place.volume, volumeText(volume), *look.equal, Kind::Volume, volume != noVolume ? volume : noPrice);
    if (view.cursor == QuoteCursor{ask, level}) {
        painter.setPen(*look.cursor);
        painter.drawRect(place.band.adjusted(0, 0, -1, -1));
    }
}

void CQuotesPainter::drawSummary()
{
    static const std::array<QString, 4> captions{QStringLiteral("现价"), QStringLiteral("前收"), QStringLiteral("涨停"),
                                                 QStringLiteral("跌停")};
    const std::array<double, 4> values{view.latest, view.previousClose, view.upperLimit, view.lowerLimit};
    const std::array<const QColor *, 4> colors{&directionColor(view.change, *look.text), look.text, look.rise,
                                               look.fall};
    for (std::size_t i = 0; i < values.size(); ++i) {
        const QuoteSummaryPlace &place = layout.summary[i];
        painter.setFont(*look.nameFont);
        painter.setPen(*look.text);
        painter.drawText(place.caption, captions[i]);
        const QColor &color = isPrice(values[i]) ? *colors[i] : *look.text;
        drawValue(place.value, priceText(values[i], decimals), color, Kind::Price, values[i]);
    }
}

void CQuotesPainter::drawValue(const QuoteValuePlace &place, const QString &text, const QColor &color, Kind kind,
                               double value)
{
    const QuoteFont fitting = QuoteFont::fit(text, *look.numberFont, place.room);
    const QRect area = place.area(fitting.width);
    if (kind != Kind::Plain && isKnown(value)) {
        (kind == Kind::Price ? areas.prices : areas.volumes).push_back({area, value});
        if (isHovered(area))
            painter.fillRect(area, *look.hover);
    }
    painter.setFont(fitting.font);
    painter.setPen(shown(color));
    painter.drawText(place.right - fitting.width, place.baseline, fitting.text);
}

void CQuotesPainter::drawCentred(const QRect &rect, const QString &text, const QColor &color)
{
    const QuoteFont fitting = QuoteFont::fit(text, *look.nameFont, rect.width());
    painter.setFont(fitting.font);
    painter.setPen(color);
    painter.drawText(rect, Qt::AlignCenter | Qt::TextSingleLine, fitting.text);
}

} // namespace KV
