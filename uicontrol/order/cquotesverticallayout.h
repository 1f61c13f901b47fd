#pragma once

#include "order/quoteslayout.h"

namespace KV {

/// The upright level-2 ladder: the balance of both sides, asks, the latest price, bids, price types, cancel buttons and
/// a summary of two rows, one below the other. Rows grow with the height, within limits.
struct UICONTROL_API CQuotesVerticalLayout : QuotesLayout
{
    /// showCancel: each level gets a mark that cancels the orders on it.
    CQuotesVerticalLayout(const QSize &size, const QuotesMetrics &metrics, bool showCancel);
};

} // namespace KV
