#pragma once

#include "order/quoteslayout.h"

namespace KV {

/// The ordinary ladder: five asks, a band with the latest price, five bids and a summary of two rows, one below the
/// other, in the middle of the height.
struct UICONTROL_API CQuotesNormalLayout : QuotesLayout
{
    /// showCancel: leaves room for the order form's cancel row.
    CQuotesNormalLayout(const QSize &size, const QuotesMetrics &metrics, bool showCancel);
};

} // namespace KV
