#include "deskwindow.h"

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include "account/caccountscombobox.h"
#include "desk/deskcontrol.h"
#include "deskrows.h"
#include "feed/simulation/simulatedfeed.h"
#include "grid/gridsource.h"
#include "grid/gridview.h"
#include "kv/cstockcodelineedit.h"
#include "model/chpfdatamodel.h"
#include "order/cquotesgraphwidget.h"
#include "records/fieldids.h"
#include "services/accounts.h"
#include "services/userconfig.h"
#include "trading_support.h"
#include "window/ladderpanel.h"
#include "window/mainwindow.h"
#include "window/ticketform.h"
#include "window/ticketpanel.h"
#include "window/tradepage.h"
#include "zb/clineedit.h"

using namespace terminal;
using namespace refhost;
using namespace tradingtest;

DeskWindow::DeskWindow() = default;
DeskWindow::~DeskWindow() = default;

void DeskWindow::SetUp()
{
    setUserConfig(std::make_unique<UserConfig>());
    auto accounts = std::make_unique<Accounts>();
    accounts->putAccount({QStringLiteral("88001"), QStringLiteral("股票"), kdservice::TraderStock, {}});
    accounts->putAccount({QStringLiteral("88002"), QStringLiteral("期货"), kdservice::TraderFuture, {}});
    accounts->putAccount({QStringLiteral("88009"), QStringLiteral("期货二号"), kdservice::TraderFuture, {}});
    accounts->putAccount({QStringLiteral("88003"), QStringLiteral("信用"), kdservice::TraderCredit, {}});
    setAccountData(std::move(accounts));
}

void DeskWindow::TearDown()
{
    close();
    setAccountData(nullptr);
    setUserConfig(nullptr);
}

void DeskWindow::open(TradeDesk::Market market)
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

void DeskWindow::close()
{
    window.reset();
    pump.reset();
    desk.reset();
}

void DeskWindow::tell(const feed::Instrument &instrument)
{
    records.takeInstrument(instrument);
    desk->takeInstrument(instrument);
    page().takeInstrument(instrument);
}

void DeskWindow::tell(const feed::QuoteSnapshot &quote)
{
    page().takeQuotes({records.quoteRecord(quote)});
    desk->takeQuote(quote);
    page().takeQuote(quote);
}

void DeskWindow::showMarket(int day, int minute)
{
    tell(quote(0, at(day, 10, minute), {{9.99, 50'000}, {9.98, 90'000}}, {{10, 20'000}, {10.01, 90'000}}, 10));
    tell(quote(1, at(day, 10, minute), {{3500, 50}}, {{3501, 50}}, 3500));
    settle();
}

void DeskWindow::settle()
{
    ASSERT_TRUE(QTest::qWaitFor([this] { return desk->desk().isSettled(); }));
    window->showNow();
}

TradePage &DeskWindow::page() const
{
    return window->tradePage();
}

TicketForm &DeskWindow::ticket() const
{
    return window->ticketPanel().form();
}

KV::CQuotesGraphWidget &DeskWindow::graph() const
{
    return *page().ladder().findChild<KV::CQuotesGraphWidget *>();
}

void DeskWindow::press(int key, Qt::KeyboardModifiers modifiers)
{
    QApplication::setActiveWindow(window.get()); // without a window system a popup takes the keyboard for good
    QTest::keyClick(window->focusWidget(), static_cast<Qt::Key>(key), modifiers);
}

void DeskWindow::chooseAccount()
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

void DeskWindow::typeCode(const QString &letters, const QString &expected)
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

void DeskWindow::clickLadder(const QPoint &point)
{
    graph().grab();
    QTest::mouseClick(&graph(), Qt::LeftButton, Qt::NoModifier, point);
}

void DeskWindow::clickPrice(const KV::QuoteValuePlace &place)
{
    clickLadder({place.right - 5, place.baseline - 3});
}

void DeskWindow::send()
{
    press(Qt::Key_Return, Qt::ControlModifier);
}

void DeskWindow::enterOrder(qint64 quantity)
{
    chooseAccount();
    typeCode(QStringLiteral("600000"), QStringLiteral("600000.SH"));
    clickPrice(graph().places().asks[0].price);
    ticket().setQuantity(quantity);
    ticket().setFocus();
}

void DeskWindow::sendBuy(double price, qint64 quantity)
{
    desk->send({{"88001", "600000.SH", feed::Side::Buy, trading::Offset::Open, price, quantity}});
    settle();
}

void DeskWindow::whenBoxOpens(const std::function<void(QDialog &)> &answer)
{
    QTimer::singleShot(5, window.get(), [this, answer] {
        auto *box = window->findChild<QDialog *>(QStringLiteral("confirmBox"));
        if (!box)
            return whenBoxOpens(answer);
        asked = box->windowTitle() + QLatin1Char('|') + box->findChild<QLabel *>()->text();
        answer(*box);
    });
}

void DeskWindow::answerBox(bool yes)
{
    whenBoxOpens([yes](QDialog &box) {
        for (QPushButton *button : box.findChildren<QPushButton *>())
            if ((button->text() != QStringLiteral("取消")) == yes)
                return QTest::mouseClick(button, Qt::LeftButton);
    });
}

void DeskWindow::answerBoxByKey(int key)
{
    whenBoxOpens([key](QDialog &box) { QTest::keyClick(&box, static_cast<Qt::Key>(key)); });
}

void DeskWindow::withoutQuestions()
{
    DeskSettings settings = control->settings();
    settings.confirms = false;
    control->setSettings(settings);
}

void DeskWindow::doubleClick(ZB::GridView &grid, int row, int column)
{
    std::vector<ZB::GridRowId> ids;
    grid.source()->rowIds(row, 1, ids);
    ASSERT_EQ(ids.size(), 1u);
    const QRect cell = grid.cellRect(ids.front(), column);
    ASSERT_FALSE(cell.isEmpty());
    QTest::mouseClick(&grid, Qt::LeftButton, Qt::NoModifier, cell.center());
    QTest::mouseDClick(&grid, Qt::LeftButton, Qt::NoModifier, cell.center());
}

void DeskWindow::doubleClickOrder(qint64 number)
{
    KV::CHpfDataTable &table = control->orders().table();
    table.updateTable();
    doubleClick(*table.findChild<ZB::GridView *>(), table.getDataModel()->indexOfKey(std::to_string(number)),
                table.getColumnIdByFileId(OrderCode));
}

std::string DeskWindow::orderRows() const
{
    return deskRows(control->orders(),
                    {OrderNumber, OrderDirection, OrderPrice, OrderQuantity, OrderFilled, OrderStatus});
}
