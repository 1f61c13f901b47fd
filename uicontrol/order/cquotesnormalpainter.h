#pragma once

#include "order/cquotespainter.h"

namespace KV {

/// Draws the ordinary ladder.
class CQuotesNormalPainter : public CQuotesPainter
{
public:
    using CQuotesPainter::CQuotesPainter;
    ~CQuotesNormalPainter() override;

protected:
    void drawAge() override;
};

} // namespace KV
