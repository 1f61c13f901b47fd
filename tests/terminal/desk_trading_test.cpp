#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <gtest/gtest.h>

#include "account/caccountscombobox.h"
#include "desk/deskcontrol.h"
#include "desk/historypanel.h"
#include "desk/historytable.h"
#include "desk/owndealspanel.h"
#include "desk/ownpositionspanel.h"
#include "desk/tradedesk.h"
#include "feed/simulation/simulatedfeed.h"
#include "grid/gridview.h"
#include "kv/cstockcodelineedit.h"
#include "order/cautobutton.h"
#include "order/cquotesgraphwidget.h"
#include "order/cquotespriceslist.h"
#include "records/fieldids.h"
#include "services/accounts.h"
#include "services/userconfig.h"
#include "table/chpfdatatable.h"
#include "trading_support.h"
#include "window/fundspanel.h"
#include "window/ladderpanel.h"
#include "window/mainwindow.h"
#include "window/marketrecords.h"
#include "window/quotepanel.h"
#include "window/ticketform.h"
#include "window/ticketpanel.h"
#include "window/tradepage.h"
#include "zb/clineedit.h"

using namespace terminal;
using namespace refhost;
using namespace tradingtest;

namespace {

/// The window in front of its trading page with a desk behind it, and a market that says what the test says.
class DeskTrading : public ::testing::Test
{
protected:
    void SetUp() override
    {
        setUserConfig(std::make_unique<UserConfig>());
        auto accounts = std::make_unique<Accounts>();
        accounts->putAccount({QStringLiteral("88001"), QStringLiteral("股票"), kdservice::TraderStock, {}});
        accounts->putAccount({QStringLiteral("88002"), QStringLiteral("期货"), kdservice::TraderFuture, {}});
        setAccountData(std::move(accounts));
    }
    void TearDown() override
    {
        close();
        setAccountData(nullptr);
        setUserConfig(nullptr);
    }
    void open(TradeDesk::Market market = TradeDesk::Market::Recorded)
    {
        pump = std::make_unique<FeedPump>(
            std::make_unique<feed::MarketFeed>(std::make_unique<feed::SimulatedFeed>(1), feed::MarketFeed::maxSpeed));
        desk = std::make_unique<TradeDesk>(market);
        window = std::make_unique<MainWindow>(*pump);
        control = new DeskControl(*desk, *pump, window->tradePage(), window->ticketPanel().form());
        control->setSound([this](bool isFill) { ++(isFill ? fillSounds : rejectSounds); });
        ASSERT_EQ(desk->open(path).toStdString(), "");
        control->openHistory(path);
        desk->begin();
        window->resize(1600, 900);
        window->showPage(window->tradePage());
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        feed::Instrument bank = stock(0, "600000.SH");
        bank.name = "浦发银行";
        tell(bank);
        tell(future(1, "rb2410", "SHFE"));
        showMarket(monday, 0);
    }
    void close()
    {
        window.reset();
        pump.reset();
        desk.reset();
    }
    void tell(const feed::Instrument &instrument)
    {
        records.takeInstrument(instrument);
        desk->takeInstrument(instrument);
        page().takeInstrument(instrument);
    }
    void tell(const feed::QuoteSnapshot &quote)
    {
        page().takeQuotes({records.quoteRecord(quote)});
        desk->takeQuote(quote);
        page().takeQuote(quote);
    }
    void showMarket(int day, int minute)
    {
        tell(quote(0, at(day, 10, minute), {{9.99, 50'000}, {9.98, 90'000}}, {{10, 20'000}, {10.01, 90'000}}, 10));
        tell(quote(1, at(day, 10, minute), {{3500, 50}}, {{3501, 50}}, 3500));
        settle();
    }
    void settle()
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return desk->desk().isSettled(); }));
        window->showNow();
    }
    TradePage &page() const { return window->tradePage(); }
    TicketForm &ticket() const { return window->ticketPanel().form(); }
    KV::CQuotesGraphWidget &graph() const { return *page().ladder().findChild<KV::CQuotesGraphWidget *>(); }

    /// What a user does.
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QApplication::setActiveWindow(window.get()); // without a window system a popup takes the keyboard for good
        QTest::keyClick(window->focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }
    void chooseAccount()
    {
        for (KV::CAccountsComboBox *box : ticket().findChildren<KV::CAccountsComboBox *>()) {
            if (!box->isVisible())
                continue;
            box->setFocus();
            QTest::keyClick(box, Qt::Key_Down);
            QTest::keyClick(box, Qt::Key_Down);
            QTest::keyClick(box, Qt::Key_Return);
        }
    }
    void typeCode(const QString &letters, const QString &expected)
    {
        auto *codes = ticket().findChild<KV::CStockCodeLineEdit *>();
        ZB::CLineEdit *edit = codes->getLineEdit();
        ASSERT_TRUE(QTest::qWaitFor([&] {
            QApplication::setActiveWindow(window.get());
            edit->setFocus();
            edit->selectAll();
            QTest::keyClicks(edit, letters);
            QTest::keyClick(edit, Qt::Key_Return);
            return ticket().code() == expected && edit->text() == codes->getStockCode();
        })) << letters.toStdString();
    }
    void clickLadder(const QPoint &point)
    {
        graph().grab();
        QTest::mouseClick(&graph(), Qt::LeftButton, Qt::NoModifier, point);
    }
    void clickPrice(const KV::QuoteValuePlace &place) { clickLadder({place.right - 5, place.baseline - 3}); }
    void send() { press(Qt::Key_Return, Qt::ControlModifier); }
    /// Answers the box that comes next; what it asks goes to `asked`.
    void answerBox(bool yes)
    {
        QTimer::singleShot(5, window.get(), [this, yes] {
            auto *box = window->findChild<QDialog *>(QStringLiteral("confirmBox"));
            if (!box)
                return answerBox(yes);
            asked = box->windowTitle() + QLatin1Char('|') + box->findChild<QLabel *>()->text();
            QTest::keyClick(box, yes ? Qt::Key_Return : Qt::Key_Escape);
        });
    }
    void withoutQuestions()
    {
        DeskSettings settings = control->settings();
        settings.confirms = false;
        control->setSettings(settings);
    }
    void doubleClickOrder(qint64 number)
    {
        KV::CHpfDataTable &table = control->orders().table();
        table.updateTable();
        table.selectKey(std::to_string(number));
        auto *grid = table.findChild<ZB::GridView *>();
        const QRect cell = grid->cellRect(grid->currentRow(), table.getColumnIdByFileId(OrderCode));
        ASSERT_FALSE(cell.isEmpty());
        QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, cell.center());
        QTest::mouseDClick(grid, Qt::LeftButton, Qt::NoModifier, cell.center());
    }
    /// "number side price quantity filled status", the newest first.
    std::string orderRows() const
    {
        return rows(control->orders(),
                    {OrderNumber, OrderDirection, OrderPrice, OrderQuantity, OrderFilled, OrderStatus});
    }
    static std::string rows(const TablePanel &panel, std::initializer_list<int> fields)
    {
        std::string text;
        panel.table().updateTable();
        for (int row = 0; row < panel.table().count(); ++row) {
            for (const int field : fields)
                text += panel.table()
                            .getData(row)
                            ->getDisplayQString(panel.table().getColumnIdByFileId(field))
                            .toStdString() +
                        ' ';
            text += '\n';
        }
        return text;
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("desk.db"));
    MarketRecords records;
    std::unique_ptr<FeedPump> pump;
    std::unique_ptr<TradeDesk> desk;
    std::unique_ptr<MainWindow> window;
    DeskControl *control = nullptr; ///< the page's
    QString asked;
    int fillSounds = 0;
    int rejectSounds = 0;
};

