#include "feed/replay/shanghaitradedecoder.h"

namespace feed {

std::vector<std::string_view> ShanghaiTradeDecoder::neededColumns()
{
    return {"MDDate",     "MDTime",   "TradeBuyNo", "TradeSellNo", "TradeBSFlag",
            "TradePrice", "TradeQty", "ChannelNo",  "ApplSeqNum",  "SecurityID"};
}

ShanghaiTradeDecoder::ShanghaiTradeDecoder(const FieldReader &in)
    : date(in.column("MDDate")), time(in.column("MDTime")), buyNo(in.column("TradeBuyNo")),
      sellNo(in.column("TradeSellNo")), initiator(in.column("TradeBSFlag")), price(in.column("TradePrice")),
      quantity(in.column("TradeQty")), amount(in.column("TradeMoney")), channel(in.column("ChannelNo")),
      sequence(in.column("ApplSeqNum")), code(in.column("SecurityID")), name(in.column("Symbol"))
{
}

void ShanghaiTradeDecoder::decode(FieldReader &in, ReplayStore &store, quint16 file)
{
    const int day = in.date(date);
    EventRow row;
    row.kind = EventRow::Kind::Traded;
    row.time = chinaTime(day, in.timeOfDay(time));
    row.orderNo = in.whole(buyNo, 1, absent<qint64> - 1);
    row.sellOrderNo = in.whole(sellNo, 1, absent<qint64> - 1);
    row.flag = char(in.choice(initiator, {"0", "1", "2"}));
    row.price = in.positivePrice(price);
    row.quantity = in.quantity(quantity);
    row.amount =
        in.text(amount).empty() ? row.price * double(row.quantity) : in.number(amount, 0, FieldReader::largestAmount);
    const auto channelNo = int(in.whole(channel, 0, absent<int> - 1));
    row.sequence = in.whole(sequence, 0, absent<qint64> - 1);
    row.line = quint32(in.line());
    row.file = file;
    const int instrument = stock(in, store, code, in.text(code), in.text(name));
    if (in.isGood())
        store.addEvent(instrument, calendarDay(day), channelNo, row);
}

} // namespace feed
