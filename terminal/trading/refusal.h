#pragma once

#include <QtCore/QString>

namespace trading {

/// Why something was not done, in words for the user: what, where, and what to do about it. Nothing has changed then.
struct Refusal
{
    enum class Reason
    {
        None,
        NoAccount,
        UnknownCode,
        WrongAccountKind,
        MarketClosed,
        NoPrice,
        OffTick,
        OutsideLimits,
        NoQuantity,
        NotInLots,
        TooMuch,
        NotEnoughFunds,
        NotEnoughPosition,
        UnknownOrder,
        OrderEnded,
        NoCancelling,
        NotStored
    };

    Reason reason = Reason::None;
    QString text;

    explicit operator bool() const { return reason != Reason::None; }
};

} // namespace trading
