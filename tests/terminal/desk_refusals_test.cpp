#include <QtTest/QTest>
#include <gtest/gtest.h>
#include <log4cxx/logger.h>

#include "desk/deskcontrol.h"
#include "deskwindow.h"
#include "loggedlines.h"
#include "table/chpfdatatable.h"
#include "trading_support.h"
#include "utils/clogcenter.h"
#include "window/mainwindow.h"
#include "window/ticketform.h"

using namespace terminal;
using namespace tradingtest;

namespace {

class DeskRefusals : public DeskWindow
{
protected:
    /// Sends what the ticket holds, and reads the line under the button.
    std::string sendNow()
    {
        QTest::qWait(600); // the button rests after a click
        ticket().setFocus();
        send();
        settle();
        return ticket().message().toStdString();
    }
};

} // namespace

TEST_F(DeskRefusals, EveryMistakeIsSaidUnderTheButtonAndNothingIsSent)
{
    open();
    withoutQuestions();
    ticket().setCode(QStringLiteral("600000.SH"));
    ticket().setPrice(10);
    ticket().setQuantity(100);
    EXPECT_EQ(sendNow(), "请选择账号");
    chooseAccount();

    const struct
    {
        bool isBuy;
        double price;
        qint64 quantity;
        const char *words; ///< that the line contains
    } stocks[] = {
        {true, 11.01, 100, "高于涨停价 11.00"},
        {true, 10, 150, "买入数量须为 100 的整数倍"}, // the ticket's words
        {true, 10, 100'000, "可用资金 1000000.00 元"},
        {false, 10, 100, "没有持仓"}, // the desk's
    };
    for (const auto &each : stocks) {
        ticket().setBuy(each.isBuy);
        ticket().setPrice(each.price);
        ticket().setQuantity(each.quantity);
        const std::string said = sendNow();
        EXPECT_NE(said.find(each.words), std::string::npos) << said << " / " << each.words;
    }

    ticket().setBuy(true);
    ticket().setPrice(10);
    ticket().setQuantity(100);
    tell(quote(0, at(monday, 11, 30), {{9.99, 500}}, {{10, 500}}, 10));
    EXPECT_NE(sendNow().find("未开市，不能委托，请在 9:15-9:25、9:30-11:30、13:00-15:00 委托"), std::string::npos);

    ticket().setCode(QStringLiteral("rb2410"));
    chooseAccount();
    tell(quote(1, at(monday, 13, 30), {{3500, 50}}, {{3501, 50}}, 3500));
    ticket().setPrice(3500);
    ticket().setQuantity(1);
    ticket().setOpen(false);
    EXPECT_NE(sendNow().find("没有持仓"), std::string::npos);

    EXPECT_TRUE(desk->desk().broker().orders().empty());
    EXPECT_EQ(control->orders().table().count(), 0);
    EXPECT_EQ(trading::moneyText(desk->books().at("88001").funds().available).toStdString(), "1000000.00");
    EXPECT_GT(rejectSounds, 2) << "it can be heard too";
}

TEST_F(DeskRefusals, TheLogTellsOrdersDealsMoneyAndRefusalsInTheirOrder)
{
    open();
    const auto appender = std::make_shared<LoggedLines>();
    const log4cxx::LoggerPtr logger = utils::getStdLogger();
    logger->addAppender(appender);
    sendBuy(10, 300);
    sendBuy(10, 150);
    sendBuy(9.5, 100);
    desk->cancel(2);
    settle();
    logger->removeAppender(appender);
    EXPECT_EQ(appender->text('\n'),
              "委托 1 待报：账户 88001 买入 600000.SH 浦发银行 10.00 × 300 股\n"
              "委托 1 已成：账户 88001 买入 600000.SH 浦发银行 10.00 × 300 股，已成 300\n"
              "成交 1：委托 1，账户 88001 买入 600000.SH 浦发银行 10.00 × 300 股，金额 3000.00，费用 5.03\n"
              "资金 88001：总额 999994.97，可用 996994.97，冻结 0.00\n"
              "委托未报出：浦发银行 600000.SH 委托数量 150 股不合规定：须为 100 股的整数倍\n"
              "委托 2 待报：账户 88001 买入 600000.SH 浦发银行 9.50 × 100 股\n"
              "委托 2 已报：账户 88001 买入 600000.SH 浦发银行 9.50 × 100 股\n"
              "委托 2 已撤：账户 88001 买入 600000.SH 浦发银行 9.50 × 100 股，已撤 100");
}
