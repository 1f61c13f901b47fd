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

/// By which the account box tells what was chosen, and is told what to choose.
constexpr int eventAccountChosen = 1137;

} // namespace terminal
