#include "window/marketrecords.h"

#include <limits>
#include <string>

#include "kv/efilterflag.h"
#include "records/record.h"
#include "services/instruments.h"

namespace terminal {

namespace {

using namespace refhost;

KV::EFilterFlag kindOf(feed::InstrumentKind kind)
{
    switch (kind) {
    case feed::InstrumentKind::Fund:
        return KV::FilterFund;
    case feed::InstrumentKind::Bond:
        return KV::FilterBond;
    case feed::InstrumentKind::Future:
        return KV::FilterFuture;
    default:
        return KV::FilterStock;
    }
}

/// Who moved last, as the side that took; an auction has none.
void setTaker(DealRecord &record, feed::DealKind kind)
{
    if (kind == feed::DealKind::BuyerInitiated)
        record.setData(DealDirection, int(feed::Side::Buy));
    else if (kind == feed::DealKind::SellerInitiated)
        record.setData(DealDirection, int(feed::Side::Sell));
}

} // namespace

MarketRecords::MarketRecords()
    : orderType(TypeCatalogue::instance().findType(MetaMarketOrder)),
      dealType(TypeCatalogue::instance().findType(MetaMarketDeal)),
      quoteType(TypeCatalogue::instance().findType(MetaQuote)),
      instrumentType(TypeCatalogue::instance().findType(MetaInstrument))
{
}

MarketRecords::~MarketRecords() = default;

int MarketRecords::exchangeValue(const std::string &exchange)
{
    static const struct
    {
        const char *name;
        int value;
    } exchanges[] = {{"SH", 1},  {"SZ", 2},   {"BJ", 3},  {"CFFEX", 4}, {"SHFE", 5},
                     {"DCE", 6}, {"CZCE", 7}, {"INE", 8}, {"GFEX", 9}};
    for (const auto &known : exchanges)
        if (exchange == known.name)
            return known.value;
    return std::numeric_limits<int>::max();
}

bool MarketRecords::isFuturesExchange(const std::string &exchange)
{
    constexpr int firstFutures = 4; // after the three of stocks
    return exchangeValue(exchange) >= firstFutures;
}

void MarketRecords::takeInstrument(const feed::Instrument &instrument)
{
    const auto index = static_cast<size_t>(instrument.index);
    if (index >= instruments.size())
        instruments.resize(index + 1);
    Known &known = instruments[index];
    known.instrument = instrument;
    known.exchange = exchangeValue(instrument.exchange);
    if (!known.record)
        known.record = makePlain(*instrumentType, instrument.code);
    PlainRecord &record = *known.record;
    record.setData(InstrumentCode, instrument.code);
    record.setData(InstrumentName, instrument.name);
    record.setData(InstrumentExchange, known.exchange);
    record.setData(InstrumentPriceDecimals, instrument.priceDecimals);
    const bool settles = instrument.previousSettlement != feed::absent<double>;
    record.setData(InstrumentPrevClose, settles ? instrument.previousSettlement : instrument.previousClose);
    record.setData(InstrumentUpperLimit, instrument.upperLimit);
    record.setData(InstrumentLowerLimit, instrument.lowerLimit);
    record.setData(InstrumentLot, instrument.lot);
    record.setData(InstrumentPriceTick, instrument.tick);
    record.setData(InstrumentMultiplier, instrument.multiplier);
    record.setData(InstrumentKind, int(kindOf(instrument.kind)));
    Instruments::put(known.record);
}

MarketRecords::Record MarketRecords::orderRecord(const feed::OrderState &order) const
{
    const Known *known = find(order.instrument);
    if (!known)
        return {};
    const auto record = makeOrder(*orderType, feed::orderKey(order, known->instrument));
    record->setData(OrderCode, known->instrument.code);
    record->setData(OrderExchange, known->exchange);
    record->setData(OrderDirection, int(order.side));
    record->setData(OrderPrice, order.price);
    if (order.price != feed::absent<double>)
        record->setData(OrderKind, int('2'));
    record->setData(OrderQuantity, order.quantity);
    record->setData(OrderFilled, order.filled);
    record->setData(OrderCancelled, order.cancelled);
    record->setData(OrderUnfilled, order.quantity - order.filled - order.cancelled);
    if (order.filled > 0) {
        const double units = static_cast<double>(order.filled) * known->instrument.multiplier;
        record->setData(OrderAveragePrice, order.amount / units);
        record->setData(OrderAmount, order.amount);
    }
    record->setData(OrderStatus, int(order.status));
    record->setData(OrderEntryTime, order.firstTime);
    record->setData(OrderUpdateTime, order.lastTime);
    record->setData(OrderNumber, order.orderNo);
    record->setData(OrderChannel, order.channel);
    record->setData(OrderSequence, order.entry);
    record->setNested(OrderInstrument, known->record);
    return record;
}

MarketRecords::Record MarketRecords::dealRecord(const feed::Deal &deal) const
{
    const Known *known = find(deal.instrument);
    if (!known)
        return {};
    const auto record = makeDeal(*dealType, feed::dealKey(deal, known->instrument));
    record->setData(DealCode, known->instrument.code);
    record->setData(DealExchange, known->exchange);
    setTaker(*record, deal.kind);
    record->setData(DealPrice, deal.price);
    record->setData(DealQuantity, deal.quantity);
    record->setData(DealAmount, deal.amount);
    record->setData(DealTime, deal.time);
    record->setData(DealNumber, deal.sequence);
    record->setData(DealBuyOrder, deal.buyOrderNo);
    record->setData(DealSellOrder, deal.sellOrderNo);
    record->setData(DealChannel, deal.channel);
    record->setData(DealSequence, deal.entry);
    record->setNested(DealInstrument, known->record);
    return record;
}

MarketRecords::Record MarketRecords::quoteRecord(const feed::QuoteSnapshot &quote) const
{
    const Known *known = find(quote.instrument);
    if (!known)
        return {};
    const auto record = makePlain(*quoteType, known->instrument.code);
    const double reference = feed::referencePrice(quote, known->instrument);
    record->setData(QuoteCode, known->instrument.code);
    record->setData(QuoteLast, quote.last);
    if (quote.last != feed::absent<double> && reference != feed::absent<double>) {
        record->setData(QuoteChange, quote.last - reference);
        if (reference > 0)
            record->setData(QuoteChangeRatio, (quote.last - reference) / reference);
    }
    record->setData(QuoteVolume, quote.volume);
    record->setData(QuoteTurnover, quote.turnover);
    record->setData(QuoteBidPrice, quote.bids[0].price);
    record->setData(QuoteBidVolume, quote.bids[0].quantity);
    record->setData(QuoteAskPrice, quote.asks[0].price);
    record->setData(QuoteAskVolume, quote.asks[0].quantity);
    record->setData(QuoteOpen, quote.open);
    record->setData(QuoteHigh, quote.high);
    record->setData(QuoteLow, quote.low);
    record->setData(QuotePrevClose, reference);
    record->setData(QuoteTime, quote.time);
    record->setNested(QuoteInstrument, known->record);
    return record;
}

MarketRecords::Record MarketRecords::instrumentRecord(int index) const
{
    const Known *known = find(index);
    return known ? known->record : Record();
}

const MarketRecords::Known *MarketRecords::find(int index) const
{
    const auto at = static_cast<size_t>(index);
    return index >= 0 && at < instruments.size() && instruments[at].record ? &instruments[at] : nullptr;
}

} // namespace terminal
