#pragma once

#include "feed/marketdata.h"

namespace terminal {

/// Hears of the market's events as plain values. All calls come on the GUI thread, in slices of a few milliseconds; of
/// one batch instruments come first, then orders, deals and quotes. An order and a quote come with their latest values
/// only.
class MarketListener
{
public:
    virtual ~MarketListener();

    /// New, or something about it has changed.
    virtual void takeInstrument(const feed::Instrument &) {}
    virtual void takeOrder(const feed::OrderState &) {}
    virtual void takeDeal(const feed::Deal &) {}
    virtual void takeQuote(const feed::QuoteSnapshot &) {}
};

} // namespace terminal
