#include "desk/deskcommands.h"

#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <optional>

#include "desk/ticketorders.h"
#include "desk/tradedesk.h"
#include "feed/instrumentrules.h"

namespace terminal {

using Command = OwnOrdersPanel::Command;

DeskCommands::DeskCommands(TradeDesk &tradeDesk, OrderGuard &orderGuard, const DeskSettings &deskSettings,
                           OwnOrdersPanel &ordersPanel, QWidget &tradePage)
    : desk(tradeDesk), guard(orderGuard), settings(deskSettings), orders(ordersPanel), page(tradePage)
{
}

void DeskCommands::run(Command command)
{
    switch (command) {
    case Command::CancelBuys:
        return withdraw(desk.openOrders({{}, feed::Side::Buy, 0}), QStringLiteral("没有可撤的买单"));
    case Command::CancelSells:
        return withdraw(desk.openOrders({{}, feed::Side::Sell, 0}), QStringLiteral("没有可撤的卖单"));
    case Command::CancelAll:
        return withdraw(desk.openOrders({}), QStringLiteral("没有可撤的委托"));
    case Command::Reprice:
        return repriceCurrent();
    case Command::CloseAll:
        return closeAll();
    }
}

void DeskCommands::cancel(qint64 order)
{
    withdraw({order}, {});
}

/// What is told while this goes on is told at its end.
void DeskCommands::withdraw(const std::vector<qint64> &numbers, const QString &nothing)
{
    if (numbers.empty())
        return orders.say(nothing);
    awaited.clear();
    awaited.insert(numbers.begin(), numbers.end());
    withdrawn.clear();
    refusal.clear();
    for (const qint64 number : numbers)
        if (const QString problem = desk.cancel(number); !problem.isEmpty()) {
            awaited.erase(number);
            refusal = problem;
        }
    tellWithdrawn();
}

void DeskCommands::orderEnded(qint64 order)
{
    if (awaited.erase(order) == 0)
        return;
    withdrawn.push_back(order);
    tellWithdrawn();
}

void DeskCommands::tellWithdrawn()
{
    QStringList parts;
    if (withdrawn.size() == 1)
        parts += QStringLiteral("已撤委托 %1").arg(withdrawn.front());
    else if (!withdrawn.empty())
        parts += QStringLiteral("已撤 %1 笔").arg(withdrawn.size());
    if (!awaited.empty())
        parts += QStringLiteral("撤单中 %1 笔").arg(awaited.size());
    if (!refusal.isEmpty())
        parts += refusal;
    orders.say(parts.join(QStringLiteral("；")));
}

void DeskCommands::cancelInLadder(int level, int side, const QString &code, double shownPrice)
{
    TradeDesk::Choice choice{code.toStdString(), static_cast<feed::Side>(side), 0};
    if (level > 0) {
        if (shownPrice == feed::absent<double> || shownPrice <= 0)
            return orders.say(QStringLiteral("%1 这一档没有价格，没有撤单").arg(code));
        choice.price = feed::priceUnits(shownPrice);
    }
    withdraw(desk.openOrders(choice), QStringLiteral("%1 没有可撤的委托").arg(code));
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
    if (const QString problem = desk.repriceRefusal(number, price); !problem.isEmpty())
        return orders.say(problem);
    const QPointer<QWidget> self(&page);
    const bool wanted = guard.isWanted(requests, settings, page);
    if (!self)
        return;
    if (!wanted)
        return orders.say(QStringLiteral("已取消，委托 %1 没有改价").arg(number));
    const auto now = desk.desk().broker().orders().find(number);
    const std::optional<trading::OrderRequest> request = desk.remainder(number, price);
    const qint64 rest = request ? now->second.openQuantity() - request->quantity : 0;
    const QString problem = desk.reprice(number, price);
    if (!problem.isEmpty())
        return orders.say(problem);
    const QString done = QStringLiteral("委托 %1 已改价重新委托").arg(number);
    orders.say(rest == 0 ? done : done + QStringLiteral("，不足一手的 %1 股已撤").arg(rest));
}

/// Each order is judged by itself: what cannot be closed now keeps nothing else open.
void DeskCommands::closeAll()
{
    const ticketorders::Made made = ticketorders::closeAll(desk, settings);
    QString problem = made.problem;
    std::vector<trading::OrderRequest> possible;
    for (const trading::OrderRequest &request : made.requests) {
        const QString wrong = guard.refusal({request}, settings);
        if (wrong.isEmpty())
            possible.push_back(request);
        else
            problem = wrong;
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
        const QString wrong = desk.send({request});
        if (wrong.isEmpty())
            ++sent;
        else
            problem = wrong;
    }
    const QString done = QStringLiteral("全平：已委托 %1 笔").arg(sent);
    orders.say(problem.isEmpty() ? done : done + QStringLiteral("；") + problem);
}

} // namespace terminal
