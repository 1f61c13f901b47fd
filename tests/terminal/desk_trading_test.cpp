#include <QtTest/QTest>
#include <gtest/gtest.h>

#include "desk/deskcontrol.h"
#include "desk/historypanel.h"
#include "desk/historytable.h"
#include "desk/owndealspanel.h"
#include "desk/ownpositionspanel.h"
#include "desk/tradedesk.h"
#include "deskrows.h"
#include "deskwindow.h"
#include "feed/instrumentrules.h"
#include "grid/gridview.h"
#include "kv/cstockcodelineedit.h"
#include "model/chpfdatamodel.h"
#include "order/cquotesgraphwidget.h"
#include "order/cquotespriceslist.h"
#include "records/fieldids.h"
#include "table/cdatatable.h"
#include "table/chpfdatatable.h"
#include "trading_support.h"
#include "window/ladderpanel.h"
#include "window/mainwindow.h"
#include "window/paneltabs.h"
#include "window/quotepanel.h"
#include "window/ticketform.h"
#include "window/tradepage.h"

using namespace terminal;
using namespace refhost;
using namespace tradingtest;

using DeskTrading = DeskWindow;

namespace {

std::string booksText(const TradeDesk &desk)
{
    const trading::AccountBook &book = desk.books().at("88001");
    const trading::Position *position = book.position({"600000.SH", trading::PositionSide::Long});
    return trading::moneyText(book.account().balance).toStdString() + ' ' +
           std::to_string(position ? position->quantity() : 0);
}

} // namespace

