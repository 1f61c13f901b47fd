#include "feed/simulation/simulatedfeed.h"

#include "feed/batchwriter.h"
#include "feed/bookbuilder.h"
#include "feed/instrumentrules.h"

#include <algorithm>

namespace feed {

namespace {

constexpr int tradingDay = 20240318;
constexpr qint64 minute = 60 * 1000;
constexpr qint64 midnight = 1710720000000 - chinaOffset; ///< at which that day starts in China
constexpr qint64 openingTime = midnight + (9 * 60 + 30) * minute;
constexpr qint64 noonTime = midnight + (11 * 60 + 30) * minute;
constexpr qint64 afternoonTime = midnight + 13 * 60 * minute;
constexpr qint64 closingTime = midnight + 15 * 60 * minute;
constexpr qint64 preparationTime = openingTime - 1000;
constexpr int openingOrderCount = 80;

OrderFlow::Rules rulesOf(const Instrument &instrument, int typicalLots, int meanPause)
{
    OrderFlow::Rules rules;
    rules.tick = priceUnits(instrument.tick);
    rules.previousClose = priceUnits(instrument.previousClose);
    rules.lowerLimit = priceUnits(instrument.lowerLimit);
    rules.upperLimit = priceUnits(instrument.upperLimit);
    rules.lot = instrument.lot;
    rules.typicalLots = typicalLots;
    rules.meanPause = meanPause;
    return rules;
}

/// A tenth above or below the close, on the tick.
double limitPrice(const Instrument &instrument, int percent)
{
    const qint64 tick = priceUnits(instrument.tick);
    const qint64 exact = priceUnits(instrument.previousClose) * percent / 100;
    return priceOfUnits((exact + tick / 2) / tick * tick);
}

} // namespace

SimulatedFeed::Stock::Stock(Instrument traded, const OrderFlow::Rules &rules, quint64 seed)
    : instrument(std::move(traded)), flow(rules, seed), nextTime(preparationTime), openingOrders(openingOrderCount)
{
}

SimulatedFeed::SimulatedFeed(quint64 seed)
{
    addStock("606018.SH", "青岚科技", 23.46, 5, 260, seed);
    addStock("606127.SH", "沧原重工", 8.72, 12, 340, seed);
    addStock("606255.SH", "朔川能源", 5.18, 25, 300, seed);
    addStock("606309.SH", "澄湾航运", 14.05, 8, 420, seed);
    addStock("009016.SZ", "云砚电子", 61.30, 3, 220, seed);
    addStock("009128.SZ", "泽岭医药", 38.91, 4, 380, seed);
    addStock("009233.SZ", "栖谷食品", 17.64, 6, 460, seed);
    addStock("009341.SZ", "星汀智造", 112.85, 2, 280, seed);
}

SimulatedFeed::~SimulatedFeed() = default;

void SimulatedFeed::addStock(const char *code, const char *name, double previousClose, int typicalLots, int meanPause,
                             quint64 seed)
{
    Instrument instrument = *stockInstrument(code);
    instrument.index = int(stocks.size());
    instrument.name = name;
    instrument.previousClose = previousClose;
    instrument.upperLimit = limitPrice(instrument, 110);
    instrument.lowerLimit = limitPrice(instrument, 90);
    // Each stock has numbers of its own, so that what happens in one does not change the others.
    const quint64 stockSeed = seed * 1000003 + stocks.size();
    stocks.push_back(std::make_unique<Stock>(instrument, rulesOf(instrument, typicalLots, meanPause), stockSeed));
}

std::string SimulatedFeed::name() const
{
    return "simulated";
}

bool SimulatedFeed::load(BatchWriter &writer, const std::function<bool()> &)
{
    for (const auto &stock : stocks)
        writer.putInstrument(stock->instrument);
    return true;
}

qint64 SimulatedFeed::longestGap() const
{
    return minute;
}

qint64 SimulatedFeed::nextTime() const
{
    qint64 earliest = absent<qint64>;
    for (const auto &stock : stocks)
        earliest = std::min(earliest, stock->nextTime);
    return earliest;
}

SimulatedFeed::Channel &SimulatedFeed::channelOf(const Stock &stock)
{
    return stock.instrument.exchange == "SH" ? shanghai : shenzhen;
}

void SimulatedFeed::step(BatchWriter &writer)
{
    const auto isEarlier = [](const auto &a, const auto &b) { return a->nextTime < b->nextTime; };
    Stock &stock = **std::min_element(stocks.begin(), stocks.end(), isEarlier);
    now = stock.nextTime;
    writer.setTime(now);
    stock.isChanged = true;
    const OrderFlow::Action action =
        stock.openingOrders > 0 ? stock.flow.openingOrder() : stock.flow.next(stock.engine);
    if (action.isCancel)
        withdraw(stock, action.id, writer);
    else
        place(stock, action, writer);
    schedule(stock);
}

void SimulatedFeed::schedule(Stock &stock)
{
    if (stock.openingOrders > 0) {
        --stock.openingOrders;
        stock.nextTime = stock.openingOrders > 0 ? now + 1000 / openingOrderCount : openingTime + stock.flow.pause();
        return;
    }
    stock.nextTime = now + stock.flow.pause();
    if (now < noonTime && stock.nextTime >= noonTime)
        stock.nextTime += afternoonTime - noonTime;
    if (stock.nextTime >= closingTime)
        stock.nextTime = absent<qint64>;
}

void SimulatedFeed::place(Stock &stock, const OrderFlow::Action &action, BatchWriter &writer)
{
    Channel &channel = channelOf(stock);
    OrderState &order = orders.emplace_back();
    order.entry = int(orders.size()) - 1;
    order.instrument = stock.instrument.index;
    order.day = tradingDay;
    order.channel = channel.number;
    order.orderNo = ++channel.lastSequence;
    order.side = action.side;
    order.isListed = true;
    order.price = priceOfUnits(action.price);
    order.quantity = action.quantity;
    order.firstTime = order.lastTime = now;
    writer.putOrder(order);
    ++writer.counters().records;

    const qint64 id = order.entry + 1;
    fills.clear();
    stock.engine.submit(id, action.side, action.price, action.quantity, fills);
    for (const MatchingEngine::Fill &fill : fills)
        addDeal(stock, fill, writer);
    if (stock.engine.openQuantity(id) > 0)
        stock.flow.remember(id);
}

void SimulatedFeed::withdraw(Stock &stock, qint64 id, BatchWriter &writer)
{
    OrderState &order = orders[size_t(id - 1)];
    order.cancelled = stock.engine.cancel(id);
    order.status = order.statusOfQuantities();
    order.lastTime = now;
    ++channelOf(stock).lastSequence;
    ++writer.counters().records;
    writer.putOrder(order);
}

void SimulatedFeed::addDeal(Stock &stock, const MatchingEngine::Fill &fill, BatchWriter &writer)
{
    OrderState &taker = orders[size_t(fill.takerId - 1)];
    OrderState &maker = orders[size_t(fill.makerId - 1)];
    const bool takerBuys = taker.side == Side::Buy;
    Deal deal;
    deal.entry = int(writer.counters().deals);
    deal.instrument = stock.instrument.index;
    deal.day = tradingDay;
    deal.channel = taker.channel;
    deal.sequence = ++channelOf(stock).lastSequence;
    deal.kind = takerBuys ? DealKind::BuyerInitiated : DealKind::SellerInitiated;
    deal.price = priceOfUnits(fill.price);
    deal.quantity = fill.quantity;
    deal.amount = priceOfUnits(fill.price * fill.quantity);
    deal.buyOrderNo = takerBuys ? taker.orderNo : maker.orderNo;
    deal.sellOrderNo = takerBuys ? maker.orderNo : taker.orderNo;
    deal.time = now;
    stock.statistics.add(deal.price, deal.quantity, deal.amount);
    fillOrder(maker, deal, writer);
    fillOrder(taker, deal, writer);
    writer.addDeal(deal);
    ++writer.counters().records;
}

void SimulatedFeed::fillOrder(OrderState &order, const Deal &deal, BatchWriter &writer)
{
    order.filled += deal.quantity;
    order.amount += deal.amount;
    order.status = order.statusOfQuantities();
    order.lastTime = now;
    writer.putOrder(order);
}

QuoteSnapshot SimulatedFeed::quoteOf(const Stock &stock) const
{
    QuoteSnapshot quote;
    quote.instrument = stock.instrument.index;
    quote.time = now;
    quote.phase = phaseAt(now);
    quote.previousClose = stock.instrument.previousClose;
    quote.upperLimit = stock.instrument.upperLimit;
    quote.lowerLimit = stock.instrument.lowerLimit;
    stock.statistics.fill(quote);
    stock.engine.book().fillLevels(quote);
    return quote;
}

void SimulatedFeed::completeBatch(BatchWriter &writer)
{
    for (const auto &stock : stocks) {
        if (!stock->isChanged)
            continue;
        stock->isChanged = false;
        writer.putQuote(quoteOf(*stock));
    }
}

} // namespace feed
