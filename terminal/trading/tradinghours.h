#pragma once

#include "trading/desktypes.h"

#include <string>

namespace trading {

/// What the exchanges' clocks say. Days are yyyymmdd, weekends are known and holidays are not.
struct TradingHours
{
    enum class State
    {
        Closed,
        Open,
        NoCancelling ///< orders are taken, but none is withdrawn: the ends of the stock exchanges' auctions
    };

    /// The trading day that a moment belongs to. A future's night session belongs to the next weekday.
    static int dayOf(AccountKind kind, qint64 time);
    static State stateOf(const feed::Instrument &instrument, qint64 time);
    /// When orders are taken, in words: "9:15-9:25、9:30-11:30、13:00-15:00".
    static std::string text(const feed::Instrument &instrument);
};

} // namespace trading
