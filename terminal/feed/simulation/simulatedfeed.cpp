#include "feed/simulation/simulatedfeed.h"

#include "feed/batchwriter.h"
#include "feed/bookbuilder.h"
#include "feed/instrumentrules.h"

#include <QtCore/QDate>
#include <algorithm>

namespace feed {

namespace {

constexpr int firstDay = 20240318;
constexpr qint64 minute = 60 * 1000;
constexpr qint64 openingTime = (9 * 60 + 30) * minute; ///< times of the day, since midnight in China
constexpr qint64 noonTime = (11 * 60 + 30) * minute;
constexpr qint64 afternoonTime = 13 * 60 * minute;
constexpr qint64 closingTime = 15 * 60 * minute;
constexpr qint64 preparationTime = openingTime - 1000;
constexpr int openingOrderCount = 80;

QDate dateOf(int day)
{
    return {day / 10000, day / 100 % 100, day % 100};
}

qint64 midnightOf(int day)
{
    constexpr qint64 wholeDay = 24 * 60 * minute;
    return QDate(1970, 1, 1).daysTo(dateOf(day)) * wholeDay - chinaOffset;
}

int nextWeekday(int day)
{
    const QDate before = dateOf(day);
    const QDate next = before.addDays(before.dayOfWeek() == Qt::Friday ? 3 : 1);
    return next.year() * 10000 + next.month() * 100 + next.day();
}

double referenceOf(const Instrument &instrument)
{
    return instrument.kind == InstrumentKind::Future ? instrument.previousSettlement : instrument.previousClose;
}

/// A price on the tick that is nearest.
double onTick(const Instrument &instrument, double price)
{
    const qint64 tick = priceUnits(instrument.tick);
    return priceOfUnits((priceUnits(price) + tick / 2) / tick * tick);
}

/// A tenth above and below what the day's prices are compared with.
void setLimits(Instrument &instrument)
{
    const qint64 reference = priceUnits(referenceOf(instrument));
    instrument.upperLimit = onTick(instrument, priceOfUnits(reference * 110 / 100));
    instrument.lowerLimit = onTick(instrument, priceOfUnits(reference * 90 / 100));
}

OrderFlow::Rules rulesOf(const Instrument &instrument, int typicalLots, int meanPause)
{
    OrderFlow::Rules rules;
    rules.tick = priceUnits(instrument.tick);
    rules.previousClose = priceUnits(referenceOf(instrument));
    rules.lowerLimit = priceUnits(instrument.lowerLimit);
    rules.upperLimit = priceUnits(instrument.upperLimit);
    rules.lot = instrument.lot;
    rules.typicalLots = typicalLots;
    rules.meanPause = meanPause;
    return rules;
}

} // namespace

SimulatedFeed::Stock::Stock(Instrument traded, Pace given, quint64 givenSeed)
    : instrument(std::move(traded)), pace(given), seed(givenSeed),
      flow(rulesOf(instrument, pace.typicalLots, pace.meanPause), seed), openingOrders(openingOrderCount)
{
}

SimulatedFeed::SimulatedFeed(quint64 givenSeed) : seed(givenSeed), day(firstDay), midnight(midnightOf(firstDay))
{
    addStock("606018.SH", "青岚科技", 23.46, {5, 260});
    addStock("606127.SH", "沧原重工", 8.72, {12, 340});
    addStock("606255.SH", "朔川能源", 5.18, {25, 300});
    addStock("606309.SH", "澄湾航运", 14.05, {8, 420});
    addStock("009016.SZ", "云砚电子", 61.30, {3, 220});
    addStock("009128.SZ", "泽岭医药", 38.91, {4, 380});
    addStock("009233.SZ", "栖谷食品", 17.64, {6, 460});
    addStock("009341.SZ", "星汀智造", 112.85, {2, 280});
    addFuture("IF2406", 3562.4, {2, 320});
    addFuture("IC2406", 5318.6, {2, 400});
}

SimulatedFeed::~SimulatedFeed() = default;

void SimulatedFeed::addStock(const char *code, const char *name, double previousClose, Pace pace)
{
    Instrument instrument = *stockInstrument(code);
    instrument.name = name;
    instrument.previousClose = previousClose;
    add(std::move(instrument), pace);
}

void SimulatedFeed::addFuture(const char *code, double previousSettlement, Pace pace)
{
    Instrument instrument = *futureInstrument(code, "CFFEX");
    instrument.previousSettlement = previousSettlement;
    instrument.previousClose = previousSettlement;
    add(std::move(instrument), pace);
}

void SimulatedFeed::add(Instrument instrument, Pace pace)
{
    instrument.index = int(stocks.size());
    setLimits(instrument);
    // Each instrument has numbers of its own, so that what happens in one does not change the others.
    const quint64 ownSeed = seed * 1000003 + stocks.size();
    stocks.push_back(std::make_unique<Stock>(std::move(instrument), pace, ownSeed));
    stocks.back()->nextTime = midnight + preparationTime;
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
    if (stock.instrument.kind == InstrumentKind::Future)
        return futures;
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
        stock.nextTime =
            stock.openingOrders > 0 ? now + 1000 / openingOrderCount : midnight + openingTime + stock.flow.pause();
        return;
    }
    stock.nextTime = now + stock.flow.pause();
    if (now < midnight + noonTime && stock.nextTime >= midnight + noonTime)
        stock.nextTime += afternoonTime - noonTime;
    if (stock.nextTime >= midnight + closingTime)
        stock.nextTime = absent<qint64>;
}

