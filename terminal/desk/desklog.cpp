#include "desk/desklog.h"

#include "desk/desktexts.h"
#include "desk/toldaccounts.h"
#include "utils/clogcenter.h"

namespace terminal {

DeskLog::DeskLog(const ToldAccounts &told) : accounts(told) {}

void DeskLog::say(const QString &text)
{
    LOG4CXX_INFO(utils::getStdLogger(), text.toStdString());
}

void DeskLog::sayError(const QString &text)
{
    LOG4CXX_ERROR(utils::getStdLogger(), text.toStdString());
}

void DeskLog::take(const trading::PaperOrder &order)
{
    QString text =
        QStringLiteral("委托 %1 %2：账户 %3 %4")
            .arg(order.id)
            .arg(desktexts::status(order.status), QString::fromStdString(order.account), desktexts::order(order));
    if (order.filled.quantity > 0)
        text += QStringLiteral("，已成 %1").arg(order.filled.quantity);
    if (order.cancelled > 0)
        text += QStringLiteral("，已撤 %1").arg(order.cancelled);
    if (!order.remark.empty())
        text += QStringLiteral("（%1）").arg(QString::fromStdString(order.remark));
    say(text);
}

void DeskLog::take(const trading::PaperDeal &deal)
{
    say(QStringLiteral("成交 %1：委托 %2，账户 %3 %4，金额 %5，费用 %6")
            .arg(deal.id)
            .arg(deal.order)
            .arg(QString::fromStdString(deal.account), desktexts::deal(deal), trading::moneyText(deal.amount),
                 trading::moneyText(deal.charges.total())));
}

void DeskLog::take(const trading::Settlement &settled)
{
    say(QStringLiteral("结算 %1：账户 %2 %3 %4 手，盈亏 %5")
            .arg(settled.day)
            .arg(QString::fromStdString(settled.account), QString::fromStdString(settled.code))
            .arg(settled.quantity)
            .arg(trading::moneyText(settled.profit)));
}

void DeskLog::takeFunds(const std::string &account) const
{
    const trading::Funds funds = accounts.books().at(account).funds();
    say(QStringLiteral("资金 %1：总额 %2，可用 %3，冻结 %4")
            .arg(QString::fromStdString(account), trading::moneyText(funds.total), trading::moneyText(funds.available),
                 trading::moneyText(funds.frozen)));
}

void DeskLog::take(const trading::DeskChange &change) const
{
    for (const trading::PaperOrder &order : change.orders)
        take(order);
    for (const trading::PaperDeal &deal : change.deals)
        take(deal);
    for (const trading::Settlement &settled : change.settlements)
        take(settled);
    for (const trading::DayClose &day : change.days)
        say(QStringLiteral("账户 %1 交易日 %2 结束：权益 %3")
                .arg(QString::fromStdString(day.account))
                .arg(day.day)
                .arg(trading::moneyText(day.equity)));
    if (change.deals.empty() && change.days.empty())
        return; // what orders set aside stands in the table
    for (const trading::Account &account : change.accounts)
        takeFunds(account.id);
}

} // namespace terminal
