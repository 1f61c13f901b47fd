#include <QtTest/QTest>
#include <gtest/gtest.h>

#include "feed/simulation/simulatedfeed.h"
#include "kv/cstockcodelineedit.h"
#include "loggedin.h"
#include "order/cautobutton.h"
#include "order/cquotesgraphwidget.h"
#include "order/cquotespriceslist.h"
#include "printtext.h"
#include "trading_support.h"
#include "window/ladderpanel.h"
#include "window/pricefield.h"
#include "window/quantityfield.h"
#include "window/quotepanel.h"
#include "window/ticketform.h"
#include "window/ticketpanel.h"
#include "window/tradepage.h"
#include "zb/clineedit.h"

using namespace terminal;

namespace {

/// A trading page with the ticket at its side, a stock and a future, and a feed that says nothing by itself.
class TicketPageTest : public ::testing::Test
{
protected:
    TicketPageTest()
    {
        pump = std::make_unique<FeedPump>(
            std::make_unique<feed::MarketFeed>(std::make_unique<feed::SimulatedFeed>(1), feed::MarketFeed::maxSpeed));
        page = std::make_unique<TradePage>(*pump);
        ticket = new TicketPanel;
        page->addSidePanel(ticket);
        ticket->follow(*page);
        page->resize(1200, 700);
        page->show();
        page->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(page.get()));
        tell(tradingtest::stock(0, "600000.SH"));
        feed::Instrument apple = tradingtest::future(1, "AP010");
        apple.tick = 0.5;
        apple.priceDecimals = 1;
        tell(apple);
    }
    void tell(const feed::Instrument &instrument)
    {
        records.takeInstrument(instrument);
        page->takeInstrument(instrument);
        feed::QuoteSnapshot quote = tradingtest::quote(instrument.index, 0, {{10.5, 300}}, {{10.51, 1250}}, 10.5);
        quote.previousClose = 10;
        page->takeQuote(quote);
    }
    void click(const KV::QuoteValuePlace &place) const
    {
        graph().grab();
        QTest::mouseClick(&graph(), Qt::LeftButton, Qt::NoModifier, {place.right - 5, place.baseline - 3});
    }
    KV::CQuotesGraphWidget &graph() const { return *page->ladder().findChild<KV::CQuotesGraphWidget *>(); }
    PriceField &price() const { return *ticket->findChild<PriceField *>(); }
    QString entered() const
    {
        return ticket->form().code() + QLatin1Char(' ') + price().text() + QLatin1Char('/') +
               ticket->findChild<QuantityField *>()->text();
    }

    const LoggedIn user;
    MarketRecords records;
    std::unique_ptr<FeedPump> pump;
    std::unique_ptr<TradePage> page;
    TicketPanel *ticket = nullptr;
};

} // namespace

TEST_F(TicketPageTest, PageAndTicketAreAboutOneInstrumentWhoeverChoosesIt)
{
    EXPECT_EQ(ticket->form().code(), QStringLiteral("600000.SH"));
    page->setCurrentCode(QStringLiteral("AP010"));
    EXPECT_EQ(ticket->form().code(), QStringLiteral("AP010"));
    EXPECT_EQ(ticket->form().draft().trade, kdservice::TraderFuture);
    ticket->form().setTrade(kdservice::TraderStock);
    ZB::CLineEdit *code = ticket->findChild<KV::CStockCodeLineEdit *>()->getLineEdit();
    code->setFocus();
    code->selectAll();
    QTest::keyClicks(code, QStringLiteral("600000"));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        QTest::keyClick(code, Qt::Key_Return);
        return page->currentCode() == QStringLiteral("600000.SH");
    }));
    ticket->form().setCode(QStringLiteral("999999.SH")); // nobody trades it: the page stays
    EXPECT_EQ(page->currentCode(), QStringLiteral("600000.SH"));
}

TEST_F(TicketPageTest, ClicksInTheLadderFillTheTicketForTheLaddersInstrument)
{
    const KV::QuotesLayout places = graph().places();
    click(places.asks[0].price);
    click(places.asks[0].volume);
    EXPECT_EQ(entered(), QStringLiteral("600000.SH 10.51/1200"));
    click(places.bids[0].price);
    EXPECT_EQ(entered(), QStringLiteral("600000.SH 10.50/1200"));
    ticket->form().setCode(QStringLiteral("999999.SH"));
    click(places.bids[0].price);
    EXPECT_EQ(entered(), QStringLiteral("600000.SH 10.50/"));
}

TEST_F(TicketPageTest, ADoubleClickOnAQuoteGivesTheKeyboardToThePriceThatStartsAtTheLastOne)
{
    page->quoteList().handleEvent(69, 0, 1, QStringLiteral("AP010"), nullptr);
    EXPECT_EQ(ticket->form().code(), QStringLiteral("AP010"));
    EXPECT_EQ(page->focusWidget(), price().edit());
    ticket->refresh();
    QTest::keyClick(price().edit(), Qt::Key_Up);
    EXPECT_EQ(price().price(), 10.5);
}

TEST_F(TicketPageTest, F6ComesToTheTicketsCode)
{
    page->focusNextPanel();
    page->focusNextPanel();
    EXPECT_EQ(page->focusWidget(), ticket->findChild<KV::CStockCodeLineEdit *>()->getLineEdit());
}

TEST(TicketPanel, OnALowScreenTheKeyboardStillReachesTheButton)
{
    TicketPanel panel;
    panel.resize(300, 250);
    panel.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&panel));
    auto *send = panel.findChild<KV::CAutoButton *>();
    EXPECT_TRUE(send->visibleRegion().isEmpty());
    panel.setFocus();
    for (int presses = 0; presses < 30 && panel.focusWidget() != send; ++presses)
        QTest::keyClick(panel.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(panel.focusWidget(), send);
    EXPECT_EQ(send->visibleRegion().boundingRect().size(), send->size());
}
