#include "desk/toldaccounts.h"

#include <set>
#include <utility>

#include "trading/paperbroker.h"

namespace terminal {

using trading::AccountBook;

ToldAccounts::ToldAccounts(const trading::PaperBroker &paperBroker) : broker(paperBroker) {}

ToldAccounts::~ToldAccounts() = default;

void ToldAccounts::take(const trading::DeskChange &change)
{
    std::set<std::string> touched;
    for (const trading::Account &account : change.accounts) {
        told[account.id].account = account;
        touched.insert(account.id);
    }
    for (const trading::Position &position : change.positions) {
        const PositionKey key{position.code, position.side};
        auto &positions = told[position.account].positions;
        if (position.quantity() > 0)
            positions[key] = position;
        else
            positions.erase(key);
        changes.positions.insert({position.account, key});
        touched.insert(position.account);
    }
    for (const trading::PaperOrder &order : change.orders) {
        auto &orders = told[order.account].openOrders;
        if (order.isOpen())
            orders[order.id] = order;
        else
            orders.erase(order.id);
        // It sets aside money, or lots of one of them.
        for (const auto side : {trading::PositionSide::Long, trading::PositionSide::Short})
            changes.positions.insert({order.account, {order.code, side}});
        touched.insert(order.account);
    }
    for (const std::string &account : touched)
        rebuild(account);
}

void ToldAccounts::rebuild(const std::string &id)
{
    const Told &of = told.at(id);
    AccountBook book(of.account, broker.tradingRules());
    for (const auto &[key, position] : of.positions) {
        book.restore(position);
        if (const auto price = lastPrices.find(key.first); price != lastPrices.end())
            book.setLastPrice(key.first, price->second);
    }
    for (const auto &[number, order] : of.openOrders) {
        const feed::Instrument *known = broker.instrument(order.code);
        book.restoreReservation(order,
                                known ? *known : trading::PaperBroker::instrumentByCode(order.code, order.exchange));
    }
    shown.erase(id);
    shown.emplace(id, std::move(book));
    changes.accounts.insert(id);
}

void ToldAccounts::rulesChanged()
{
    for (const auto &[id, of] : told)
        rebuild(id);
}

void ToldAccounts::setLastPrice(const std::string &code, qint64 price)
{
    qint64 &last = lastPrices[code];
    if (std::exchange(last, price) == price)
        return;
    for (auto &[id, book] : shown)
        for (const auto side : {trading::PositionSide::Long, trading::PositionSide::Short})
            if (book.position({code, side})) {
                book.setLastPrice(code, price);
                changes.accounts.insert(id);
                changes.positions.insert({id, {code, side}});
            }
}

trading::AccountChanges ToldAccounts::takeChanges()
{
    return std::exchange(changes, {});
}

} // namespace terminal
