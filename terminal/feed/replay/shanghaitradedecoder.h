#pragma once

#include "feed/replay/rowdecoder.h"

namespace feed {

/// Deals of the Shanghai exchange.
class ShanghaiTradeDecoder : public RowDecoder
{
public:
    static std::vector<std::string_view> neededColumns();

    explicit ShanghaiTradeDecoder(const FieldReader &in);
    void decode(FieldReader &in, ReplayStore &store, quint16 file) override;

private:
    Column date, time, buyNo, sellNo, initiator, price, quantity, amount, channel, sequence, code, name;
};

} // namespace feed
