#include <QtTest/QTest>
#include <QtWidgets/QDialog>
#include <gtest/gtest.h>

#include "desk/deskcontrol.h"
#include "desk/owndealspanel.h"
#include "desk/ownpositionspanel.h"
#include "deskrows.h"
#include "deskwindow.h"
#include "filesizelimit.h"
#include "order/cquotesgraphwidget.h"
#include "order/cquotespriceslist.h"
#include "records/fieldids.h"
#include "table/cdatatable.h"
#include "trading_support.h"
#include "window/fundspanel.h"
#include "window/ladderpanel.h"
#include "window/mainwindow.h"
#include "window/paneltabs.h"
#include "window/ticketform.h"
#include "window/tradepage.h"

using namespace terminal;
using namespace refhost;
using namespace tradingtest;

namespace {

/// What the desk shows and says of orders that its file has, or has not.
class DeskStoring : public DeskWindow
{
protected:
    void waitForProblem()
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !desk->desk().storageProblem().isEmpty(); }));
    }
    void waitUntilWell()
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return desk->desk().storageProblem().isEmpty(); }));
        settle();
    }
    /// Rows of a record table as "text|text", the given fields.
    static std::string rowsOf(KV::CDataTable &table, std::initializer_list<int> fields)
    {
        std::string text;
        for (const int row : table.rows()) {
            for (const int field : fields)
                text += table.cellText(row, table.fieldID2columnID(field)).toStdString() + '|';
            text += '\n';
        }
        return text;
    }
    void showTab(const char *title)
    {
        PanelTabs &tabs = page().bottomPanels();
        tabs.showPanel(tabs.titles().indexOf(QString::fromUtf8(title)));
        QTest::qWait(120); // the follower's step
    }
    std::string positionRows()
    {
        showTab("持仓");
        return rowsOf(control->positions().table(), {PositionAccount, PositionCode, PositionQuantity});
    }
    std::string fundsRow()
    {
        showTab("资金");
        const std::string rows =
            rowsOf(control->funds().table(), {FundsAccount, FundsTotal, FundsAvailable, FundsFrozen});
        return rows.substr(0, rows.find('\n'));
    }
    std::string dealRows() { return deskRows(control->deals(), {DealNumber, DealOrder, DealQuantity}); }
};

} // namespace

TEST_F(DeskStoring, WhileTheFileCannotBeWrittenTheTablesAgreeAndNothingIsToldAsDone)
{
    open();
    sendBuy(9.99, 300);
    sendBuy(9.98, 100);
    {
        const FileSizeLimit full(0);
        desk->takeDeal(deal(0, at(monday, 10, 1), 9.98, 300, feed::DealKind::SellerInitiated));
        waitForProblem();
        tell(quote(0, at(monday, 10, 2), {{9.98, 500}}, {{10, 500}}, 10)); // a quote brings the tables up to date
        EXPECT_EQ(dealRows(), "");
        EXPECT_EQ(positionRows(), "") << "as long as the deal is not stored";
        EXPECT_EQ(fundsRow(), "88001|1 000 000.00|995 994.96|4 005.04|");
        showTab("委托");
        doubleClickOrder(2);
        const std::string said = control->orders().summary().toStdString();
        EXPECT_NE(said.find("撤单中 1 笔"), std::string::npos) << said;
        EXPECT_EQ(said.find("已撤"), std::string::npos) << said;
        EXPECT_NE(said.find("交易桌面文件"), std::string::npos) << "the problem stands beside it";
        EXPECT_NE(desk->reprice(2, 9.97).toStdString(), "");
    }
    waitUntilWell();
    EXPECT_EQ(orderRows(), "2 买入 9.98 100 0 已撤 \n1 买入 9.99 300 300 已成 \n");
    EXPECT_EQ(control->orders().summary().toStdString(), "2 笔 · 已撤委托 2");
    EXPECT_EQ(dealRows(), "1 1 300 \n");
    EXPECT_EQ(positionRows(), "88001|600000.SH|300|\n");
    EXPECT_EQ(fundsRow(), "88001|999 997.97|996 997.97|0.00|");
}

TEST_F(DeskStoring, QuittingBeforeEverythingIsStoredIsAsked)
{
    open();
    sendBuy(9.99, 300);
    {
        const FileSizeLimit full(0);
        desk->takeDeal(deal(0, at(monday, 10, 1), 9.98, 300, feed::DealKind::SellerInitiated));
        waitForProblem();
        answerBoxByKey(Qt::Key_Return);
        EXPECT_FALSE(window->close()) << "Enter means no";
        EXPECT_EQ(asked.toStdString().substr(0, 7), "退出|");
        EXPECT_NE(asked.toStdString().find("还没有保存"), std::string::npos);
    }
    waitUntilWell();
    EXPECT_TRUE(window->close()) << "without a question";
}

