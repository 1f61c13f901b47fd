#pragma once

namespace terminal {

/// Ids of the ticket's controls, by which it tells their events apart.
enum TicketId : int
{
    TicketRates = 0, ///< the fractions, as the strip itself numbers them
    TicketSend = 21,
    TicketTrade,
    TicketOpenClose,
    TicketAccount,
    TicketSource,
    TicketStep,
    TicketUnit
};

} // namespace terminal
