#include "feed/replay/shenzhentradedecoder.h"

namespace feed {

namespace {

constexpr int millisecondsPerMinute = 60 * 1000;
constexpr int continuousFrom = (9 * 60 + 30) * millisecondsPerMinute;
constexpr int closingAuctionFrom = (14 * 60 + 57) * millisecondsPerMinute;

} // namespace

std::vector<std::string_view> ShenzhenTradeDecoder::neededColumns()
{
    return {"ChannelNo",  "ApplSeqNum", "BidApplSeqNum", "OfferApplSeqNum", "SecurityID",
            "TradePrice", "TradeQty",   "ExecType",      "TradeTime"};
}

ShenzhenTradeDecoder::ShenzhenTradeDecoder(const FieldReader &in)
    : channel(in.column("ChannelNo")), sequence(in.column("ApplSeqNum")), bidNo(in.column("BidApplSeqNum")),
      offerNo(in.column("OfferApplSeqNum")), code(in.column("SecurityID")), price(in.column("TradePrice")),
      quantity(in.column("TradeQty")), type(in.column("ExecType")), time(in.column("TradeTime")),
      market(in.column("Market"))
{
}

void ShenzhenTradeDecoder::readDeal(FieldReader &in, EventRow &row, int millisecondsOfDay) const
{
    row.kind = EventRow::Kind::Traded;
    row.orderNo = in.whole(bidNo, 1, absent<qint64> - 1);
    row.sellOrderNo = in.whole(offerNo, 1, absent<qint64> - 1);
    row.price = in.positivePrice(price);
    row.amount = row.price * double(row.quantity);
    // The table does not say who moved; the order with the later number did, outside auctions.
    const bool isAuction = millisecondsOfDay < continuousFrom || millisecondsOfDay >= closingAuctionFrom;
    row.flag = char(isAuction                       ? DealKind::Auction
                    : row.orderNo > row.sellOrderNo ? DealKind::BuyerInitiated
                                                    : DealKind::SellerInitiated);
}

void ShenzhenTradeDecoder::readCancel(FieldReader &in, EventRow &row) const
{
    row.kind = EventRow::Kind::Cancelled;
    row.price = absent<double>;
    const qint64 bid = in.whole(bidNo, 0, absent<qint64> - 1);
    const qint64 offer = in.whole(offerNo, 0, absent<qint64> - 1);
    if ((bid == 0) == (offer == 0))
        in.reject(offerNo, "与撤单不符：撤单应当一侧为委托编号，另一侧为 0");
    row.orderNo = bid != 0 ? bid : offer;
    row.flag = char(bid != 0 ? Side::Buy : Side::Sell);
}

void ShenzhenTradeDecoder::decode(FieldReader &in, ReplayStore &store, quint16 file)
{
    EventRow row;
    const qint64 localTime = in.dateAndTime(time);
    row.time = localTime - chinaOffset;
    row.quantity = in.quantity(quantity);
    if (in.choice(type, {"F", "4"}) == 0)
        readDeal(in, row, int(localTime % millisecondsPerDay));
    else
        readCancel(in, row);
    const auto channelNo = int(in.whole(channel, 0, absent<int> - 1));
    row.sequence = in.whole(sequence, 0, absent<qint64> - 1);
    row.line = quint32(in.line());
    row.file = file;
    if (!in.text(market).empty())
        in.choice(market, {"SZ"});
    const int instrument = stock(in, store, code, std::string(in.text(code)) + ".SZ");
    if (in.isGood())
        store.addEvent(instrument, calendarDay(int(localTime / millisecondsPerDay)), channelNo, row);
}

} // namespace feed