TEST_F(DeskTrading, ADayByHandEndsInTheBooksOfAnIndependentCalculation)
{
    open();
    chooseAccount();
    typeCode(QStringLiteral("pfyh"), QStringLiteral("600000.SH"));
    EXPECT_EQ(page().currentCode(), QStringLiteral("600000.SH"));
    clickPrice(graph().places().asks[0].price);
    EXPECT_EQ(ticket().draft().price, 10);
    ticket().findChild<KV::CStockCodeLineEdit *>()->setFocus();
    press(Qt::Key_3, Qt::AltModifier);
    EXPECT_EQ(ticket().draft().quantity, 33'300) << "a third of the 99,900 that the money buys, in whole lots";

    answerBox(true);
    send();
    EXPECT_EQ(asked.toStdString().substr(0, 40), std::string("确认委托|88001  买入 600000.SH 浦发银").substr(0, 40));
    send(); // at once, once more
    settle();
    ASSERT_EQ(desk->desk().broker().orders().size(), 1u) << "a slip of the finger sends nothing";
    EXPECT_EQ(orderRows(), "1 买入 10.00 33,300 20,000 部成 \n");
    EXPECT_EQ(fillSounds, 1);

    doubleClickOrder(1);
    settle();
    EXPECT_EQ(control->orders().summary().toStdString(), "1 笔 · 已撤委托 1");
    // 200,000.00 for the shares, 50.00 commission and 2.00 transfer fee.
    EXPECT_EQ(booksText(*desk), "799948.00 20000");

    close();
    open();
    EXPECT_EQ(booksText(*desk), "799948.00 20000");
    EXPECT_EQ(orderRows(), "1 买入 10.00 33,300 20,000 部撤 \n");
    EXPECT_EQ(deskRows(control->deals(), {DealNumber, DealQuantity}), "1 20,000 \n");
    showMarket(tuesday, 0);
    withoutQuestions();
    chooseAccount();
    typeCode(QStringLiteral("600000"), QStringLiteral("600000.SH"));
    press(Qt::Key_F2);
    clickPrice(graph().places().bids[0].price);
    ticket().findChild<KV::CStockCodeLineEdit *>()->setFocus();
    press(Qt::Key_1, Qt::AltModifier);
    EXPECT_EQ(ticket().draft().quantity, 20'000);
    send();
    settle();
    // 199,800.00 for them, less 49.95 commission, 2.00 transfer fee and 99.90 stamp duty.
    EXPECT_EQ(booksText(*desk), "999596.15 0");
    EXPECT_EQ(deskRows(control->deals(), {DealNumber, DealOrder, DealPrice, DealQuantity}), "2 2 9.99 20,000 \n");

    control->orderHistory().show();
    control->orderHistory().history().renew();
    ASSERT_TRUE(QTest::qWaitFor([this] { return control->orderHistory().history().isSettled(); }));
    EXPECT_EQ(control->orderHistory().history().total(), 2);
}

TEST_F(DeskTrading, WhatIsNotWantedOrTooLargeDoesNotGoOut)
{
    open();
    enterOrder();
    answerBox(false);
    send();
    EXPECT_EQ(ticket().message().toStdString(), "已取消，没有委托");

    withoutQuestions();
    DeskSettings settings = control->settings();
    settings.mostShares = 1000;
    settings.mostAmount = 5000;
    control->setSettings(settings);
    const auto sendQuantity = [&](qint64 quantity) {
        ticket().setQuantity(quantity);
        QTest::qWait(1100); // the button rests after a click
        send();
        return ticket().message().toStdString();
    };
    EXPECT_EQ(sendQuantity(1100), "委托数量 1100 股超过您设定的单笔上限 1000 股，请减少数量或改设置");
    EXPECT_EQ(sendQuantity(1000), "委托金额 10,000.00 元超过您设定的单笔上限 5,000.00 元，请减少数量或改设置");
    EXPECT_TRUE(desk->desk().broker().orders().empty());

    pump->setPaused(true);
    asked.clear();
    answerBox(false);
    EXPECT_EQ(sendQuantity(300), "已取消，没有委托");
    EXPECT_EQ(asked.toStdString().substr(0, std::string("行情提醒|行情已暂停").size()), "行情提醒|行情已暂停")
        << "asked although questions are off";
    pump->setPaused(false);
    sendQuantity(300);
    settle();
    EXPECT_EQ(orderRows(), "1 买入 10.00 300 300 已成 \n");
}

TEST_F(DeskTrading, KeysAndTheLadderWithdrawRepriceAndClose)
{
    open();
    withoutQuestions();
    desk->send({{"88001", "600000.SH", feed::Side::Buy, trading::Offset::Open, 10, 1000}});
    desk->send({{"88002", "rb2410", feed::Side::Sell, trading::Offset::Open, 3500, 2}});
    settle();
    showMarket(tuesday, 0); // what was bought can be sold
    desk->send({{"88002", "rb2410", feed::Side::Sell, trading::Offset::Open, 3500, 1}});
    const auto open = [&] { return desk->openOrders({}).size(); };
    sendBuy(9.98, 100);
    sendBuy(9.97, 100);
    desk->send({{"88001", "600000.SH", feed::Side::Sell, trading::Offset::Close, 10.5, 100}});
    settle();
    ASSERT_EQ(open(), 3u);
    window->tradePage().setFocus();
    press(Qt::Key_F8);
    EXPECT_EQ(open(), 2u);
    settle();
    EXPECT_EQ(control->orders().summary().toStdString(), "4 笔 · 已撤委托 6");

    page().setCurrentCode(QStringLiteral("600000.SH"));
    page().ladder().setLayoutKind(KV::QuoteLevel2Vertical);
    clickLadder(graph().places().cancelBuy.center());
    EXPECT_EQ(open(), 0u);
    settle();
    EXPECT_EQ(control->orders().summary().toStdString(), "4 笔 · 已撤 2 笔");
    press(Qt::Key_F9);
    EXPECT_NE(control->orders().summary().toStdString().find("没有可撤的委托"), std::string::npos);

    sendBuy(9.95, 100);
    press(Qt::Key_F10);
    settle();
    EXPECT_EQ(desk->desk().broker().orders().rbegin()->second.price, feed::priceUnits(10))
        << "at the other side's best";
    EXPECT_EQ(open(), 0u);

    press(Qt::Key_F12);
    settle();
    const auto &shares = desk->books().at("88001").positions();
    ASSERT_EQ(shares.size(), 1u);
    EXPECT_EQ(shares.begin()->second.quantity(), 100) << "what was bought today stays until tomorrow";
    EXPECT_TRUE(desk->books().at("88002").positions().empty()) << "yesterday's and today's lots, each by its own order";
}

TEST_F(DeskTrading, AnotherPriceAsksAndKeepsToTheLimitsLikeANewOrder)
{
    open();
    DeskSettings settings = control->settings();
    sendBuy(9.95, 200);
    window->tradePage().setFocus();
    answerBox(false);
    press(Qt::Key_F10);
    EXPECT_EQ(asked.toStdString().find("确认委托|88001  买入 600000.SH 浦发银行  价格 10.00  数量 200 股"), 0u)
        << asked.toStdString();
    EXPECT_EQ(orderRows(), "1 买入 9.95 200 0 已报 \n");

    settings.confirms = false;
    settings.mostShares = 100;
    control->setSettings(settings);
    press(Qt::Key_F10);
    EXPECT_NE(control->orders().summary().toStdString().find("超过您设定的单笔上限"), std::string::npos);
    EXPECT_EQ(orderRows(), "1 买入 9.95 200 0 已报 \n");

    settings.mostShares = 1000;
    control->setSettings(settings);
    pump->setPaused(true);
    answerBox(false);
    press(Qt::Key_F10);
    EXPECT_EQ(asked.toStdString().find("行情提醒|"), 0u) << "asked although questions are off: nothing moves";
    EXPECT_EQ(orderRows(), "1 买入 9.95 200 0 已报 \n");
    answerBox(true);
    press(Qt::Key_F10);
    settle();
    EXPECT_EQ(orderRows(), "2 买入 10.00 200 200 已成 \n1 买入 9.95 200 0 已撤 \n");
}

TEST_F(DeskTrading, ADoubleClickOnAQuoteOrAPositionFillsTheTicket)
{
    open();
    withoutQuestions();
    desk->send({{"88009", "rb2410", feed::Side::Buy, trading::Offset::Open, 3501, 3}});
    settle();
    KV::CHpfDataTable &quotes = page().quoteList().table();
    auto *quoteGrid = quotes.findChild<ZB::GridView *>();
    const auto doubleClickQuote = [&](const char *code) {
        quotes.updateTable();
        doubleClick(*quoteGrid, quotes.getDataModel()->indexOfKey(code), quotes.getColumnIdByFileId(QuoteCode));
    };
    doubleClickQuote("600000.SH");
    EXPECT_EQ(ticket().code(), QStringLiteral("600000.SH"));
    EXPECT_EQ(page().currentCode(), QStringLiteral("600000.SH"));
    doubleClickQuote("rb2410");
    EXPECT_EQ(ticket().draft().operation().toStdString(), "买入开仓");
    chooseAccount();
    EXPECT_EQ(ticket().draft().account, QStringLiteral("88002"));
    doubleClickQuote("600000.SH");

    page().bottomPanels().showPanel(page().bottomPanels().titles().indexOf(QStringLiteral("持仓")));
    window->showNow();
    KV::CDataTable &positions = control->positions().table();
    ASSERT_TRUE(QTest::qWaitFor([&] { return positions.rowCount() == 1; }));
    doubleClick(*positions.findChild<ZB::GridView *>(), 0, positions.fieldID2columnID(PositionCode));
    const OrderDraft draft = ticket().draft();
    EXPECT_EQ(draft.code, QStringLiteral("rb2410"));
    EXPECT_EQ(draft.operation().toStdString(), "卖出平仓");
    EXPECT_EQ(draft.price, 3500);
    EXPECT_EQ(draft.quantity, 3) << "all that can be closed, of the account whose position it is";
    EXPECT_EQ(draft.account, QStringLiteral("88009"));
    send();
    settle();
    EXPECT_TRUE(desk->books().at("88009").positions().empty());
}

TEST_F(DeskTrading, TheLadderCountsOpenOrdersOfItsInstrument)
{
    open();
    sendBuy(9.9, 100);
    sendBuy(9.8, 100);
    page().setCurrentCode(QStringLiteral("600000.SH"));
    page().ladder().setLayoutKind(KV::QuoteLevel2Vertical);
    const QImage shown = graph().grab().toImage();
    page().ladder().ladder().setOrderNum(2, 0);
    EXPECT_TRUE(graph().grab().toImage() == shown);
    page().ladder().ladder().setOrderNum(0, 0);
    EXPECT_FALSE(graph().grab().toImage() == shown);
}
