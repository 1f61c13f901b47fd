#pragma once

#include <QtGui/QPainter>

#include "order/quoteclickareas.h"
#include "order/quotelook.h"
#include "order/quoteslayout.h"
#include "order/quoteview.h"

namespace ZB {
class CNStateGridImage;
}

namespace KV {

/// Draws a ladder once, at the places of a layout, and notes the click areas of what it draws. What both sides, the
/// latest price and the summary look like is the same in every layout; a painter of each kind adds the rest.
class CQuotesPainter
{
public:
    CQuotesPainter(QPainter &painter, const QuoteLook &look, const QuotesLayout &layout, const QuoteView &view,
                   ZB::CNStateGridImage &digits, QuoteClickAreas &areas);
    virtual ~CQuotesPainter();

    CQuotesPainter(const CQuotesPainter &) = delete;
    CQuotesPainter &operator=(const CQuotesPainter &) = delete;

    void paint();

protected:
    /// What lies below and between the values.
    virtual void drawGround();
    virtual void drawExtras();
    virtual void drawAge();

    void drawMiddle();
    void drawSide(bool ask);
    void drawSummary();

    enum class Kind
    {
        Price,
        Volume,
        Plain ///< no click takes it
    };
    /// Draws a text that ends at its place, and notes its area, unless it stands for no value. A 0 is shown as missing
    /// and can be clicked: what the number 0 means is up to the form.
    void drawValue(const QuoteValuePlace &place, const QString &text, const QColor &color, Kind kind, double value);
    /// In the middle of a rectangle, in a smaller font when it does not fit.
    void drawCentred(const QRect &rect, const QString &text, const QColor &color);
    bool isHovered(const QRect &rect) const { return view.mouse && rect.contains(*view.mouse); }
    const QColor &shown(const QColor &color) const { return view.grey ? *look.grey : color; }
    const QColor &directionColor(double difference, const QColor &otherwise) const;

    QPainter &painter;
    const QuoteLook &look;
    const QuotesLayout &layout;
    const QuoteView &view;
    QuoteClickAreas &areas;

private:
    void drawLevel(bool ask, int level, const CQuoteData *quote, int largest, const QColor &captionColor);
    const QColor &priceColor(double price) const;

    ZB::CNStateGridImage &digits;
    const int decimals;
};

} // namespace KV
