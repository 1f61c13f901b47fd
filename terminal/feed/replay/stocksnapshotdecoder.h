#pragma once

#include "feed/replay/rowdecoder.h"

#include <array>

namespace feed {

/// Snapshots of stocks of both exchanges with ten levels on each side.
class StockSnapshotDecoder : public RowDecoder
{
public:
    static std::vector<std::string_view> neededColumns();

    explicit StockSnapshotDecoder(const FieldReader &in);
    void decode(FieldReader &in, ReplayStore &store, quint16 file) override;

private:
    struct LevelColumns
    {
        Column price, quantity, orders;
    };
    using SideColumns = std::array<LevelColumns, QuoteSnapshot::depth>;

    static SideColumns sideColumns(const FieldReader &in, const std::string &side);
    static void readSide(FieldReader &in, const SideColumns &columns,
                         std::array<QuoteLevel, QuoteSnapshot::depth> &levels);

    Column date, time, code, previousClose, last, open, high, low, volume, turnover, phase, upperLimit, lowerLimit;
    SideColumns bids;
    SideColumns asks;
};

} // namespace feed
