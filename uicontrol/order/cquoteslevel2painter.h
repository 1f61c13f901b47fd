#pragma once

#include "order/cquotespainter.h"

namespace KV {

/// Draws both level-2 ladders: with the change in per cent, the balance of both sides, price types and cancel buttons.
class CQuotesLevel2Painter : public CQuotesPainter
{
public:
    using CQuotesPainter::CQuotesPainter;
    ~CQuotesLevel2Painter() override;

protected:
    void drawExtras() override;

private:
    void drawBalance();
    void drawPriceTypes();
    void drawCancelButton(const QRect &rect, bool sell, qint64 orders);
    void drawCancelMarks(bool ask);
    /// number: as the cursor counts buttons.
    void drawButton(const QRect &rect, int number, const QColor &border);
};

} // namespace KV
