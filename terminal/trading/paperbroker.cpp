#include "trading/paperbroker.h"

#include "feed/instrumentrules.h"
#include "trading/ordercheck.h"
#include "trading/tradinghours.h"

#include <algorithm>
#include <cmath>

namespace trading {

namespace {

using Reason = Refusal::Reason;

/// Of a price that is no number, or too large to be one, nothing is left.
qint64 unitsOf(double price)
{
    constexpr double largest = 1e9;
    return std::isfinite(price) && price > 0 && price < largest ? feed::priceUnits(price) : 0;
}

} // namespace

PaperBroker::PaperBroker(TradingRules tradingRules) : rules(std::move(tradingRules)) {}

void PaperBroker::setRules(const TradingRules &newRules)
{
    rules = newRules;
    for (const auto &[id, order] : dayOrders) {
        if (!order.isOpen())
            continue;
        const feed::Instrument *known = instrument(order.code);
        bookOf(order).reserveAnew(order, known ? *known : instrumentByCode(order.code, order.exchange));
    }
}

PaperOrder PaperBroker::orderOf(const OrderRequest &request, const feed::Instrument &instrument)
{
    PaperOrder order;
    order.account = request.account;
    order.code = instrument.code;
    order.name = instrument.name;
    order.exchange = instrument.exchange;
    order.side = request.side;
    order.offset = request.offset;
    if (instrument.kind != feed::InstrumentKind::Future)
        order.offset = request.side == feed::Side::Buy ? Offset::Open : Offset::Close;
    order.price = unitsOf(request.price);
    order.quantity = request.quantity;
    return order;
}

const feed::Instrument *PaperBroker::instrument(const std::string &code) const
{
    const auto found = indexOf.find(code);
    return found == indexOf.end() ? nullptr : &markets[found->second].instrument;
}

PaperBroker::Market *PaperBroker::market(const std::string &code)
{
    const auto found = indexOf.find(code);
    return found == indexOf.end() ? nullptr : &markets[found->second];
}

void PaperBroker::openAccount(const Account &account)
{
    if (books.count(account.id) > 0)
        return;
    Account opened = account;
    opened.balance = opened.dayStart = opened.initial;
    if (clock != feed::absent<qint64>)
        opened.day = TradingHours::dayOf(opened.kind, clock);
    books.emplace(opened.id, AccountBook(opened, rules));
    changedAccounts.insert(opened.id);
}

Refusal PaperBroker::checkPlace(const OrderRequest &request) const
{
    if (books.empty() || request.account.empty())
        return {Reason::NoAccount, QStringLiteral("没有选择资金账户，不能委托，请先选择账户")};
    if (books.count(request.account) == 0)
        return {Reason::NoAccount,
                QStringLiteral("没有资金账户 %1，请重新选择账户").arg(QString::fromStdString(request.account))};
    if (request.code.empty())
        return {Reason::UnknownCode, QStringLiteral("没有证券代码，请填写代码")};
    if (!instrument(request.code))
        return {Reason::UnknownCode,
                QStringLiteral("行情中没有代码 %1，请检查代码").arg(QString::fromStdString(request.code))};
    return {};
}

Refusal PaperBroker::check(const OrderRequest &request) const
{
    if (Refusal refusal = checkPlace(request))
        return refusal;
    const feed::Instrument &traded = *instrument(request.code);
    return checkOrder(orderOf(request, traded),
                      {traded, books.at(request.account), rules, clock == feed::absent<qint64> ? 0 : clock});
}

Refusal PaperBroker::check(const std::vector<OrderRequest> &requests) const
{
    std::map<std::string, AccountBook> tried;
    qint64 number = lastOrder;
    for (const OrderRequest &request : requests) {
        if (Refusal refusal = checkPlace(request))
            return refusal;
        const feed::Instrument &traded = *instrument(request.code);
        AccountBook &accountBook = tried.try_emplace(request.account, books.at(request.account)).first->second;
        PaperOrder order = orderOf(request, traded);
        order.id = ++number;
        if (Refusal refusal =
                checkOrder(order, {traded, accountBook, rules, clock == feed::absent<qint64> ? 0 : clock}))
            return refusal;
        accountBook.reserve(order, traded);
    }
    return {};
}

PaperBroker::Answer PaperBroker::submit(const OrderRequest &request)
{
    if (Refusal refusal = check(request))
        return {0, std::move(refusal)};
    const feed::Instrument &traded = *instrument(request.code);
    PaperOrder order = orderOf(request, traded);
    AccountBook &accountBook = books.at(order.account);
    order.id = ++lastOrder;
    order.day = accountBook.account().day;
    order.entryTime = order.updateTime = clock;
    accountBook.reserve(order, traded);
    noteChange(dayOrders.emplace(order.id, order).first->second);
    return {order.id, {}};
}

qint64 PaperBroker::largestQuantity(OrderRequest request) const
{
    if (checkPlace(request))
        return 0;
    const feed::Instrument &traded = *instrument(request.code);
    const AccountBook &accountBook = books.at(request.account);
    const QuantityRules quantities = QuantityRules::of(traded, rules);
    const PaperOrder order = orderOf(request, traded);
    if (!order.opensPosition()) {
        const auto closable = accountBook.closable(traded, AccountBook::keyOf(order, traded.kind).second, order.offset);
        return std::min(closable.old + closable.today, quantities.most);
    }
    // What passes is a run of whole steps from the bottom: charges and margin grow with the quantity.
    qint64 passing = 0;
    qint64 failing = quantities.most / quantities.step + 1;
    while (failing - passing > 1) {
        const qint64 middle = (passing + failing) / 2;
        request.quantity = std::max(middle * quantities.step, quantities.least);
        (check(request) ? failing : passing) = middle;
    }
    const qint64 largest = passing * quantities.step;
    return largest < quantities.least ? 0 : largest;
}

void PaperBroker::confirm(qint64 id)
{
    const auto found = dayOrders.find(id);
    if (found == dayOrders.end() || found->second.status != feed::OrderStatus::Sending)
        return;
    found->second.status = feed::OrderStatus::Accepted;
    noteChange(found->second);
    if (Market *place = market(found->second.code))
        enter(*place, found->second);
}

bool PaperBroker::isClosed(const feed::Instrument &instrument) const
{
    return clock != feed::absent<qint64> && TradingHours::stateOf(instrument, clock) == TradingHours::State::Closed;
}

void PaperBroker::enter(Market &place, PaperOrder &order)
{
    fills.clear();
    if (isClosed(place.instrument))
        place.queue.close(); // storing it took until after the close
    place.queue.submit(order.id, order.side, order.price, order.openQuantity(), fills);
    book(place, fills);
}

void PaperBroker::reject(qint64 id, const std::string &reason)
{
    const auto found = dayOrders.find(id);
    if (found != dayOrders.end() && found->second.status == feed::OrderStatus::Sending)
        end(found->second, feed::OrderStatus::Rejected, reason);
}

Refusal PaperBroker::checkCancel(qint64 id) const
{
    const auto found = dayOrders.find(id);
    if (found == dayOrders.end())
        return {Reason::UnknownOrder, QStringLiteral("没有编号为 %1 的委托，可能已是往日委托").arg(id)};
    if (!found->second.isOpen())
        return {Reason::OrderEnded, QStringLiteral("委托 %1 已经结束，不能撤单").arg(id)};
    const feed::Instrument *traded = instrument(found->second.code);
    if (traded && clock != feed::absent<qint64> &&
        TradingHours::stateOf(*traded, clock) == TradingHours::State::NoCancelling)
        return {Reason::NoCancelling,
                QStringLiteral("委托 %1 暂时不能撤单：9:20-9:25 和 14:57-15:00 集合竞价不接受撤单").arg(id)};
    return {};
}

Refusal PaperBroker::cancel(qint64 id)
{
    if (Refusal refusal = checkCancel(id))
        return refusal;
    end(dayOrders.at(id), feed::OrderStatus::Cancelled, {});
    return {};
}

Refusal PaperBroker::checkReplacement(qint64 id, const OrderRequest &request) const
{
    if (Refusal refusal = checkCancel(id))
        return refusal;
    if (Refusal refusal = checkPlace(request))
        return refusal;
    PaperOrder replaced = dayOrders.at(id);
    AccountBook freed = books.at(replaced.account);
    freed.release(replaced);
    const feed::Instrument &traded = *instrument(request.code);
    return checkOrder(orderOf(request, traded), {traded, freed, rules, clock == feed::absent<qint64> ? 0 : clock});
}

/// Of an order that was filled in part the rest ends.
void PaperBroker::end(PaperOrder &order, feed::OrderStatus status, const std::string &remark)
{
    if (Market *place = market(order.code))
        place->queue.cancel(order.id);
    order.cancelled = order.openQuantity();
    order.status = order.filled.quantity > 0 ? feed::OrderStatus::PartCancelled : status;
    order.remark = remark;
    if (clock != feed::absent<qint64>)
        order.updateTime = clock;
    bookOf(order).release(order);
    noteChange(order);
}

void PaperBroker::book(Market &place, const std::vector<PaperQueue::Fill> &made)
{
    for (const PaperQueue::Fill &fill : made) {
        PaperOrder &order = dayOrders.at(fill.id);
        AccountBook &accountBook = bookOf(order);
        PaperDeal deal = accountBook.fill(order, place.instrument, fill.price, fill.quantity, clock);
        deal.id = ++lastDeal;
        order.updateTime = clock;
        order.status = order.openQuantity() == 0 ? feed::OrderStatus::Filled : feed::OrderStatus::PartFilled;
        if (!order.isOpen())
            accountBook.release(order);
        collected.deals.push_back(std::move(deal));
        changedAccounts.insert(order.account);
        changedPositions.insert({order.account, AccountBook::keyOf(order, place.instrument.kind)});
        noteChange(order);
    }
}

void PaperBroker::noteChange(const PaperOrder &order)
{
    changedOrders.insert(order.id);
}

} // namespace trading
