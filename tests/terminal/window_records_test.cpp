#include <QtCore/QString>
#include <gtest/gtest.h>

#include "kdservice/idata.h"
#include "kv/efilterflag.h"
#include "records/fieldids.h"
#include "trading_support.h"
#include "window/marketrecords.h"

using namespace terminal;
using namespace refhost;

namespace {

feed::Instrument stock(int index)
{
    return tradingtest::stock(index, index == 0 ? "605580.SH" : "605581.SH", 15.5);
}

feed::OrderState order()
{
    feed::OrderState state;
    state.entry = 7;
    state.instrument = 1;
    state.day = 20230711;
    state.channel = 5;
    state.orderNo = 4711;
    state.side = feed::Side::Sell;
    state.status = feed::OrderStatus::PartCancelled;
    state.price = 15.93;
    state.quantity = 1000;
    state.filled = 300;
    state.cancelled = 500;
    state.amount = 4779;
    state.firstTime = 1689038100000;
    state.lastTime = 1689038101120;
    return state;
}

std::string number(double value)
{
    return value == feed::absent<double> ? "-" : QString::number(value).toStdString();
}

std::string describeOrder(const kdservice::IData &record)
{
    return record.getString(OrderCode) + " " + record.getString(OrderDirection) + " " +
           number(record.getDouble(OrderPrice)) + " x " + std::to_string(record.getLong(OrderQuantity)) + " = " +
           std::to_string(record.getLong(OrderFilled)) + " + " + std::to_string(record.getLong(OrderCancelled)) +
           " + " + std::to_string(record.getLong(OrderUnfilled)) + ", at " +
           number(record.getDouble(OrderAveragePrice)) + " for " + number(record.getDouble(OrderAmount)) + ", status " +
           record.getString(OrderStatus) + ", kind " + record.getString(OrderKind) + ", no " +
           std::to_string(record.getLong(OrderNumber)) + " in " + std::to_string(record.getInt(OrderChannel)) + " of " +
           std::to_string(record.getInt(OrderExchange)) + ", entry " + std::to_string(record.getInt(OrderSequence)) +
           ", from " + std::to_string(record.getLong(OrderEntryTime)) + " to " +
           std::to_string(record.getLong(OrderUpdateTime));
}

std::string describeDeal(const kdservice::IData &record)
{
    return record.getString(DealCode) + " [" + record.getString(DealDirection) + "] " +
           number(record.getDouble(DealPrice)) + " x " + std::to_string(record.getLong(DealQuantity)) + " = " +
           number(record.getDouble(DealAmount)) + ", no " + std::to_string(record.getLong(DealNumber)) + " in " +
           std::to_string(record.getInt(DealChannel)) + " of " + std::to_string(record.getInt(DealExchange)) +
           ", buy " + std::to_string(record.getLong(DealBuyOrder)) + ", sell " +
           std::to_string(record.getLong(DealSellOrder)) + ", entry " + std::to_string(record.getInt(DealSequence)) +
           ", at " + std::to_string(record.getLong(DealTime));
}

} // namespace

TEST(MarketRecords, AnOrderTellsAllOfItsStateAndWhatIsNotKnownStaysAbsent)
{
    MarketRecords records;
    records.takeInstrument(stock(1));
    feed::OrderState state = order();
    const auto record = records.orderRecord(state);
    EXPECT_EQ(record->getBaseId(), MetaMarketOrder);
    EXPECT_EQ(record->getKey(), feed::orderKey(state, stock(1)));
    EXPECT_EQ(describeOrder(*record),
              "605581.SH 1 15.93 x 1000 = 300 + 500 + 200, at 15.93 for 4779, status 5, kind 2, "
              "no 4711 in 5 of 1, entry 7, from 1689038100000 to 1689038101120");

    state.price = feed::absent<double>;
    state.filled = 0;
    state.amount = 0;
    state.cancelled = 0;
    state.status = feed::OrderStatus::Accepted;
    state.side = feed::Side::Buy;
    const auto unpriced = records.orderRecord(state);
    EXPECT_EQ(describeOrder(*unpriced), "605581.SH 0 - x 1000 = 0 + 0 + 1000, at - for -, status 2, kind , "
                                        "no 4711 in 5 of 1, entry 7, from 1689038100000 to 1689038101120");
    EXPECT_EQ(describeOrder(*record).find("15.93"), 12u) << "a later state changed the record of an earlier one";
}

TEST(MarketRecords, TheAveragePriceOfAFutureIsAPriceWhateverAContractHolds)
{
    MarketRecords records;
    feed::Instrument index = *feed::futureInstrument("IF2406", "CFFEX");
    index.index = 1;
    records.takeInstrument(index);
    feed::OrderState state = order();
    state.filled = 2;
    state.amount = 2 * 3526.2 * 300;
    EXPECT_DOUBLE_EQ(records.orderRecord(state)->getDouble(OrderAveragePrice), 3526.2);
}

