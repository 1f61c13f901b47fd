#pragma once

#include <QtGlobal>

namespace feed {

/// One recorded row of orders or trades, decoded. 64 bytes: a market's day has tens of millions.
struct EventRow
{
    enum class Kind : quint8
    {
        Listed,    ///< an order, or what is left of it when it is listed
        Cancelled, ///< the rest of an order is withdrawn
        Traded
    };

    qint64 sequence = 0; ///< in its channel
    qint64 time = 0;     ///< milliseconds since 1970-01-01 UTC
    qint64 orderNo = 0;  ///< of the order, of a deal's buy order
    qint64 sellOrderNo = 0;
    qint64 quantity = 0;
    double price = 0;  ///< absent for an order at no price
    double amount = 0; ///< of a deal
    quint32 line = 0;  ///< where it stands, for messages
    quint16 file = 0;
    Kind kind = Kind::Listed;
    char flag = 0; ///< Side of an order or cancel, DealKind of a deal

    /// Whether both say the same, wherever they stand.
    bool isSameAs(const EventRow &other) const;
};
static_assert(sizeof(EventRow) == 64);

} // namespace feed
