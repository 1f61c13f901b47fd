#pragma once

#include "feed/replay/rowdecoder.h"

namespace feed {

/// Orders of the Shanghai exchange as it publishes them: an order when it begins to rest, with what is then left of it,
/// and cancels.
class ShanghaiOrderDecoder : public RowDecoder
{
public:
    static std::vector<std::string_view> neededColumns();

    explicit ShanghaiOrderDecoder(const FieldReader &in);
    void decode(FieldReader &in, ReplayStore &store, quint16 file) override;

private:
    Column date, time, type, price, quantity, side, channel, sequence, orderNo, code, name;
};

} // namespace feed
