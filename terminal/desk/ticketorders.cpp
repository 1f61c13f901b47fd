#include "desk/ticketorders.h"

#include <algorithm>

#include "desk/tradedesk.h"
#include "kv/caccountdata.h"
#include "kv/eselectedaccounttype.h"
#include "trading/tradingrules.h"

namespace terminal::ticketorders {

namespace {

using feed::absent;
using trading::AccountBook;
using trading::Offset;
using trading::OrderRequest;
using trading::PositionSide;

std::vector<std::string> accountsOf(const OrderDraft &draft)
{
    std::vector<std::string> ids;
    const KV::CAccountData *known = KV::getAccountData();
    const auto take = [&ids](const QStringList &members) {
        for (const QString &id : members)
            ids.push_back(id.toStdString());
    };
    if (known && draft.accountKind == KV::SelectedAccountGroup) {
        for (const KV::AccountGroup &group : known->groups(draft.trade))
            if (group.name == draft.account)
                take(group.accountIds);
    } else if (known && draft.accountKind == KV::SelectedComposedAccount) {
        for (const KV::AccountEntry &composed : known->composedAccounts(draft.trade))
            if (composed.id == draft.account)
                take(composed.memberIds);
    } else {
        ids.push_back(draft.account.toStdString());
    }
    return ids;
}

double usable(double price)
{
    return price > 0 && price < absent<double> ? price : absent<double>;
}

double marketPrice(const TradeDesk &desk, const OrderDraft &draft)
{
    const feed::QuoteSnapshot *quote = desk.quote(draft.code.toStdString());
    if (!quote)
        return absent<double>;
    const auto &own = draft.isBuy() ? quote->bids : quote->asks;
    const auto &other = draft.isBuy() ? quote->asks : quote->bids;
    if (draft.priceType == KV::PriceOwnBest)
        return usable(own[0].price);
    double price = usable(other[0].price);
    constexpr size_t bestFive = 5;
    for (size_t i = 1; draft.priceType == KV::PriceBestFive && i < bestFive; ++i)
        if (usable(other[i].price) != absent<double>)
            price = other[i].price;
    return price;
}

PositionSide closedSide(feed::Side side)
{
    return side == feed::Side::Sell ? PositionSide::Long : PositionSide::Short;
}

qint64 closable(const AccountBook &book, const feed::Instrument &instrument, PositionSide side, Offset offset)
{
    const AccountBook::Closable part = book.closable(instrument, side, offset);
    return part.old + part.today;
}

/// All that can be closed, whatever the orders have to be called.
qint64 allClosable(const AccountBook &book, const feed::Instrument &instrument, PositionSide side)
{
    qint64 all = closable(book, instrument, side, Offset::Close);
    if (instrument.kind == feed::InstrumentKind::Future && trading::keepsDaysApart(instrument.exchange))
        all += closable(book, instrument, side, Offset::CloseToday);
    return all;
}

void addClosing(std::vector<OrderRequest> &requests, OrderRequest request, const AccountBook &book,
                const feed::Instrument &instrument)
{
    const qint64 wanted = request.quantity;
    request.offset = Offset::Close;
    if (instrument.kind != feed::InstrumentKind::Future || !trading::keepsDaysApart(instrument.exchange)) {
        requests.push_back(request);
        return;
    }
    const PositionSide side = closedSide(request.side);
    const qint64 today = std::min(closable(book, instrument, side, Offset::CloseToday),
                                  std::max<qint64>(0, wanted - closable(book, instrument, side, Offset::Close)));
    if (wanted > today) {
        request.quantity = wanted - today;
        requests.push_back(request);
    }
    if (today > 0) {
        request.offset = Offset::CloseToday;
        request.quantity = today;
        requests.push_back(request);
    }
}

/// More than one order may hold goes out as several. A single lot that is too much stays one order, to be refused.
void addInPieces(std::vector<OrderRequest> &requests, OrderRequest request, const feed::Instrument &instrument,
                 qint64 exchangesMost, const DeskSettings &settings)
{
    const bool isFuture = instrument.kind == feed::InstrumentKind::Future;
    const double lotAmount = request.price * instrument.multiplier;
    qint64 most = std::min(exchangesMost, isFuture ? settings.mostLots : settings.mostShares);
    if (lotAmount > 0)
        most = std::min(most, qint64(std::min(settings.mostAmount / lotAmount, 1e15)));
    const qint64 step = std::max(1, instrument.lot);
    most = std::max(step, most / step * step);
    for (qint64 left = request.quantity; left > 0; left -= request.quantity) {
        request.quantity = std::min(left, most);
        requests.push_back(request);
    }
}

} // namespace

double oppositePrice(const TradeDesk &desk, const std::string &code, feed::Side side)
{
    const feed::QuoteSnapshot *quote = desk.quote(code);
    return quote ? usable(side == feed::Side::Buy ? quote->asks[0].price : quote->bids[0].price) : absent<double>;
}

QString noCredit()
{
    return QStringLiteral("模拟交易没有融资融券，请改用股票业务");
}

Made fromDraft(const OrderDraft &draft, const TradeDesk &desk)
{
    Made made;
    if (draft.trade == kdservice::TraderCredit) {
        made.problem = noCredit();
        return made;
    }
    OrderRequest request;
    request.code = draft.code.toStdString();
    request.side = draft.isBuy() ? feed::Side::Buy : feed::Side::Sell;
    request.price = draft.priceType == KV::PriceLimit ? draft.price : marketPrice(desk, draft);
    request.quantity = draft.quantity;
    if (request.price == absent<double> && draft.priceType != KV::PriceLimit) {
        made.problem = QStringLiteral("%1 现在没有%2，请改用限价").arg(draft.code, draft.priceText());
        return made;
    }
    const feed::Instrument *instrument = desk.desk().broker().instrument(request.code);
    for (const std::string &id : accountsOf(draft)) {
        request.account = id;
        const auto book = desk.books().find(id);
        const bool closes = draft.trade == kdservice::TraderFuture && !draft.isOpen;
        if (closes && instrument && book != desk.books().end())
            addClosing(made.requests, request, book->second, *instrument);
        else
            made.requests.push_back(request);
    }
    if (made.requests.empty())
        made.problem = QStringLiteral("账户 %1 中没有可以交易的账户，请重新选择").arg(draft.account);
    return made;
}

TicketFunds funds(const OrderDraft &draft, const TradeDesk &desk)
{
    TicketFunds least;
    const std::string code = draft.code.toStdString();
    const feed::Instrument *instrument = desk.desk().broker().instrument(code);
    for (const std::string &id : accountsOf(draft)) {
        const auto found = desk.books().find(id);
        if (found == desk.books().end() || !instrument)
            return {};
        const AccountBook &book = found->second;
        const feed::Side side = draft.isBuy() ? feed::Side::Buy : feed::Side::Sell;
        least.sellable = std::min(least.sellable, allClosable(book, *instrument, closedSide(side)));
        const trading::Funds money = book.funds();
        const feed::QuoteSnapshot *quote = desk.quote(code);
        OrderRequest request{id, code, side, Offset::Open, draft.price, 0};
        if (request.price == absent<double> && quote)
            request.price = quote->last;
        const qint64 most = desk.desk().broker().largestQuantity(request);
        const double value = most > 0 ? double(most) * request.price * instrument->multiplier : 0;
        const double available = trading::yuanOf(money.available);
        least.available = std::min(least.available, value);
        // The whole in the same measure: what one yuan buys.
        least.total = std::min(least.total, available > 0 ? trading::yuanOf(money.total) * value / available : 0);
    }
    return least;
}

Made closeAll(const TradeDesk &desk, const DeskSettings &settings)
{
    Made made;
    QStringList left;
    for (const auto &[id, book] : desk.books())
        for (const auto &[key, position] : book.positions()) {
            const feed::Instrument *instrument = desk.desk().broker().instrument(key.first);
            const QString code = QString::fromStdString(key.first);
            OrderRequest request;
            request.account = id;
            request.code = key.first;
            request.side = key.second == PositionSide::Long ? feed::Side::Sell : feed::Side::Buy;
            request.price = oppositePrice(desk, key.first, request.side);
            if (!instrument || request.price == absent<double>) {
                left += QStringLiteral("%1 没有对手价，未平").arg(code);
                continue;
            }
            if (const qint64 held = position.old.held + position.today.held; held > 0)
                left += QStringLiteral("%1 另有 %2 已在平仓委托中").arg(code).arg(held);
            request.quantity = allClosable(book, *instrument, key.second);
            std::vector<OrderRequest> parts;
            if (request.quantity > 0)
                addClosing(parts, request, book, *instrument);
            for (const OrderRequest &part : parts)
                addInPieces(made.requests, part, *instrument, desk.desk().broker().largestQuantity(part), settings);
        }
    if (!left.isEmpty())
        made.problem = left.join(QStringLiteral("；"));
    else if (made.requests.empty())
        made.problem = QStringLiteral("没有可以平的持仓");
    return made;
}

} // namespace terminal::ticketorders
