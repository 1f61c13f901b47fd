#include "feed/replay/eventrow.h"

namespace feed {

bool EventRow::isSameAs(const EventRow &other) const
{
    return sequence == other.sequence && time == other.time && orderNo == other.orderNo &&
           sellOrderNo == other.sellOrderNo && quantity == other.quantity && price == other.price &&
           amount == other.amount && kind == other.kind && flag == other.flag;
}

} // namespace feed
