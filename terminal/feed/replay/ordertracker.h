#pragma once

#include "feed/marketdata.h"
#include "feed/replay/eventrow.h"
#include "feed/replay/orderindex.h"

#include <array>
#include <deque>
#include <string>

namespace feed {

/// What a row did to one order.
struct OrderChange
{
    qint64 openBefore = 0;
    const OrderState *order = nullptr; ///< as it is now; valid until the next row
};

/// What a row did. A row that contradicts what is known says so in `problem` and still does what can be done.
struct RowEffect
{
    std::array<OrderChange, 2> changes;
    int changeCount = 0;
    std::string problem;
};

/// The life of every order, from the rows that the exchanges publish. A deal fills both its orders, a cancel withdraws
/// the rest of one. A Shanghai order is listed when it begins to rest, with its remainder: what traded under its number
/// before belongs to its quantity. A number that only deals and cancels carry is an order of just that quantity.
class OrderTracker
{
public:
    /// Where a row comes from.
    struct Place
    {
        int numberSpace = 0; ///< order numbers are unique in it
        int instrument = 0;
        int day = 0;
        int channel = 0;
    };

    RowEffect apply(const Place &place, const EventRow &row);
    int orderCount() const { return int(orders.size()); }

private:
    /// The order with this number; made if it is new. Null, with a problem, when it is another's.
    OrderState *order(const Place &place, const EventRow &row, qint64 orderNo, Side side, RowEffect &effect);
    void list(const Place &place, const EventRow &row, RowEffect &effect);
    void cancel(const Place &place, const EventRow &row, RowEffect &effect);
    void fill(const Place &place, const EventRow &row, qint64 orderNo, Side side, RowEffect &effect);
    /// Makes room for `quantity` to be filled or withdrawn.
    static void reserve(OrderState &order, qint64 quantity, RowEffect &effect);
    static void finish(OrderState &order, const EventRow &row, qint64 openBefore, RowEffect &effect);

    std::deque<OrderState> orders; ///< by entry; grows without moving
    OrderIndex index;
};

} // namespace feed
