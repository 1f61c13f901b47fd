#pragma once

#include <QtCore/QString>
#include <vector>

#include "desk/desksettings.h"
#include "trading/desktypes.h"
#include "window/orderdraft.h"

namespace terminal {

class TradeDesk;

/// What a ticket and a position become as orders of the desk. GUI thread.
namespace ticketorders {

struct Made
{
    std::vector<trading::OrderRequest> requests;
    QString problem; ///< for the user, where there are none
};

/// One order for each account that is chosen. Prices that follow the market take the latest quote's: the best of the
/// other side or of the own one, or the other side's fifth. Where the exchange tells them apart, a closing order goes
/// to today's lots as far as those from before do not suffice, as an order of its own.
Made fromDraft(const OrderDraft &draft, const TradeDesk &desk);

/// Why the desk takes no credit orders.
QString noCredit();

/// What the chosen account has for such an order, charges and margin taken into account: the money as the value of what
/// it buys. Of several accounts the one with the least counts.
TicketFunds funds(const OrderDraft &draft, const TradeDesk &desk);

/// Orders that close all that can be closed of all positions, at the best price of the other side, each within what the
/// exchange and the user let one order hold. What has no price, or is being closed already, is left out and named in
/// `problem`.
Made closeAll(const TradeDesk &desk, const DeskSettings &settings);

/// The best price of the side that such an order would take; absent without one.
double oppositePrice(const TradeDesk &desk, const std::string &code, feed::Side side);

} // namespace ticketorders

} // namespace terminal
