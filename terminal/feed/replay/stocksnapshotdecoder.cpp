#include "feed/replay/stocksnapshotdecoder.h"

#include <utility>

namespace feed {

namespace {

TradingPhase phaseOfCode(std::string_view code)
{
    static constexpr std::pair<std::string_view, TradingPhase> phases[] = {
        {"0", TradingPhase::BeforeOpening}, {"1", TradingPhase::OpeningAuction}, {"2", TradingPhase::BeforeContinuous},
        {"3", TradingPhase::Continuous},    {"4", TradingPhase::LunchBreak},     {"5", TradingPhase::ClosingAuction},
        {"6", TradingPhase::Closed},        {"10", TradingPhase::JustClosed},    {"11", TradingPhase::AfterHours},
    };
    for (const auto &[text, phase] : phases)
        if (text == code)
            return phase;
    return TradingPhase::Unknown;
}

} // namespace

std::vector<std::string_view> StockSnapshotDecoder::neededColumns()
{
    return {"MDDate",        "MDTime",        "SecurityID",       "PreClosePx",      "LastPx",        "OpenPx",
            "HighPx",        "LowPx",         "TotalVolumeTrade", "TotalValueTrade", "BuyPrice1",     "BuyPrice2",
            "BuyPrice3",     "BuyPrice4",     "BuyPrice5",        "BuyPrice6",       "BuyPrice7",     "BuyPrice8",
            "BuyPrice9",     "BuyPrice10",    "BuyOrderQty1",     "BuyOrderQty2",    "BuyOrderQty3",  "BuyOrderQty4",
            "BuyOrderQty5",  "BuyOrderQty6",  "BuyOrderQty7",     "BuyOrderQty8",    "BuyOrderQty9",  "BuyOrderQty10",
            "SellPrice1",    "SellPrice2",    "SellPrice3",       "SellPrice4",      "SellPrice5",    "SellPrice6",
            "SellPrice7",    "SellPrice8",    "SellPrice9",       "SellPrice10",     "SellOrderQty1", "SellOrderQty2",
            "SellOrderQty3", "SellOrderQty4", "SellOrderQty5",    "SellOrderQty6",   "SellOrderQty7", "SellOrderQty8",
            "SellOrderQty9", "SellOrderQty10"};
}

StockSnapshotDecoder::StockSnapshotDecoder(const FieldReader &in)
    : date(in.column("MDDate")), time(in.column("MDTime")), code(in.column("SecurityID")),
      previousClose(in.column("PreClosePx")), last(in.column("LastPx")), open(in.column("OpenPx")),
      high(in.column("HighPx")), low(in.column("LowPx")), volume(in.column("TotalVolumeTrade")),
      turnover(in.column("TotalValueTrade")), phase(in.column("TradingPhaseCode")), upperLimit(in.column("MaxPx")),
      lowerLimit(in.column("MinPx")), bids(sideColumns(in, "Buy")), asks(sideColumns(in, "Sell"))
{
}

StockSnapshotDecoder::SideColumns StockSnapshotDecoder::sideColumns(const FieldReader &in, const std::string &side)
{
    SideColumns columns;
    for (size_t i = 0; i < columns.size(); ++i) {
        const std::string level = std::to_string(i + 1);
        columns[i].price = in.column(side + "Price" + level);
        columns[i].quantity = in.column(side + "OrderQty" + level);
        columns[i].orders = in.column(side + "NumOrders" + level);
    }
    return columns;
}

void StockSnapshotDecoder::readSide(FieldReader &in, const SideColumns &columns,
                                    std::array<QuoteLevel, QuoteSnapshot::depth> &levels)
{
    for (size_t i = 0; i < columns.size(); ++i) {
        QuoteLevel level;
        level.price = in.price(columns[i].price);
        level.quantity = in.whole(columns[i].quantity, 0, FieldReader::largestVolume);
        if (columns[i].orders >= 0)
            level.orders = int(in.whole(columns[i].orders, 0, absent<int> - 1));
        if (level.price != absent<double>)
            levels[i] = level;
    }
}

void StockSnapshotDecoder::decode(FieldReader &in, ReplayStore &store, quint16)
{
    QuoteSnapshot quote;
    quote.time = chinaTime(in.date(date), in.timeOfDay(time));
    quote.previousClose = in.price(previousClose);
    quote.last = in.price(last);
    quote.open = in.price(open);
    quote.high = in.price(high);
    quote.low = in.price(low);
    quote.volume = in.whole(volume, 0, FieldReader::largestVolume);
    quote.turnover = in.number(turnover, 0, FieldReader::largestAmount);
    quote.phase = phaseOfCode(in.text(phase));
    if (upperLimit >= 0)
        quote.upperLimit = in.limitPrice(upperLimit);
    if (lowerLimit >= 0)
        quote.lowerLimit = in.limitPrice(lowerLimit);
    readSide(in, bids, quote.bids);
    readSide(in, asks, quote.asks);
    quote.instrument = stock(in, store, code, in.text(code));
    if (in.isGood())
        store.addQuote(quote);
}

} // namespace feed