void SimulatedFeed::place(Stock &stock, const OrderFlow::Action &action, BatchWriter &writer)
{
    Channel &channel = channelOf(stock);
    OrderState &order = orders.emplace_back();
    order.entry = int(orders.size()) - 1;
    order.instrument = stock.instrument.index;
    order.day = day;
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
    deal.day = day;
    deal.channel = taker.channel;
    deal.sequence = ++channelOf(stock).lastSequence;
    deal.kind = takerBuys ? DealKind::BuyerInitiated : DealKind::SellerInitiated;
    deal.price = priceOfUnits(fill.price);
    deal.quantity = fill.quantity;
    deal.amount = priceOfUnits(fill.price * fill.quantity * stock.instrument.multiplier);
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
    const bool isClosed = stock.nextTime == absent<qint64>;
    QuoteSnapshot quote;
    quote.instrument = stock.instrument.index;
    quote.time = isClosed ? midnight + closingTime : now;
    quote.phase = phaseAt(quote.time);
    quote.previousClose = stock.instrument.previousClose;
    quote.previousSettlement = stock.instrument.previousSettlement;
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

void SimulatedFeed::withdrawAll(BatchWriter &writer)
{
    for (OrderState &order : orders) {
        Stock &stock = *stocks[size_t(order.instrument)];
        if (stock.engine.openQuantity(order.entry + 1) > 0)
            withdraw(stock, order.entry + 1, writer);
    }
}

void SimulatedFeed::endDay(BatchWriter &writer)
{
    withdrawAll(writer);
    day = nextWeekday(day);
    midnight = midnightOf(day);
    now = midnight + preparationTime;
    writer.setTime(now);
    for (auto &stock : stocks) {
        Instrument instrument = stock->instrument;
        QuoteSnapshot closing;
        stock->statistics.fill(closing);
        if (closing.volume > 0) {
            instrument.previousClose = closing.last;
            if (instrument.kind == InstrumentKind::Future)
                instrument.previousSettlement =
                    onTick(instrument, closing.turnover / double(closing.volume * instrument.multiplier));
        }
        setLimits(instrument);
        writer.putInstrument(instrument);
        stock = std::make_unique<Stock>(std::move(instrument), stock->pace, stock->seed + 15485863);
        stock->nextTime = now;
        stock->isChanged = true;
    }
}

} // namespace feed
