#include "feed/replay/shanghaiorderdecoder.h"

namespace feed {

std::vector<std::string_view> ShanghaiOrderDecoder::neededColumns()
{
    return {"MDDate",      "MDTime",    "OrderType",  "OrderPrice", "OrderQty",
            "OrderBSFlag", "ChannelNo", "ApplSeqNum", "OrderNO",    "SecurityID"};
}

ShanghaiOrderDecoder::ShanghaiOrderDecoder(const FieldReader &in)
    : date(in.column("MDDate")), time(in.column("MDTime")), type(in.column("OrderType")),
      price(in.column("OrderPrice")), quantity(in.column("OrderQty")), side(in.column("OrderBSFlag")),
      channel(in.column("ChannelNo")), sequence(in.column("ApplSeqNum")), orderNo(in.column("OrderNO")),
      code(in.column("SecurityID")), name(in.column("Symbol"))
{
}

void ShanghaiOrderDecoder::decode(FieldReader &in, ReplayStore &store, quint16 file)
{
    const int day = in.date(date);
    EventRow row;
    row.time = chinaTime(day, in.timeOfDay(time));
    row.kind = in.choice(type, {"2", "10"}) == 0 ? EventRow::Kind::Listed : EventRow::Kind::Cancelled;
    row.price = in.price(price);
    row.quantity = in.quantity(quantity);
    row.flag = char(in.choice(side, {"1", "2"}) == 0 ? Side::Buy : Side::Sell);
    const auto channelNo = int(in.whole(channel, 0, absent<int> - 1));
    row.sequence = in.whole(sequence, 0, absent<qint64> - 1);
    row.orderNo = in.whole(orderNo, 1, absent<qint64> - 1);
    row.line = quint32(in.line());
    row.file = file;
    const int instrument = stock(in, store, code, in.text(code), in.text(name));
    if (in.isGood())
        store.addEvent(instrument, calendarDay(day), channelNo, row);
}

} // namespace feed