/// The books of one account, worked out from what was done, in cents and without the program's help.
struct Ledger
{
    long long cents = 100'000'000;
    long long shares = 0;

    static long long commission(long long amount) { return std::max(500LL, (amount * 25 + 50'000) / 100'000); }
    static long long transfer(long long amount) { return (amount + 50'000) / 100'000; }
    static long long duty(long long amount) { return (amount * 50 + 50'000) / 100'000; }

    /// An order with all its deals, as price in cents and quantity.
    void buy(std::initializer_list<std::pair<long long, long long>> deals)
    {
        long long amount = 0;
        for (const auto &[price, quantity] : deals) {
            amount += price * quantity;
            shares += quantity;
        }
        cents -= amount + commission(amount) + transfer(amount);
    }
    void sell(long long price, long long quantity)
    {
        const long long amount = price * quantity;
        shares -= quantity;
        cents += amount - commission(amount) - transfer(amount) - duty(amount);
    }
    /// The largest quantity of whole lots that a part of the cash buys at a price.
    static long long third(long long cash, long long price)
    {
        long long most = 0;
        for (long long lots = 1; lots * 100 * price < cash; ++lots) {
            const long long amount = lots * 100 * price;
            if (amount + commission(amount) + transfer(amount) <= cash)
                most = lots * 100;
        }
        return most * price / 3 / price / 100 * 100;
    }
    std::string text() const
    {
        char line[80];
        std::snprintf(line, sizeof line, "%lld.%02lld %lld", cents / 100, cents % 100, shares);
        return line;
    }
};

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
    const long long third = Ledger::third(100'000'000, 1000);
    EXPECT_EQ(ticket().draft().quantity, third);

    answerBox(true);
    send();
    EXPECT_EQ(asked.toStdString().substr(0, 40), std::string("确认委托|88001  买入 600000.SH 浦发银").substr(0, 40));
    send(); // at once, once more
    settle();
    ASSERT_EQ(desk->desk().broker().orders().size(), 1u) << "a slip of the finger sends nothing";
    EXPECT_EQ(orderRows(), "1 买入 10.00 " + QString::number(third).toStdString().insert(2, ",") + " 20,000 部成 \n");
    EXPECT_EQ(fillSounds, 1);

    doubleClickOrder(1);
    settle();
    EXPECT_EQ(control->orders().summary().toStdString(), "1 笔 · 已撤委托 1");
    Ledger ledger;
    ledger.buy({{1000, 20'000}});
    EXPECT_EQ(booksText(*desk), ledger.text());

    close();
    open();
    EXPECT_EQ(booksText(*desk), ledger.text());
    EXPECT_EQ(orderRows(), "1 买入 10.00 " + QString::number(third).toStdString().insert(2, ",") + " 20,000 部撤 \n");
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
    ledger.sell(999, 20'000);
    EXPECT_EQ(booksText(*desk), ledger.text());
    EXPECT_EQ(rows(control->deals(), {DealNumber, DealOrder, DealPrice, DealQuantity}), "2 2 9.99 20,000 \n");

    control->orderHistory().show();
    control->orderHistory().history().renew();
    ASSERT_TRUE(QTest::qWaitFor([this] { return control->orderHistory().history().isSettled(); }));
    EXPECT_EQ(control->orderHistory().history().total(), 2);
}

TEST_F(DeskTrading, WhatIsNotWantedOrTooLargeDoesNotGoOut)
{
    open();
    chooseAccount();
    typeCode(QStringLiteral("600000"), QStringLiteral("600000.SH"));
    clickPrice(graph().places().asks[0].price);
    ticket().setQuantity(100);
    ticket().findChild<KV::CStockCodeLineEdit *>()->setFocus();
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
    const auto buy = [&](double price) {
        desk->send({{"88001", "600000.SH", feed::Side::Buy, trading::Offset::Open, price, 100}});
        settle();
    };
    const auto open = [&] { return desk->openOrders({}).size(); };
    buy(9.98);
    buy(9.97);
    desk->send({{"88001", "600000.SH", feed::Side::Sell, trading::Offset::Close, 10.5, 100}});
    settle();
    ASSERT_EQ(open(), 3u);
    window->tradePage().setFocus();
    press(Qt::Key_F8);
    EXPECT_EQ(open(), 2u);
    EXPECT_EQ(control->orders().summary().toStdString(), "4 笔 · 已撤 1 笔");

    page().setCurrentCode(QStringLiteral("600000.SH"));
    page().ladder().setLayoutKind(KV::QuoteLevel2Vertical);
    clickLadder(graph().places().cancelBuy.center());
    EXPECT_EQ(open(), 0u);
    press(Qt::Key_F9);
    EXPECT_NE(control->orders().summary().toStdString().find("没有可撤的委托"), std::string::npos);

    buy(9.95);
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
    desk->send({{"88001", "600000.SH", feed::Side::Buy, trading::Offset::Open, 9.95, 200}});
    settle();
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
    desk->send({{"88002", "rb2410", feed::Side::Buy, trading::Offset::Open, 3501, 3}});
    settle();
    Q_EMIT page().quoteList().codeActivated(QStringLiteral("600000.SH"));
    EXPECT_EQ(ticket().code(), QStringLiteral("600000.SH"));
    Q_EMIT control->positions().activated(QStringLiteral("88002"), QStringLiteral("rb2410"),
                                          trading::PositionSide::Long);
    const OrderDraft draft = ticket().draft();
    EXPECT_EQ(draft.code, QStringLiteral("rb2410"));
    EXPECT_EQ(draft.operation().toStdString(), "卖出平仓");
    EXPECT_EQ(draft.price, 3500);
}

TEST_F(DeskTrading, TheLadderCountsOpenOrdersOfItsInstrument)
{
    open();
    desk->send({{"88001", "600000.SH", feed::Side::Buy, trading::Offset::Open, 9.9, 100}});
    desk->send({{"88001", "600000.SH", feed::Side::Buy, trading::Offset::Open, 9.8, 100}});
    settle();
    page().setCurrentCode(QStringLiteral("600000.SH"));
    page().ladder().setLayoutKind(KV::QuoteLevel2Vertical);
    const QImage shown = graph().grab().toImage();
    page().ladder().ladder().setOrderNum(2, 0);
    EXPECT_TRUE(graph().grab().toImage() == shown);
    page().ladder().ladder().setOrderNum(0, 0);
    EXPECT_FALSE(graph().grab().toImage() == shown);
}
