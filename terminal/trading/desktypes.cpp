#include "trading/desktypes.h"

namespace trading {

bool PaperOrder::isOpen() const
{
    switch (status) {
    case feed::OrderStatus::Sending:
    case feed::OrderStatus::Accepted:
    case feed::OrderStatus::PartFilled:
        return true;
    default:
        return false;
    }
}

bool DeskChange::isEmpty() const
{
    return accounts.empty() && orders.empty() && deals.empty() && positions.empty() && settlements.empty() &&
           days.empty();
}

} // namespace trading
