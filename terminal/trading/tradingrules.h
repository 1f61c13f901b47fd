#pragma once

#include "trading/desktypes.h"

#include <string>
#include <vector>

namespace trading {

/// What trading stocks costs. The defaults are the rates published for A shares: stamp duty 0.05 % of sales (Ministry
/// of Finance and State Taxation Administration, notice 39 of 2023, in force since 2023-08-28), transfer fee 0.001 % of
/// both sides (China Securities Depository and Clearing, since 2022-04-29). The commission is agreed with the broker,
/// up to 0.3 % and from 5 yuan an order (China Securities Regulatory Commission, notice 21 of 2002), the exchanges'
/// handling fee included; 0.025 % is usual.
struct StockFees
{
    Rate commission = 25'000;
    Money leastCommission = 5 * yuan; ///< of an order with any deal
    Rate stampDuty = 50'000;
    Rate transferFee = 1'000;
};

/// What trading a future costs and binds.
struct FutureTerms
{
    std::string product; ///< letters of the code; empty for all that have no terms of their own
    Rate open = 10'000;
    Rate close = 10'000;
    Rate closeToday = 10'000; ///< of closing what was opened on the same day
    Money openPerLot = 0;
    Money closePerLot = 0;
    Money closeTodayPerLot = 0;
    Rate margin = 12'000'000;
    qint64 largestOrder = 500; ///< lots
};

/// Settings of the broker, the same for all its accounts.
struct TradingRules
{
    StockFees stocks;
    /// The first whose product fits holds; the last one fits all. By default the terms of the index futures of CFFEX
    /// (0.0023 %, 0.023 % when closed on the same day) and of apples (CZCE: 5 yuan a lot, 20 when closed on the same
    /// day), and for the others a usual 0.01 %.
    std::vector<FutureTerms> futures = defaultFutures();

    static std::vector<FutureTerms> defaultFutures();
    const FutureTerms &futureTerms(const std::string &code) const;
    /// What an order of the instrument costs in all once that much of it is filled.
    Charges charges(const feed::Instrument &instrument, feed::Side side, Offset offset, const Filled &filled) const;
    Money margin(const std::string &code, Money value) const;
};

/// Letters with which the code of a future starts.
std::string productOf(const std::string &code);

/// Steps and bounds of quantities.
struct QuantityRules
{
    qint64 step = 1;
    qint64 least = 1; ///< unless all that is left is sold
    qint64 most = 0;

    static QuantityRules of(const feed::Instrument &instrument, const TradingRules &rules);
};

/// True where what is bought may be sold on the same day.
bool sellsOnSameDay(feed::InstrumentKind kind);
/// True where 平仓 closes what stood before the day only, and 平今 the rest: Shanghai's futures exchanges.
bool keepsDaysApart(const std::string &exchange);

} // namespace trading