TEST(MarketRecords, ADealTakesTheSideThatMovedLastAndAnAuctionHasNone)
{
    MarketRecords records;
    records.takeInstrument(stock(0));
    feed::Deal deal = tradingtest::deal(0, 1689038100010, 15.95, 200, feed::DealKind::Auction);
    deal.entry = 3;
    deal.day = 20230711;
    deal.channel = 2;
    deal.sequence = 99;
    deal.amount = 3190;
    deal.buyOrderNo = 11;
    deal.sellOrderNo = 12;
    const char *sides[] = {"[]", "[0]", "[1]"};
    for (const auto kind : {feed::DealKind::Auction, feed::DealKind::BuyerInitiated, feed::DealKind::SellerInitiated}) {
        deal.kind = kind;
        const auto record = records.dealRecord(deal);
        EXPECT_EQ(record->getKey(), feed::dealKey(deal, stock(0)));
        EXPECT_EQ(describeDeal(*record), std::string("605580.SH ") + sides[int(kind)] +
                                             " 15.95 x 200 = 3190, no 99 in 2 of 1, buy 11, sell 12, entry 3, "
                                             "at 1689038100010");
    }
}

TEST(MarketRecords, OrdersAndDealsShareTheOneRecordOfTheirInstrument)
{
    MarketRecords records;
    EXPECT_FALSE(records.orderRecord(order())) << "an instrument that nobody told";
    EXPECT_FALSE(records.instrumentRecord(-1));
    records.takeInstrument(stock(1));
    EXPECT_FALSE(records.instrumentRecord(0)) << "a gap in the indexes";
    const auto record = records.orderRecord(order());
    const auto instrument = record->getIData(OrderInstrument);
    EXPECT_EQ(instrument, records.instrumentRecord(1));
    EXPECT_EQ(instrument->getDouble(InstrumentPrevClose), 15.5);
    EXPECT_EQ(instrument->getInt(InstrumentKind), KV::FilterStock);

    feed::Instrument future = stock(1);
    future.kind = feed::InstrumentKind::Future;
    future.name = "苹果010";
    future.exchange = "CZCE";
    future.previousSettlement = 7700;
    records.takeInstrument(future);
    EXPECT_EQ(records.instrumentRecord(1), instrument) << "rows that hold it would keep the old name";
    EXPECT_EQ(instrument->getString(InstrumentName), "苹果010");
    EXPECT_EQ(instrument->getInt(InstrumentExchange), 7);
    EXPECT_EQ(instrument->getInt(InstrumentKind), KV::FilterFuture);
    EXPECT_EQ(instrument->getDouble(InstrumentPrevClose), 7700) << "futures change against their settlement";
}

TEST(MarketRecords, AQuoteIsComparedWithTheCloseBeforeAndWhatIsNotKnownStaysAbsent)
{
    MarketRecords records;
    feed::QuoteSnapshot quote;
    quote.instrument = 1;
    EXPECT_FALSE(records.quoteRecord(quote)) << "an instrument that nobody told";
    feed::Instrument instrument = stock(1);
    records.takeInstrument(instrument);
    const auto describe = [&] {
        const auto record = records.quoteRecord(quote);
        return record->getKey() + " " + number(record->getDouble(QuoteLast)) + ", " +
               number(record->getDouble(QuoteChange)) + " = " + number(record->getDouble(QuoteChangeRatio)) + " to " +
               number(record->getDouble(QuotePrevClose)) + ", bid " + number(record->getDouble(QuoteBidPrice)) +
               ", ask " + number(record->getDouble(QuoteAskPrice));
    };
    EXPECT_EQ(describe(), "605581.SH -, - = - to 15.5, bid -, ask -");
    quote.last = 18.6;
    quote.bids[0] = {18.5, 100, 1};
    quote.asks[0] = {18.7, 200, 1};
    EXPECT_EQ(describe(), "605581.SH 18.6, 3.1 = 0.2 to 15.5, bid 18.5, ask 18.7");
    quote.previousClose = 20;
    EXPECT_EQ(describe(), "605581.SH 18.6, -1.4 = -0.07 to 20, bid 18.5, ask 18.7") << "the quote knows it better";
    quote.previousSettlement = 18.6;
    EXPECT_EQ(describe(), "605581.SH 18.6, 0 = 0 to 18.6, bid 18.5, ask 18.7");
    quote.previousSettlement = 0;
    EXPECT_EQ(describe(), "605581.SH 18.6, 18.6 = - to 0, bid 18.5, ask 18.7") << "nothing divides by zero";
}