TEST_F(DeskStoring, ADeskWithoutItsFileAsksOnceBeforeItTrades)
{
    open();
    withoutQuestions();
    control->setUnsaved(QStringLiteral("文件已损坏"));
    enterOrder();
    const auto sendHundred = [&] {
        ticket().setQuantity(100);
        QTest::qWait(600); // the button rests after a click
        ticket().setFocus();
        send();
        settle();
        return desk->desk().broker().orders().size();
    };
    answerBoxByKey(Qt::Key_Return);
    EXPECT_EQ(sendHundred(), 0u) << "Enter means no";
    EXPECT_EQ(asked.toStdString().find("交易不保存|文件已损坏"), 0u) << asked.toStdString();
    answerBox(true);
    EXPECT_EQ(sendHundred(), 1u);
    EXPECT_EQ(sendHundred(), 2u) << "he knows";
    press(Qt::Key_F9);
    EXPECT_NE(control->orders().summary().toStdString().find("交易不保存：文件已损坏"), std::string::npos)
        << "whatever else is said";
}

/// The marks at the levels withdraw what stands at the price that was painted, not at the one that has come since.
TEST_F(DeskStoring, AMarkInTheLadderWithdrawsAtThePriceThatTheUserSaw)
{
    open();
    sendBuy(9.98, 100);
    sendBuy(9.97, 100);
    page().setCurrentCode(QStringLiteral("600000.SH"));
    page().ladder().setLayoutKind(KV::QuoteLevel2Vertical);
    graph().grab();
    EXPECT_EQ(page().ladder().shownPrice(2, int(feed::Side::Buy)), 9.98);
    EXPECT_EQ(page().ladder().shownPrice(3, int(feed::Side::Buy)), feed::absent<double>);
    page().takeQuote(quote(0, at(monday, 10, 1), {{9.98, 500}, {9.97, 900}}, {{10, 500}}, 10));
    EXPECT_EQ(page().ladder().shownPrice(2, int(feed::Side::Buy)), 9.98) << "not painted yet";
    Q_EMIT page().ladderClicked(1243, 2, int(feed::Side::Buy), QStringLiteral("600000.SH"));
    settle();
    EXPECT_EQ(orderRows(), "2 买入 9.97 100 0 已报 \n1 买入 9.98 100 0 已撤 \n");
    graph().grab();
    Q_EMIT page().ladderClicked(1243, 5, int(feed::Side::Buy), QStringLiteral("600000.SH"));
    EXPECT_NE(control->orders().summary().toStdString().find("这一档没有价格"), std::string::npos);
    EXPECT_EQ(desk->openOrders({}), (std::vector<qint64>{2}));
}

TEST_F(DeskStoring, FuturesAreReadBySideMarginAndProfitSinceTheSettlement)
{
    open();
    desk->send({{"88002", "rb2410", feed::Side::Buy, trading::Offset::Open, 3501, 2}});
    desk->send({{"88002", "rb2410", feed::Side::Sell, trading::Offset::Open, 3500, 2}});
    settle();
    tell(quote(1, at(monday, 14, 59), {{3509, 50}}, {{3511, 50}}, 3510));
    showMarket(tuesday, 0); // settled at 3510
    showTab("持仓");
    const auto rows = [&] {
        return rowsOf(control->positions().table(),
                      {PositionSideName, PositionQuantity, PositionCostPrice, PositionLastPrice, PositionProfit,
                       PositionDayProfit, PositionMargin});
    };
    EXPECT_EQ(rows(), "多|2|3,501.000|3,500|-20.00|-200.00|8 424.00|\n空|2|3,500.000|3,500|0.00|+200.00|8 424.00|\n");
    showTab("资金");
    EXPECT_EQ(rowsOf(control->funds().table(), {FundsAccount, FundsMargin, FundsFloating}).substr(0, 60),
              "88001|-|0.00|\n88002|16 848.00|0.00|\n88009|0.00|0.00|\n");
    desk->send({{"88002", "rb2410", feed::Side::Sell, trading::Offset::Close, 3500, 1}});
    settle();
    EXPECT_EQ(deskRows(control->deals(), {DealDirection, DealOffset, DealPrice, DealRealised}),
              "卖出 平仓 3,500 -100.00 \n");
}
