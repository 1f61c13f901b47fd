#include "feed/replay/ordertracker.h"

#include <algorithm>

namespace feed {

namespace {

std::string orderText(qint64 orderNo)
{
    return "委托 " + std::to_string(orderNo);
}

} // namespace

RowEffect OrderTracker::apply(const Place &place, const EventRow &row)
{
    RowEffect effect;
    switch (row.kind) {
    case EventRow::Kind::Listed:
        list(place, row, effect);
        break;
    case EventRow::Kind::Cancelled:
        cancel(place, row, effect);
        break;
    case EventRow::Kind::Traded:
        fill(place, row, row.orderNo, Side::Buy, effect);
        fill(place, row, row.sellOrderNo, Side::Sell, effect);
        break;
    }
    return effect;
}

OrderState *OrderTracker::order(const Place &place, const EventRow &row, qint64 orderNo, Side side, RowEffect &effect)
{
    const int known = index.find(place.numberSpace, orderNo);
    if (known >= 0) {
        OrderState &found = orders[size_t(known)];
        if (found.instrument == place.instrument && found.side == side)
            return &found;
        effect.problem = orderText(orderNo) + " 属于另一只股票或另一买卖方向";
        return nullptr;
    }
    const int entry = orderCount();
    index.insert(place.numberSpace, orderNo, entry);
    OrderState &made = orders.emplace_back();
    made.entry = entry;
    made.instrument = place.instrument;
    made.day = place.day;
    made.channel = place.channel;
    made.orderNo = orderNo;
    made.side = side;
    made.firstTime = row.time;
    return &made;
}

void OrderTracker::list(const Place &place, const EventRow &row, RowEffect &effect)
{
    OrderState *const listed = order(place, row, row.orderNo, Side(row.flag), effect);
    if (!listed)
        return;
    if (listed->isListed) {
        effect.problem = orderText(row.orderNo) + " 重复出现";
        return;
    }
    const qint64 openBefore = listed->openQuantity();
    listed->isListed = true;
    listed->price = row.price;
    listed->quantity += row.quantity;
    finish(*listed, row, openBefore, effect);
}

void OrderTracker::reserve(OrderState &order, qint64 quantity, RowEffect &effect)
{
    const qint64 excess = std::max<qint64>(0, quantity - order.openQuantity());
    if (order.isListed && excess > 0)
        effect.problem = "成交或撤单的数量超过" + orderText(order.orderNo) + " 的剩余数量";
    order.quantity += excess;
}

void OrderTracker::cancel(const Place &place, const EventRow &row, RowEffect &effect)
{
    OrderState *const cancelled = order(place, row, row.orderNo, Side(row.flag), effect);
    if (!cancelled)
        return;
    const qint64 openBefore = cancelled->openQuantity();
    reserve(*cancelled, row.quantity, effect);
    cancelled->cancelled += row.quantity;
    finish(*cancelled, row, openBefore, effect);
}

void OrderTracker::fill(const Place &place, const EventRow &row, qint64 orderNo, Side side, RowEffect &effect)
{
    OrderState *const filled = order(place, row, orderNo, side, effect);
    if (!filled)
        return;
    const qint64 openBefore = filled->openQuantity();
    reserve(*filled, row.quantity, effect);
    filled->filled += row.quantity;
    filled->amount += row.amount;
    finish(*filled, row, openBefore, effect);
}

void OrderTracker::finish(OrderState &order, const EventRow &row, qint64 openBefore, RowEffect &effect)
{
    order.status = order.statusOfQuantities();
    order.lastTime = row.time;
    effect.changes[size_t(effect.changeCount++)] = {openBefore, &order};
}

} // namespace feed
