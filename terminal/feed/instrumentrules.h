#pragma once

#include "feed/marketdata.h"

#include <optional>
#include <string_view>

namespace feed {

/// What the market's rules say about an instrument by its code alone: exchange, kind, tick, decimals, lot, multiplier.
/// Index, name and prices stay as they are in a new Instrument (a future's name is that of its product and month).

/// Empty unless the code is six digits and the suffix of a known stock exchange: .SH, .SZ, .BJ.
std::optional<Instrument> stockInstrument(std::string_view code);
/// `exchange` may be empty; it and the rest then come from the product, as far as it is known. Empty for a code that
/// cannot be one of a future: no letters first, signs that no code has, or more than 31 of them.
std::optional<Instrument> futureInstrument(std::string_view code, std::string_view exchange);

/// Prices as whole numbers, exact for every tick in use: steps of a millionth. Removes the noise of prices that went
/// through binary fractions.
constexpr double priceUnitsPerOne = 1e6;
qint64 priceUnits(double price);
double priceOfUnits(qint64 units);

} // namespace feed
