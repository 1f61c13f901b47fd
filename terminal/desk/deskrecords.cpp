#include "desk/deskrecords.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "feed/instrumentrules.h"
#include "records/record.h"
#include "services/instruments.h"
#include "trading/paperbroker.h"
#include "window/marketrecords.h"

namespace terminal {

using namespace refhost;

namespace {

/// Orders of entry beyond the last that fits count as one.
int sequenceOf(qint64 number)
{
    return int(std::min<qint64>(number, std::numeric_limits<int>::max() - 1));
}

} // namespace

DeskRecords::DeskRecords() = default;

DeskRecords::~DeskRecords() = default;

qint64 DeskRecords::numberOf(const std::string &key)
{
    return std::strtoll(key.c_str(), nullptr, 10);
}

DeskRecords::Record DeskRecords::instrumentOf(const std::string &code, const std::string &name,
                                              const std::string &exchange)
{
    if (auto known = Instruments::find(code))
        return known;
    Record &own = ownInstruments[code];
    if (!own) {
        const feed::Instrument instrument = trading::PaperBroker::instrumentByCode(code, exchange);
        const auto record = makePlain(MetaInstrument, code);
        record->setData(InstrumentCode, code);
        record->setData(InstrumentName, name);
        record->setData(InstrumentExchange, MarketRecords::exchangeValue(exchange));
        record->setData(InstrumentPriceDecimals, instrument.priceDecimals);
        record->setData(InstrumentMultiplier, instrument.multiplier);
        own = record;
    }
    return own;
}

DeskRecords::Record DeskRecords::orderRecord(const trading::PaperOrder &order)
{
    const auto record = makeOrder(MetaOwnOrder, std::to_string(order.id));
    const Record instrument = instrumentOf(order.code, order.name, order.exchange);
    record->setData(OrderCode, order.code);
    record->setData(OrderExchange, MarketRecords::exchangeValue(order.exchange));
    record->setData(OrderDirection, int(order.side));
    record->setData(OrderPrice, feed::priceOfUnits(order.price));
    record->setData(OrderKind, int('2'));
    record->setData(OrderQuantity, order.quantity);
    record->setData(OrderFilled, order.filled.quantity);
    record->setData(OrderCancelled, order.cancelled);
    record->setData(OrderUnfilled, order.openQuantity());
    if (order.filled.quantity > 0) {
        const double amount = trading::yuanOf(order.filled.amount);
        const int multiplier = std::max(1, instrument->getInt(InstrumentMultiplier));
        record->setData(OrderAveragePrice, amount / double(order.filled.quantity * multiplier));
        record->setData(OrderAmount, amount);
    }
    record->setData(OrderStatus, int(order.status));
    record->setData(OrderEntryTime, order.entryTime);
    record->setData(OrderUpdateTime, order.updateTime);
    record->setData(OrderNumber, order.id);
    record->setData(OrderSequence, sequenceOf(order.id));
    record->setData(OrderAccount, order.account);
    record->setData(OrderDay, order.day);
    if (!order.remark.empty())
        record->setData(OrderRejectReason, order.remark);
    if (MarketRecords::isFuturesExchange(order.exchange))
        record->setData(OrderOffset, int(order.offset));
    record->setNested(OrderInstrument, instrument);
    return record;
}

DeskRecords::Record DeskRecords::dealRecord(const trading::PaperDeal &deal)
{
    const auto record = makeDeal(MetaOwnDeal, std::to_string(deal.id));
    record->setData(DealCode, deal.code);
    record->setData(DealExchange, MarketRecords::exchangeValue(deal.exchange));
    record->setData(DealDirection, int(deal.side));
    record->setData(DealPrice, feed::priceOfUnits(deal.price));
    record->setData(DealQuantity, deal.quantity);
    record->setData(DealAmount, trading::yuanOf(deal.amount));
    record->setData(DealCommission, trading::yuanOf(deal.charges.total()));
    if (deal.offset != trading::Offset::Open)
        record->setData(DealRealised, trading::yuanOf(deal.realised));
    record->setData(DealTime, deal.time);
    record->setData(DealNumber, deal.id);
    record->setData(DealOrder, deal.order);
    record->setData(DealSequence, sequenceOf(deal.id));
    record->setData(DealAccount, deal.account);
    record->setData(DealDay, deal.day);
    if (MarketRecords::isFuturesExchange(deal.exchange))
        record->setData(DealOffset, int(deal.offset));
    record->setNested(DealInstrument, instrumentOf(deal.code, deal.name, deal.exchange));
    return record;
}

} // namespace terminal
