#pragma once

#include "feed/replay/rowdecoder.h"

#include <array>

namespace feed {

/// Ticks of futures in the column layout of the CTP interface.
class FuturesTickDecoder : public RowDecoder
{
public:
    static std::vector<std::string_view> neededColumns();

    explicit FuturesTickDecoder(const FieldReader &in);
    void decode(FieldReader &in, ReplayStore &store, quint16 file) override;

private:
    static constexpr int depth = 5; ///< levels that the layout has
    struct LevelColumns
    {
        Column bidPrice, bidQuantity, askPrice, askQuantity;
    };

    qint64 readTime(FieldReader &in) const;
    void readLevels(FieldReader &in, QuoteSnapshot &quote) const;
    void refineDecimals(FieldReader &in, Instrument &instrument) const;

    Column tradingDay, actionDay, code, exchange, last, previousSettlement, previousClose, open, high, low, volume,
        turnover, openInterest, upperLimit, lowerLimit, time, milliseconds;
    std::array<LevelColumns, depth> levels;
};

} // namespace feed
