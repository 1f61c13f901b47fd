#include "desk/tradedesk.h"

#include <algorithm>
#include <utility>

#include "feed/instrumentrules.h"
#include "kv/caccountdata.h"

namespace terminal {

TradeDesk::TradeDesk(Market playedMarket, QObject *parent)
    : QObject(parent), market(playedMarket), told(paper.broker()), log(told)
{
    programClock.start();
    connect(&paper, &trading::Desk::changed, this, &TradeDesk::take);
    connect(&paper, &trading::Desk::storageProblemChanged, this, [this](const QString &text) {
        if (text.isEmpty())
            DeskLog::say(QStringLiteral("交易桌面文件恢复正常，全部已保存"));
        else
            DeskLog::sayError(text);
        Q_EMIT storageProblemChanged(text);
    });
}

TradeDesk::~TradeDesk() = default;

QString TradeDesk::open(const QString &path)
{
    const QString problem = paper.open(path);
    if (problem.isEmpty())
        DeskLog::say(QStringLiteral("交易桌面文件 %1：账户 %2，当日委托 %3，当日成交 %4")
                         .arg(path)
                         .arg(paper.initialState().accounts.size())
                         .arg(paper.initialState().orders.size())
                         .arg(paper.initialState().deals.size()));
    else
        DeskLog::sayError(problem);
    return problem;
}

void TradeDesk::begin()
{
    const trading::DeskState &state = paper.initialState();
    trading::DeskChange initial;
    initial.accounts = state.accounts;
    initial.orders = state.orders;
    initial.positions = state.positions;
    told.take(initial);
    tell(state.orders, state.deals);
    openAccounts(trading::AccountKind::Stock);
    openAccounts(trading::AccountKind::Future);
}

void TradeDesk::openAccounts(trading::AccountKind kind)
{
    const KV::CAccountData *known = KV::getAccountData();
    if (!known)
        return;
    const bool isFuture = kind == trading::AccountKind::Future;
    for (const KV::AccountEntry &entry : known->accounts(isFuture ? kdservice::TraderFuture : kdservice::TraderStock)) {
        trading::Account account;
        account.id = entry.id.toStdString();
        account.name = entry.title.toStdString();
        account.kind = kind;
        account.initial = 1'000'000 * trading::yuan;
        paper.openAccount(account);
    }
}

void TradeDesk::setRules(const trading::TradingRules &rules)
{
    paper.setRules(rules);
    told.rulesChanged();
}

QString TradeDesk::refuse(const QString &text)
{
    DeskLog::say(QStringLiteral("委托未报出：%1").arg(text));
    Q_EMIT refused();
    return text;
}

QString TradeDesk::send(const std::vector<trading::OrderRequest> &requests)
{
    if (const trading::Refusal refusal = paper.broker().check(requests))
        return refuse(refusal.text);
    for (const trading::OrderRequest &request : requests)
        if (const trading::PaperBroker::Answer answer = paper.submit(request); answer.refusal)
            return refuse(answer.refusal.text);
    return {};
}

QString TradeDesk::cancel(qint64 order)
{
    const trading::Refusal refusal = paper.cancel(order);
    if (refusal)
        DeskLog::say(QStringLiteral("未撤单：%1").arg(refusal.text));
    return refusal.text;
}

std::vector<qint64> TradeDesk::openOrders(const Choice &choice) const
{
    std::vector<qint64> chosen;
    for (const auto &[id, order] : paper.broker().orders())
        if (order.isOpen() && (choice.code.empty() || choice.code == order.code) &&
            (!choice.side || *choice.side == order.side) && (choice.price == 0 || choice.price == order.price))
            chosen.push_back(id);
    return chosen;
}

std::optional<trading::OrderRequest> TradeDesk::remainder(qint64 id, double price) const
{
    const auto found = paper.broker().orders().find(id);
    if (found == paper.broker().orders().end() || !found->second.isOpen())
        return {};
    const trading::PaperOrder &order = found->second;
    trading::OrderRequest request;
    request.account = order.account;
    request.code = order.code;
    request.side = order.side;
    request.offset = order.offset;
    request.price = price;
    request.quantity = order.openQuantity();
    const feed::Instrument *known = paper.broker().instrument(order.code);
    if (known && order.opensPosition()) {
        // A level or a deal that is no whole lot leaves a rest that nobody may order.
        const auto quantities = trading::QuantityRules::of(*known, paper.broker().tradingRules());
        request.quantity -= request.quantity % quantities.step;
        if (request.quantity < quantities.least)
            request.quantity = 0;
    }
    return request;
}

QString TradeDesk::repriceRefusal(qint64 id, double price) const
{
    const std::optional<trading::OrderRequest> request = remainder(id, price);
    if (!request)
        return QStringLiteral("委托 %1 已经结束，不能改价").arg(id);
    if (!paper.storageProblem().isEmpty())
        return QStringLiteral("新委托无法保存，委托 %1 没有改价。%2").arg(id).arg(paper.storageProblem());
    if (request->quantity == 0)
        return QStringLiteral("委托 %1 的剩余数量不足一手，不能改价，请撤单").arg(id);
    return paper.broker().checkReplacement(id, *request).text;
}

QString TradeDesk::reprice(qint64 id, double price)
{
    if (const QString refusal = repriceRefusal(id, price); !refusal.isEmpty())
        return refuse(refusal);
    const std::optional<trading::OrderRequest> request = remainder(id, price);
    if (const QString refusal = cancel(id); !refusal.isEmpty())
        return refusal;
    const QString refusal = send({*request});
    return refusal.isEmpty() ? refusal : QStringLiteral("委托 %1 已撤，新价格未报出：%2").arg(id).arg(refusal);
}

const feed::QuoteSnapshot *TradeDesk::quote(const std::string &code) const
{
    const auto found = heard.find(code);
    return found != heard.end() && found->second.hasQuote ? &found->second.quote : nullptr;
}

qint64 TradeDesk::silence(const std::string &code) const
{
    const auto found = heard.find(code);
    return found == heard.end() ? feed::absent<qint64> : programClock.elapsed() - found->second.at;
}

/// The simulated exchange begins where the file stands; recorded days are what they are.
qint64 TradeDesk::moved(qint64 time)
{
    if (market == Market::Recorded || time == feed::absent<qint64>)
        return time;
    int latest = 0;
    for (const auto &[id, book] : books())
        latest = std::max(latest, book.account().day);
    return days.moved(time, latest);
}

TradeDesk::Heard *TradeDesk::hear(int instrument)
{
    if (instrument < 0 || size_t(instrument) >= codes.size())
        return nullptr;
    const std::string &code = codes[size_t(instrument)];
    Heard &of = heard[code];
    of.at = programClock.elapsed();
    return &of;
}

void TradeDesk::takeInstrument(const feed::Instrument &instrument)
{
    if (size_t(instrument.index) >= codes.size())
        codes.resize(size_t(instrument.index) + 1);
    codes[size_t(instrument.index)] = instrument.code;
    paper.takeInstrument(instrument);
}

void TradeDesk::takeDeal(const feed::Deal &deal)
{
    if (hear(deal.instrument))
        told.setLastPrice(codes[size_t(deal.instrument)], feed::priceUnits(deal.price));
    feed::Deal at = deal;
    at.time = moved(deal.time);
    paper.takeDeal(at);
}

void TradeDesk::takeQuote(const feed::QuoteSnapshot &given)
{
    feed::QuoteSnapshot at = given;
    at.time = moved(given.time);
    if (Heard *of = hear(given.instrument)) {
        of->quote = at;
        of->hasQuote = true;
        if (at.last != feed::absent<double> && at.last > 0)
            told.setLastPrice(codes[size_t(at.instrument)], feed::priceUnits(at.last));
    }
    paper.takeQuote(at);
}

void TradeDesk::take(const trading::DeskChange &change)
{
    told.take(change);
    log.take(change);
    tell(change.orders, change.deals);
    for (const trading::DayClose &closed : change.days)
        Q_EMIT dayBegan(QString::fromStdString(closed.account), books().at(closed.account).account().day);
    for (const trading::PaperDeal &deal : change.deals)
        Q_EMIT filled(deal);
    for (const trading::PaperOrder &order : change.orders) {
        if (order.status == feed::OrderStatus::Rejected)
            Q_EMIT rejected(order);
        if (!order.isOpen())
            Q_EMIT ended(order.id);
    }
}

void TradeDesk::tell(const std::vector<trading::PaperOrder> &orders, const std::vector<trading::PaperDeal> &deals)
{
    FeedPump::Records made;
    for (const trading::PaperOrder &order : orders)
        made.append(records.orderRecord(order));
    if (!made.isEmpty())
        Q_EMIT ordersChanged(made);
    made.clear();
    for (const trading::PaperDeal &deal : deals)
        made.append(records.dealRecord(deal));
    if (!made.isEmpty())
        Q_EMIT dealsMade(made);
}

} // namespace terminal
