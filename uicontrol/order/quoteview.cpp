#include "order/quoteview.h"

namespace KV {

void QuoteView::clearQuote()
{
    latest = change = previousClose = upperLimit = lowerLimit = quotevalue::noPrice;
    bids.clear();
    asks.clear();
}

const CQuoteData *QuoteView::level(const QuoteCursor &at) const
{
    const std::vector<CQuoteData> &side = at.ask ? asks : bids;
    const bool isThere = at.button == 0 && at.level >= 0 && static_cast<std::size_t>(at.level) < side.size();
    return isThere ? &side[static_cast<std::size_t>(at.level)] : nullptr;
}

} // namespace KV
