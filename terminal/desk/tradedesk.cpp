#include "desk/tradedesk.h"

#include <algorithm>
#include <utility>

#include "kv/caccountdata.h"

namespace terminal {

TradeDesk::TradeDesk(Market playedMarket, QObject *parent) : QObject(parent), market(playedMarket), log(paper)
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
    openAccounts(trading::AccountKind::Stock);
    openAccounts(trading::AccountKind::Future);
    tell(paper.initialState().orders, paper.initialState().deals);
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
    for (const auto &[id, book] : books())
        changes.accounts.insert(id);
}

QString TradeDesk::refuse(const trading::Refusal &refusal)
{
    DeskLog::say(QStringLiteral("委托未报出：%1").arg(refusal.text));
    Q_EMIT refused();
    return refusal.text;
}

QString TradeDesk::send(const std::vector<trading::OrderRequest> &requests)
{
    for (const trading::OrderRequest &request : requests)
        if (const trading::Refusal refusal = paper.broker().check(request))
            return refuse(refusal);
    for (const trading::OrderRequest &request : requests)
        if (const trading::PaperBroker::Answer answer = paper.submit(request); answer.refusal)
            return refuse(answer.refusal);
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

int TradeDesk::cancelAll(const Choice &choice, QString &refusal)
{
    int cancelled = 0;
    for (const qint64 order : openOrders(choice)) {
        const QString problem = cancel(order);
        if (problem.isEmpty())
            ++cancelled;
        else
            refusal = problem;
    }
    return cancelled;
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
    return request;
}

QString TradeDesk::reprice(qint64 id, double price)
{
    const std::optional<trading::OrderRequest> request = remainder(id, price);
    if (!request)
        return QStringLiteral("委托 %1 已经结束，不能改价").arg(id);
    if (const trading::Refusal refusal = paper.broker().checkReplacement(id, *request))
        return refuse(refusal);
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
    pricedCodes.insert(code);
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
    hear(deal.instrument);
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
    }
    paper.takeQuote(at);
}

trading::AccountChanges TradeDesk::takeChanges()
{
    if (!std::exchange(toldAll, true))
        for (const auto &[id, book] : books()) {
            changes.accounts.insert(id);
            for (const auto &[key, position] : book.positions())
                changes.positions.insert({id, key});
        }
    for (const auto &[id, book] : books())
        for (const auto &[key, position] : book.positions())
            if (pricedCodes.count(key.first) > 0) {
                changes.accounts.insert(id);
                changes.positions.insert({id, key});
            }
    pricedCodes.clear();
    return std::exchange(changes, {});
}

void TradeDesk::take(const trading::DeskChange &change)
{
    for (const trading::Account &account : change.accounts)
        changes.accounts.insert(account.id);
    for (const trading::Position &position : change.positions)
        changes.positions.insert({position.account, {position.code, position.side}});
    for (const trading::PaperOrder &order : change.orders) {
        changes.accounts.insert(order.account); // money and shares that it sets aside
        for (const auto side : {trading::PositionSide::Long, trading::PositionSide::Short})
            changes.positions.insert({order.account, {order.code, side}});
    }
    log.take(change);
    tell(change.orders, change.deals);
    for (const trading::DayClose &closed : change.days)
        Q_EMIT dayBegan(QString::fromStdString(closed.account), books().at(closed.account).account().day);
    for (const trading::PaperDeal &deal : change.deals)
        Q_EMIT filled(deal);
    for (const trading::PaperOrder &order : change.orders)
        if (order.status == feed::OrderStatus::Rejected)
            Q_EMIT rejected(order);
}

void TradeDesk::tell(const std::vector<trading::PaperOrder> &orders, const std::vector<trading::PaperDeal> &deals)
{
    FeedPump::Records told;
    for (const trading::PaperOrder &order : orders)
        told.append(records.orderRecord(order));
    if (!told.isEmpty())
        Q_EMIT ordersChanged(told);
    told.clear();
    for (const trading::PaperDeal &deal : deals)
        told.append(records.dealRecord(deal));
    if (!told.isEmpty())
        Q_EMIT dealsMade(told);
}

} // namespace terminal
