#include "desk/deskcommands.h"

#include <QtCore/QPointer>

#include "desk/ticketorders.h"
#include "desk/tradedesk.h"
#include "feed/instrumentrules.h"

namespace terminal {

using Command = OwnOrdersPanel::Command;

DeskCommands::DeskCommands(TradeDesk &tradeDesk, const OrderGuard &orderGuard, const DeskSettings &deskSettings,
                           OwnOrdersPanel &ordersPanel, QWidget &tradePage)
    : desk(tradeDesk), guard(orderGuard), settings(deskSettings), orders(ordersPanel), page(tradePage)
{
}

void DeskCommands::run(Command command)
{
    switch (command) {
    case Command::CancelBuys:
        return cancelAll(feed::Side::Buy);
    case Command::CancelSells:
        return cancelAll(feed::Side::Sell);
    case Command::CancelAll:
        return cancelAll({});
    case Command::Reprice:
        return repriceCurrent();
    case Command::CloseAll:
        return closeAll();
    }
}

void DeskCommands::cancel(qint64 order)
{
    const QString refusal = desk.cancel(order);
    orders.say(refusal.isEmpty() ? QStringLiteral("已撤委托 %1").arg(order) : refusal);
}

void DeskCommands::cancelAll(const std::optional<feed::Side> &side)
{
    QString refusal;
    const int cancelled = desk.cancelAll({{}, side, 0}, refusal);
    if (cancelled == 0 && refusal.isEmpty())
        refusal = QStringLiteral("没有可撤的委托");
    orders.say(refusal.isEmpty() ? QStringLiteral("已撤 %1 笔").arg(cancelled) : refusal);
}

void DeskCommands::cancelInLadder(int level, int side, const QString &code)
{
    TradeDesk::Choice choice{code.toStdString(), static_cast<feed::Side>(side), 0};
    if (level > 0) {
        const feed::QuoteSnapshot *quote = desk.quote(choice.code);
        if (!quote || level > feed::QuoteSnapshot::depth)
            return;
        const auto &levels = *choice.side == feed::Side::Buy ? quote->bids : quote->asks;
        const double price = levels[size_t(level - 1)].price;
        if (price == feed::absent<double>)
            return orders.say(QStringLiteral("%1 这一档没有价格，没有撤单").arg(code));
        choice.price = feed::priceUnits(price);
    }
    QString refusal;
    const int cancelled = desk.cancelAll(choice, refusal);
    if (cancelled == 0 && refusal.isEmpty())
        refusal = QStringLiteral("%1 没有可撤的委托").arg(code);
    orders.say(refusal.isEmpty() ? QStringLiteral("已撤 %1 笔").arg(cancelled) : refusal);
}

/// Without a current row the newest open order is meant. What would be refused is said before anything is asked, and
/// judged once more when it goes out: the market goes on while the user thinks.
void DeskCommands::repriceCurrent()
{
    const std::vector<qint64> open = desk.openOrders({});
    qint64 number = orders.currentOrder();
    if (number == 0 && !open.empty())
        number = open.back();
    const auto found = desk.desk().broker().orders().find(number);
    if (found == desk.desk().broker().orders().end() || !found->second.isOpen())
        return orders.say(QStringLiteral("没有可以改价的委托，请选中一笔未成交的委托"));
    const trading::PaperOrder &order = found->second;
    const double price = ticketorders::oppositePrice(desk, order.code, order.side);
    if (price == feed::absent<double>)
        return orders.say(QStringLiteral("%1 没有对手价，不能改价").arg(QString::fromStdString(order.code)));
    const std::vector<trading::OrderRequest> requests{*desk.remainder(number, price)};
    if (const QString limit = guard.overLimit(requests, settings); !limit.isEmpty())
        return orders.say(limit);
    if (const trading::Refusal refusal = desk.desk().broker().checkReplacement(number, requests.front()))
        return orders.say(refusal.text);
    const QPointer<QWidget> self(&page);
    const bool wanted = guard.isWanted(requests, settings, page);
    if (!self)
        return;
    if (!wanted)
        return orders.say(QStringLiteral("已取消，委托 %1 没有改价").arg(number));
    const QString refusal = desk.reprice(number, price);
    orders.say(refusal.isEmpty() ? QStringLiteral("委托 %1 已改价重新委托").arg(number) : refusal);
}

/// Each order is judged by itself: what cannot be closed now keeps nothing else open.
void DeskCommands::closeAll()
{
    const ticketorders::Made made = ticketorders::closeAll(desk);
    QString problem = made.problem;
    std::vector<trading::OrderRequest> possible;
    for (const trading::OrderRequest &request : made.requests) {
        const QString refusal = guard.refusal({request}, settings);
        if (refusal.isEmpty())
            possible.push_back(request);
        else
            problem = refusal;
    }
    if (possible.empty())
        return orders.say(problem);
    const QPointer<QWidget> self(&page);
    const bool wanted = guard.isWanted(possible, settings, page);
    if (!self)
        return;
    if (!wanted)
        return orders.say(QStringLiteral("已取消，没有委托"));
    int sent = 0;
    for (const trading::OrderRequest &request : possible) {
        const QString refusal = desk.send({request});
        if (refusal.isEmpty())
            ++sent;
        else
            problem = refusal;
    }
    const QString done = QStringLiteral("全平：已委托 %1 笔").arg(sent);
    orders.say(problem.isEmpty() ? done : done + QStringLiteral("；") + problem);
}

} // namespace terminal
