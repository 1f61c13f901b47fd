#pragma once

namespace terminal {

/// Ids of the terminal's tables. The user's settings are kept under them, so they never change their meaning.
enum TableId : int
{
    OrderStreamTable = 101,
    DealStreamTable = 102
};

} // namespace terminal
