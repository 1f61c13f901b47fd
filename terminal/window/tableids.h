#pragma once

namespace terminal {

/// Ids of the terminal's tables. The user's settings are kept under them, so they never change their meaning.
enum TableId : int
{
    OrderStreamTable = 101,
    DealStreamTable = 102,
    QuoteTable = 103,
    OwnOrdersTable = 111,
    OwnDealsTable = 112,
    OwnPositionsTable = 113,
    OwnFundsTable = 114,
    HistoryOrdersTable = 115,
    HistoryDealsTable = 116,
    DemonstrationPositionsTable = 121,
    DemonstrationFundsTable = 122
};

} // namespace terminal
