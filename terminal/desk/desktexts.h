#pragma once

#include <QtCore/QString>

#include "trading/desktypes.h"

namespace terminal {

/// What a desk says of its orders in messages and in the log.
namespace desktexts {

/// "买入", "卖出平仓", "买入平今" ...
QString operation(feed::Side side, trading::Offset offset, bool isFuture);
/// "股" or "手".
QString unit(bool isFuture);
/// "买入 600000.SH 浦发银行 10.00 × 300 股".
QString order(const trading::PaperOrder &order);
QString deal(const trading::PaperDeal &deal);
/// "待报", "已成" ...
QString status(feed::OrderStatus status);

} // namespace desktexts

} // namespace terminal
