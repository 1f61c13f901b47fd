#pragma once

#include "order/quoteslayout.h"

namespace KV {

/// The broad level-2 ladder: the latest price and the balance of both sides on top, bids on the left and asks on the
/// right with their prices next to each other, then price types, cancel buttons and a summary of one row.
struct UICONTROL_API CQuotesHorizontalLayout : QuotesLayout
{
    /// showCancel: each level gets a mark that cancels the orders on it.
    CQuotesHorizontalLayout(const QSize &size, const QuotesMetrics &metrics, bool showCancel);
};

} // namespace KV
