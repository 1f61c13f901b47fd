#include "trading/accountbook.h"

#include <algorithm>

namespace trading {

namespace {

int signOf(PositionSide side)
{
    return side == PositionSide::Long ? 1 : -1;
}

void addCharges(Charges &sum, const Charges &more)
{
    sum.commission += more.commission;
    sum.stampDuty += more.stampDuty;
    sum.transferFee += more.transferFee;
}

/// What is charged on top of what has been. Nothing is paid back where the rules ask for less by now.
Charges furtherCharges(const Charges &inAll, const Charges &before)
{
    const auto further = [](Money all, Money had) { return std::max<Money>(0, all - had); };
    return {further(inAll.commission, before.commission), further(inAll.stampDuty, before.stampDuty),
            further(inAll.transferFee, before.transferFee)};
}

/// What moves for an amount: amounts are booked to the cent.
Money inCents(Money amount)
{
    return amount - amount % cent + (amount % cent * 2 < cent ? 0 : cent);
}

/// The largest amount there is, where a product does not fit: no account can pay it.
Money amountOrAll(qint64 price, qint64 quantity, int multiplier)
{
    return amountOf(price, quantity, multiplier).value_or(feed::absent<Money>);
}

} // namespace

AccountBook::AccountBook(Account account, const TradingRules &tradingRules)
    : state(std::move(account)), rules(tradingRules)
{
}

AccountBook::PositionKey AccountBook::keyOf(const PaperOrder &order, feed::InstrumentKind kind)
{
    const bool isLong =
        kind != feed::InstrumentKind::Future || (order.side == feed::Side::Buy) == (order.offset == Offset::Open);
    return {order.code, isLong ? PositionSide::Long : PositionSide::Short};
}

const Position *AccountBook::position(const PositionKey &key) const
{
    const auto found = held.find(key);
    return found == held.end() ? nullptr : &found->second;
}

const Position *AccountBook::pricedPosition(const PositionKey &key)
{
    const auto found = held.find(key);
    if (found == held.end())
        return nullptr;
    found->second.lastPrice = lastPrice(key.first);
    return &found->second;
}

qint64 AccountBook::lastPrice(const std::string &code) const
{
    const auto found = lastPrices.find(code);
    return found == lastPrices.end() ? 0 : found->second;
}

void AccountBook::setLastPrice(const std::string &code, qint64 price)
{
    lastPrices[code] = price;
}

Money AccountBook::valueOf(const Position &position, qint64 quantity) const
{
    const qint64 price = lastPrice(position.code);
    const Money atBasis = proportion(position.basis(), quantity, position.quantity());
    return price > 0 ? inCents(amountOf(price, quantity, position.multiplier).value_or(atBasis)) : atBasis;
}

Funds AccountBook::funds() const
{
    Funds funds;
    for (const auto &[key, position] : held) {
        const Money value = valueOf(position, position.quantity());
        funds.positionValue += value;
        funds.floating += signOf(key.second) * (value - position.basis());
        if (state.kind == AccountKind::Future)
            funds.margin += rules.margin(position.code, position.basis());
    }
    for (const auto &[order, money] : frozenOf)
        funds.frozen += money;
    funds.balance = state.balance;
    if (state.kind == AccountKind::Stock) {
        funds.total = state.balance + funds.positionValue;
        funds.available = state.balance - funds.frozen;
        funds.withdrawable = std::max<Money>(0, funds.available - state.soldToday);
    } else {
        // A loss counts at once, a profit once it is closed or settled.
        funds.total = state.balance + funds.floating;
        funds.available = state.balance + std::min<Money>(0, funds.floating) - funds.margin - funds.frozen;
        funds.withdrawable = std::max<Money>(0, funds.available);
    }
    funds.profitToday = funds.total - state.dayStart;
    return funds;
}

AccountBook::Closable AccountBook::closable(const feed::Instrument &instrument, PositionSide side, Offset offset) const
{
    const Position *found = position({instrument.code, side});
    if (!found)
        return {};
    Closable result{found->old.quantity - found->old.held, found->today.quantity - found->today.held};
    const bool isFuture = instrument.kind == feed::InstrumentKind::Future;
    if (offset == Offset::CloseToday)
        result.old = 0;
    if (offset == Offset::CloseYesterday || !sellsOnSameDay(instrument.kind) ||
        (isFuture && offset == Offset::Close && keepsDaysApart(found->exchange)))
        result.today = 0;
    return result;
}

Money AccountBook::fundsNeeded(const PaperOrder &order, const feed::Instrument &instrument) const
{
    if (!order.opensPosition())
        return 0; // charges come off the proceeds
    const qint64 open = order.openQuantity();
    const Money amount = amountOrAll(order.price, open, instrument.multiplier);
    if (amount > feed::absent<Money> / 4)
        return feed::absent<Money>;
    Filled all = order.filled;
    all.quantity += open;
    all.amount += amount;
    const Money charges = rules.charges(instrument, order.side, order.offset, all).total() - order.charges.total();
    const bool isFuture = instrument.kind == feed::InstrumentKind::Future;
    const Money cost = inCents(all.amount) - inCents(order.filled.amount);
    return (isFuture ? rules.margin(instrument.code, amount) : cost) + std::max<Money>(0, charges);
}

void AccountBook::restore(const Position &position)
{
    Position &restored = held[{position.code, position.side}] = position;
    restored.old.held = 0;
    restored.today.held = 0;
    if (position.kind != feed::InstrumentKind::Future)
        restored.openCost = position.basis(); // files of earlier versions averaged it over all lots
    if (position.lastPrice > 0)
        lastPrices[position.code] = position.lastPrice;
}

void AccountBook::reserve(PaperOrder &order, const feed::Instrument &instrument)
{
    const PositionKey key = keyOf(order, instrument.kind);
    if (!order.opensPosition()) {
        order.heldOld = std::min(order.quantity, closable(instrument, key.second, order.offset).old);
        order.heldToday = order.quantity - order.heldOld;
    }
    restoreReservation(order, instrument);
}

void AccountBook::restoreReservation(const PaperOrder &order, const feed::Instrument &instrument)
{
    frozenOf[order.id] = fundsNeeded(order, instrument);
    const auto found = held.find(keyOf(order, instrument.kind));
    if (found == held.end())
        return;
    found->second.old.held += order.heldOld;
    found->second.today.held += order.heldToday;
}

void AccountBook::reserveAnew(const PaperOrder &order, const feed::Instrument &instrument)
{
    frozenOf[order.id] = fundsNeeded(order, instrument);
}

void AccountBook::release(PaperOrder &order)
{
    frozenOf.erase(order.id);
    if (order.opensPosition())
        return;
    // The side that the order closes; stocks have the long one only.
    const bool closesLong = state.kind == AccountKind::Stock || order.side == feed::Side::Sell;
    const auto found = held.find({order.code, closesLong ? PositionSide::Long : PositionSide::Short});
    if (found != held.end()) {
        found->second.old.held -= order.heldOld;
        found->second.today.held -= order.heldToday;
    }
    order.heldOld = 0;
    order.heldToday = 0;
}

Position &AccountBook::positionFor(const PaperOrder &order, const feed::Instrument &instrument)
{
    const PositionKey key = keyOf(order, instrument.kind);
    const auto [found, isNew] = held.try_emplace(key);
    if (isNew) {
        Position &position = found->second;
        position.account = state.id;
        position.code = instrument.code;
        position.name = instrument.name;
        position.exchange = instrument.exchange;
        position.side = key.second;
        position.kind = instrument.kind;
        position.multiplier = instrument.multiplier;
    }
    return found->second;
}

/// Returns the realised profit. Lots of the day have not been settled: what they were opened at is their basis, and the
/// rest of the position's is what the older ones were opened at.
Money AccountBook::close(Position &position, Lots &lots, qint64 quantity, Money amount)
{
    const Money basis = proportion(lots.basis, quantity, lots.quantity);
    const Money opened =
        &lots == &position.today ? lots.basis : std::max<Money>(0, position.openCost - position.today.basis);
    position.openCost -= proportion(opened, quantity, lots.quantity);
    lots.basis -= basis;
    lots.quantity -= quantity;
    lots.held -= quantity;
    return signOf(position.side) * (amount - basis);
}

PaperDeal AccountBook::fill(PaperOrder &order, const feed::Instrument &instrument, qint64 price, qint64 quantity,
                            qint64 time)
{
    Position &position = positionFor(order, instrument);
    PaperDeal deal;
    deal.order = order.id;
    deal.account = order.account;
    deal.code = order.code;
    deal.name = order.name;
    deal.exchange = order.exchange;
    deal.day = order.day;
    deal.side = order.side;
    deal.offset = order.offset;
    deal.price = price;
    deal.quantity = quantity;
    const Money before = order.filled.amount;
    order.filled.amount += amountOrAll(price, quantity, instrument.multiplier);
    deal.amount = inCents(order.filled.amount) - inCents(before);
    deal.time = time;

    if (!order.opensPosition()) {
        const qint64 fromOld = std::min(quantity, order.heldOld);
        const qint64 fromToday = quantity - fromOld;
        const Money todayAmount = amountOrAll(price, fromToday, instrument.multiplier);
        deal.realised = close(position, position.old, fromOld, deal.amount - todayAmount) +
                        close(position, position.today, fromToday, todayAmount);
        order.heldOld -= fromOld;
        order.heldToday -= fromToday;
        order.filled.todayQuantity += fromToday;
        order.filled.todayAmount += todayAmount;
    }
    order.filled.quantity += quantity;
    const Charges inAll = rules.charges(instrument, order.side, order.offset, order.filled);
    deal.charges = furtherCharges(inAll, order.charges);
    addCharges(order.charges, deal.charges);

    const bool isFuture = instrument.kind == feed::InstrumentKind::Future;
    const Money charges = deal.charges.total();
    if (order.opensPosition()) {
        const Money cost = isFuture ? deal.amount : deal.amount + charges;
        position.today.quantity += quantity;
        position.today.basis += cost;
        position.openCost += cost;
    }
    if (isFuture) {
        state.balance += deal.realised - charges;
    } else if (order.side == feed::Side::Buy) {
        state.balance -= deal.amount + charges;
    } else {
        state.balance += deal.amount - charges;
        state.soldToday += deal.amount - charges;
    }
    frozenOf[order.id] = fundsNeeded(order, instrument);
    if (position.quantity() == 0)
        held.erase(keyOf(order, instrument.kind));
    return deal;
}

/// Moves the profit up to `price` into the balance.
void AccountBook::settle(Position &position, qint64 price, std::vector<Settlement> &settlements)
{
    const auto value = amountOf(price, position.old.quantity, position.multiplier);
    if (!value)
        return;
    const Money profit = signOf(position.side) * (*value - position.old.basis);
    position.old.basis = *value;
    state.balance += profit;
    settlements.push_back({state.id, position.code, position.side, state.day, position.old.quantity, price, profit});
}

void AccountBook::resettle(const std::string &code, qint64 price, std::vector<Settlement> &settlements)
{
    for (const PositionSide side : {PositionSide::Long, PositionSide::Short}) {
        const auto found = held.find({code, side});
        if (found == held.end() || found->second.kind != feed::InstrumentKind::Future ||
            found->second.old.quantity == 0)
            continue;
        const Lots &old = found->second.old;
        if (amountOf(price, old.quantity, found->second.multiplier) == old.basis)
            continue;
        const Money before = state.balance;
        settle(found->second, price, settlements);
        state.dayStart += state.balance - before;
    }
}

void AccountBook::startDay(int day, DeskChange &change)
{
    const bool isFirst = state.day == 0;
    for (auto &[key, position] : held) {
        position.old.quantity += position.today.quantity;
        position.old.basis += position.today.basis;
        position.today = {};
        const qint64 price = lastPrice(position.code);
        if (state.kind == AccountKind::Future && price > 0)
            settle(position, price, change.settlements);
    }
    state.dayStart = funds().total;
    state.soldToday = 0;
    if (!isFirst)
        change.days.push_back({state.id, state.day, state.balance, state.dayStart});
    state.day = day;
}

} // namespace trading
