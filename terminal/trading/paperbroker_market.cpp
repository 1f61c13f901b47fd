// What the market brings: instruments, prices, days. And what a desk starts from and hands over.

#include "trading/paperbroker.h"

#include "feed/instrumentrules.h"
#include "trading/tradinghours.h"

#include <algorithm>

namespace trading {

namespace {

constexpr qint64 pricesToldEvery = 10'000; ///< milliseconds of the market's clock

bool isSide(feed::Side side)
{
    return side == feed::Side::Buy || side == feed::Side::Sell;
}

bool isOffset(Offset offset)
{
    return offset == Offset::Open || offset == Offset::Close || offset == Offset::CloseToday ||
           offset == Offset::CloseYesterday;
}

bool isPossible(const Lots &lots)
{
    return lots.quantity >= 0 && lots.basis >= 0;
}

bool isPossible(const Position &position, AccountKind kind)
{
    const bool isKind = position.kind >= feed::InstrumentKind::Stock && position.kind <= feed::InstrumentKind::Future;
    return isKind && (position.kind == feed::InstrumentKind::Future) == (kind == AccountKind::Future) &&
           (position.side == PositionSide::Long || position.side == PositionSide::Short) && position.multiplier > 0 &&
           isPossible(position.old) && isPossible(position.today) && position.quantity() > 0;
}

bool isPossible(const PaperOrder &order)
{
    const qint64 held = order.heldOld + order.heldToday;
    return isSide(order.side) && isOffset(order.offset) && order.status >= feed::OrderStatus::NotSent &&
           order.status <= feed::OrderStatus::Rejected && order.price > 0 && order.quantity > 0 &&
           order.filled.quantity >= 0 && order.cancelled >= 0 && order.openQuantity() >= 0 &&
           order.isOpen() == (order.openQuantity() > 0) && order.heldOld >= 0 && order.heldToday >= 0 &&
           held == (order.isOpen() && !order.opensPosition() ? order.openQuantity() : 0);
}

} // namespace

feed::Instrument PaperBroker::instrumentByCode(const std::string &code, const std::string &exchange)
{
    if (const auto stock = feed::stockInstrument(code))
        return *stock;
    feed::Instrument unknown;
    unknown.code = code;
    return feed::futureInstrument(code, exchange).value_or(unknown);
}

bool PaperBroker::restore(const DeskState &state)
{
    std::map<std::string, AccountBook> restored;
    for (const Account &account : state.accounts) {
        if (account.kind != AccountKind::Stock && account.kind != AccountKind::Future)
            return false;
        restored.emplace(account.id, AccountBook(account, rules));
    }
    for (const Position &position : state.positions) {
        const auto found = restored.find(position.account);
        if (found == restored.end() || !isPossible(position, found->second.account().kind))
            return false;
        found->second.restore(position);
    }
    for (const PaperOrder &order : state.orders) {
        const auto found = restored.find(order.account);
        if (found == restored.end() || !isPossible(order))
            return false;
        if (order.isOpen())
            found->second.restoreReservation(order, instrumentByCode(order.code, order.exchange));
    }
    for (const auto &[id, accountBook] : restored)
        for (const auto &[key, position] : accountBook.positions())
            if (position.old.held > position.old.quantity || position.today.held > position.today.quantity)
                return false;

    books = std::move(restored);
    for (const PaperOrder &order : state.orders) {
        PaperOrder &known = dayOrders.emplace(order.id, order).first->second;
        if (known.status == feed::OrderStatus::Sending) { // stored, so confirmed
            known.status = feed::OrderStatus::Accepted;
            noteChange(known);
        }
    }
    lastOrder = state.lastOrder;
    lastDeal = state.lastDeal;
    return true;
}

void PaperBroker::takeInstrument(const feed::Instrument &given)
{
    const auto index = size_t(given.index);
    const bool isNew = index >= markets.size() || markets[index].instrument.code != given.code;
    if (index >= markets.size())
        markets.resize(index + 1);
    Market &place = markets[index];
    const feed::Instrument before = place.instrument;
    place.instrument = given;
    indexOf[given.code] = index;
    if (isNew) {
        for (auto &[id, order] : dayOrders)
            if (order.code == given.code && order.isOpen() && order.status != feed::OrderStatus::Sending)
                enter(place, order);
        return;
    }
    if (given.upperLimit == feed::absent<double>)
        place.instrument.upperLimit = before.upperLimit;
    if (given.lowerLimit == feed::absent<double>)
        place.instrument.lowerLimit = before.lowerLimit;
}

void PaperBroker::tellPrices()
{
    for (const auto &[id, accountBook] : books)
        for (const auto &[key, position] : accountBook.positions())
            if (position.lastPrice != accountBook.lastPrice(key.first))
                changedPositions.insert({id, key});
}

void PaperBroker::advance(qint64 time)
{
    if (clock != feed::absent<qint64> && time <= clock)
        return;
    if (clock == feed::absent<qint64> || time / pricesToldEvery != clock / pricesToldEvery)
        tellPrices();
    clock = time;
    for (auto &[id, accountBook] : books) {
        const int day = TradingHours::dayOf(accountBook.account().kind, time);
        if (day != accountBook.account().day)
            startDay(accountBook, day);
    }
}

void PaperBroker::startDay(AccountBook &accountBook, int day)
{
    const std::string id = accountBook.account().id;
    for (auto &[number, order] : dayOrders)
        if (order.account == id && order.isOpen())
            end(order, feed::OrderStatus::Cancelled, "收盘未成交，自动撤单");
    for (auto it = dayOrders.begin(); it != dayOrders.end();) {
        if (it->second.account != id) {
            ++it;
            continue;
        }
        if (changedOrders.erase(it->first) > 0)
            collected.orders.push_back(it->second);
        it = dayOrders.erase(it);
    }
    accountBook.startDay(day, collected);
    changedAccounts.insert(id);
    for (const auto &[key, position] : accountBook.positions())
        changedPositions.insert({id, key});
}

void PaperBroker::takeDeal(const feed::Deal &deal)
{
    advance(deal.time);
    const auto index = size_t(deal.instrument);
    if (deal.instrument < 0 || index >= markets.size())
        return;
    Market &place = markets[index];
    for (auto &[id, accountBook] : books)
        accountBook.setLastPrice(place.instrument.code, feed::priceUnits(deal.price));
    fills.clear();
    place.queue.takeDeal(deal, fills);
    book(place, fills);
}

void PaperBroker::takeQuote(const feed::QuoteSnapshot &quote)
{
    advance(quote.time);
    const auto index = size_t(quote.instrument);
    if (quote.instrument < 0 || index >= markets.size())
        return;
    Market &place = markets[index];
    const std::string &code = place.instrument.code;
    if (quote.upperLimit != feed::absent<double> && quote.upperLimit > 0)
        place.instrument.upperLimit = quote.upperLimit;
    if (quote.lowerLimit != feed::absent<double> && quote.lowerLimit > 0)
        place.instrument.lowerLimit = quote.lowerLimit;
    for (auto &[id, accountBook] : books) {
        if (quote.last != feed::absent<double> && quote.last > 0)
            accountBook.setLastPrice(code, feed::priceUnits(quote.last));
        if (quote.previousSettlement == feed::absent<double> || quote.previousSettlement <= 0 ||
            TradingHours::dayOf(accountBook.account().kind, quote.time) != accountBook.account().day)
            continue;
        const size_t before = collected.settlements.size();
        accountBook.resettle(code, feed::priceUnits(quote.previousSettlement), collected.settlements);
        if (collected.settlements.size() == before)
            continue;
        changedAccounts.insert(id);
        changedPositions.insert({id, {code, PositionSide::Long}});
        changedPositions.insert({id, {code, PositionSide::Short}});
    }
    fills.clear();
    place.queue.takeQuote(quote, fills, !isClosed(place.instrument));
    book(place, fills);
}

bool PaperBroker::hasChanges() const
{
    return !changedOrders.empty() || !changedAccounts.empty() || !changedPositions.empty() || !collected.isEmpty();
}

DeskChange PaperBroker::takeChanges()
{
    DeskChange change = std::exchange(collected, {});
    for (const qint64 id : changedOrders)
        change.orders.push_back(dayOrders.at(id));
    for (const std::string &id : changedAccounts)
        change.accounts.push_back(books.at(id).account());
    for (const auto &[id, key] : changedPositions) {
        const Position *position = books.at(id).pricedPosition(key);
        Position gone;
        gone.account = id;
        gone.code = key.first;
        gone.side = key.second;
        change.positions.push_back(position ? *position : gone);
    }
    changedOrders.clear();
    changedAccounts.clear();
    changedPositions.clear();
    return change;
}

} // namespace trading
