#include "trading/demonstrationaccounts.h"

#include <algorithm>
#include <utility>

#include "feed/instrumentrules.h"

namespace trading {

namespace {

TradingRules freeOfCharge()
{
    TradingRules rules;
    rules.stocks = {0, 0, 0, 0};
    return rules;
}

Account numbered(int number, Money initial)
{
    const std::string text = std::to_string(number + 1);
    const std::string digits = std::string(text.size() < 2 ? 2 - text.size() : 0, '0') + text;
    Account account;
    account.id = "DEMO" + digits;
    account.name = "演示账户" + digits;
    account.initial = account.balance = account.dayStart = initial;
    return account;
}

} // namespace

DemonstrationAccounts::DemonstrationAccounts(int count, Money initial) : rules(freeOfCharge())
{
    for (int number = 0; number < std::max(1, count); ++number) {
        const Account account = numbered(number, initial);
        sequence.push_back(&accounts.try_emplace(account.id, account, rules).first->second);
        changes.accounts.insert(account.id);
    }
}

DemonstrationAccounts::~DemonstrationAccounts() = default;

const feed::Instrument *DemonstrationAccounts::known(int index) const
{
    const auto at = static_cast<std::size_t>(index);
    return index >= 0 && at < instruments.size() && !instruments[at].code.empty() ? &instruments[at] : nullptr;
}

void DemonstrationAccounts::takeInstrument(const feed::Instrument &instrument)
{
    if (instrument.index < 0)
        return;
    if (static_cast<std::size_t>(instrument.index) >= instruments.size())
        instruments.resize(static_cast<std::size_t>(instrument.index) + 1);
    instruments[static_cast<std::size_t>(instrument.index)] = instrument;
}

void DemonstrationAccounts::takeDeal(const feed::Deal &deal)
{
    const feed::Instrument *traded = known(deal.instrument);
    if (!traded || traded->kind == feed::InstrumentKind::Future || deal.quantity <= 0 || deal.entry < 0)
        return;
    trade(*sequence[static_cast<std::size_t>(deal.entry) % sequence.size()], *traded, deal);
    setLastPrice(*traded, deal.price);
}

void DemonstrationAccounts::trade(AccountBook &book, const feed::Instrument &instrument, const feed::Deal &deal)
{
    const Position *held = book.position({instrument.code, PositionSide::Long});
    const qint64 price = feed::priceUnits(deal.price);
    PaperOrder order;
    order.id = deal.entry + qint64(1);
    order.account = book.account().id;
    order.code = instrument.code;
    order.name = instrument.name;
    order.exchange = instrument.exchange;
    order.day = deal.day;
    order.price = price;
    order.quantity = deal.quantity;
    if (deal.kind == feed::DealKind::SellerInitiated) {
        order.side = feed::Side::Sell;
        order.offset = Offset::Close;
        order.quantity = std::min(deal.quantity, held ? held->quantity() : 0);
    }
    if (order.quantity == 0 || book.fundsNeeded(order, instrument) > book.account().balance)
        return;
    book.reserve(order, instrument);
    book.fill(order, instrument, price, order.quantity, deal.time);
    book.release(order);
    noteChange(book, instrument.code);
}

void DemonstrationAccounts::takeQuote(const feed::QuoteSnapshot &quote)
{
    const feed::Instrument *quoted = known(quote.instrument);
    if (quoted && quote.last != feed::absent<double> && quote.last > 0)
        setLastPrice(*quoted, quote.last);
}

void DemonstrationAccounts::setLastPrice(const feed::Instrument &instrument, double price)
{
    const qint64 units = feed::priceUnits(price);
    for (AccountBook *book : sequence) {
        if (book->lastPrice(instrument.code) == units)
            continue;
        book->setLastPrice(instrument.code, units);
        if (book->position({instrument.code, PositionSide::Long}))
            noteChange(*book, instrument.code);
    }
}

void DemonstrationAccounts::noteChange(const AccountBook &book, const std::string &code)
{
    changes.positions.insert({book.account().id, {code, PositionSide::Long}});
    changes.accounts.insert(book.account().id);
}

AccountChanges DemonstrationAccounts::takeChanges()
{
    return std::exchange(changes, AccountChanges());
}

} // namespace trading
