#include "feed/replay/futurestickdecoder.h"

#include <algorithm>
#include <cmath>

namespace feed {

std::vector<std::string_view> FuturesTickDecoder::neededColumns()
{
    return {"TradingDay",      "InstrumentID", "LastPrice",      "PreSettlementPrice",
            "PreClosePrice",   "OpenPrice",    "HighestPrice",   "LowestPrice",
            "Volume",          "Turnover",     "OpenInterest",   "UpperLimitPrice",
            "LowerLimitPrice", "UpdateTime",   "UpdateMillisec", "BidPrice1",
            "BidVolume1",      "AskPrice1",    "AskVolume1"};
}

FuturesTickDecoder::FuturesTickDecoder(const FieldReader &in)
    : tradingDay(in.column("TradingDay")), actionDay(in.column("ActionDay")), code(in.column("InstrumentID")),
      exchange(in.column("ExchangeID")), last(in.column("LastPrice")),
      previousSettlement(in.column("PreSettlementPrice")), previousClose(in.column("PreClosePrice")),
      open(in.column("OpenPrice")), high(in.column("HighestPrice")), low(in.column("LowestPrice")),
      volume(in.column("Volume")), turnover(in.column("Turnover")), openInterest(in.column("OpenInterest")),
      upperLimit(in.column("UpperLimitPrice")), lowerLimit(in.column("LowerLimitPrice")), time(in.column("UpdateTime")),
      milliseconds(in.column("UpdateMillisec"))
{
    for (size_t i = 0; i < levels.size(); ++i) {
        const std::string level = std::to_string(i + 1);
        levels[i] = {in.column("BidPrice" + level), in.column("BidVolume" + level), in.column("AskPrice" + level),
                     in.column("AskVolume" + level)};
    }
}

qint64 FuturesTickDecoder::readTime(FieldReader &in) const
{
    // A night session belongs to the next trading day; the day on which it happened is the action day.
    const int day = in.date(in.text(actionDay).empty() ? tradingDay : actionDay);
    return chinaTime(day, in.timeOfDay(time)) + in.whole(milliseconds, 0, 999);
}

void FuturesTickDecoder::readLevels(FieldReader &in, QuoteSnapshot &quote) const
{
    for (size_t i = 0; i < levels.size(); ++i) {
        const auto readLevel = [&in](Column price, Column quantity, QuoteLevel &level) {
            if (price < 0 || quantity < 0)
                return;
            level.price = in.futurePrice(price);
            const qint64 lots = in.whole(quantity, 0, FieldReader::largestVolume);
            if (level.price != absent<double>)
                level.quantity = lots;
        };
        readLevel(levels[i].bidPrice, levels[i].bidQuantity, quote.bids[i]);
        readLevel(levels[i].askPrice, levels[i].askQuantity, quote.asks[i]);
    }
}

/// Of a product whose rules are not known, the prices tell the decimals.
void FuturesTickDecoder::refineDecimals(FieldReader &in, Instrument &instrument) const
{
    if (!instrument.name.empty())
        return;
    std::string_view text = in.text(last);
    const size_t point = text.find('.');
    if (point == std::string_view::npos)
        return;
    const size_t lastDigit = text.find_last_not_of('0');
    const auto decimals = int(std::min<size_t>(lastDigit - point, 6));
    if (decimals > instrument.priceDecimals) {
        instrument.priceDecimals = decimals;
        instrument.tick = std::pow(10.0, -decimals);
    }
}

void FuturesTickDecoder::decode(FieldReader &in, ReplayStore &store, quint16)
{
    QuoteSnapshot quote;
    quote.time = readTime(in);
    quote.last = in.futurePrice(last);
    quote.previousSettlement = in.futurePrice(previousSettlement);
    quote.previousClose = in.futurePrice(previousClose);
    quote.open = in.futurePrice(open);
    quote.high = in.futurePrice(high);
    quote.low = in.futurePrice(low);
    quote.upperLimit = in.futurePrice(upperLimit);
    quote.lowerLimit = in.futurePrice(lowerLimit);
    quote.volume = in.whole(volume, 0, FieldReader::largestVolume);
    quote.turnover = in.number(turnover, 0, FieldReader::largestAmount);
    quote.openInterest = in.whole(openInterest, 0, FieldReader::largestVolume);
    readLevels(in, quote);
    quote.instrument = future(in, store, code, exchange);
    if (!in.isGood())
        return;
    refineDecimals(in, store.instrument(quote.instrument));
    store.addQuote(quote);
}

} // namespace feed
