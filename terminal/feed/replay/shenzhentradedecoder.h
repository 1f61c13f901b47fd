#pragma once

#include "feed/replay/rowdecoder.h"

namespace feed {

/// Deals and cancels of the Shenzhen exchange, which stand in one table.
class ShenzhenTradeDecoder : public RowDecoder
{
public:
    static std::vector<std::string_view> neededColumns();

    explicit ShenzhenTradeDecoder(const FieldReader &in);
    void decode(FieldReader &in, ReplayStore &store, quint16 file) override;

private:
    void readDeal(FieldReader &in, EventRow &row, int millisecondsOfDay) const;
    void readCancel(FieldReader &in, EventRow &row) const;

    Column channel, sequence, bidNo, offerNo, code, price, quantity, type, time, market;
};

} // namespace feed
