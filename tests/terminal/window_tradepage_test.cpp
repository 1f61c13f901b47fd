#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <gtest/gtest.h>

#include "feed/simulation/simulatedfeed.h"
#include "grid/gridview.h"
#include "kdservice/idata.h"
#include "loggedin.h"
#include "model/chpfdatamodel.h"
#include "order/cquotesgraphwidget.h"
#include "order/cquotespriceslist.h"
#include "records/fieldids.h"
#include "table/chpfdatatable.h"
#include "theme/themeservice.h"
#include "trading_support.h"
#include "window/barbutton.h"
#include "window/ladderheader.h"
#include "window/ladderpanel.h"
#include "window/mainwindow.h"
#include "window/paneltabs.h"
#include "window/quotepanel.h"
#include "window/ticketpanel.h"
#include "window/tradepage.h"

using namespace terminal;

namespace {

class SidePanel : public Panel
{
public:
    explicit SidePanel(const QString &caption) : Panel(caption)
    {
        auto *field = new QWidget(this);
        field->setFocusPolicy(Qt::StrongFocus);
        setContents(field);
    }
};

feed::Instrument named(feed::Instrument instrument)
{
    instrument.name = "名称" + std::to_string(instrument.index);
    return instrument;
}

feed::QuoteSnapshot quoteOf(int instrument, double last)
{
    feed::QuoteSnapshot quote;
    quote.instrument = instrument;
    quote.phase = feed::TradingPhase::Continuous;
    quote.last = last;
    quote.previousClose = 10;
    for (std::size_t i = 0; i < feed::QuoteSnapshot::depth; ++i) {
        quote.asks[i] = {last + 0.01 * double(i + 1), qint64(100 * (i + 1)), 1};
        quote.bids[i] = {last - 0.01 * double(i), qint64(1000 * (i + 1)), 1};
    }
    return quote;
}

/// A window in front of its trading page, with two stocks and a future and a feed that says nothing by itself.
class TradePageTest : public ::testing::Test
{
protected:
    TradePageTest()
    {
        pump = std::make_unique<FeedPump>(
            std::make_unique<feed::MarketFeed>(std::make_unique<feed::SimulatedFeed>(1), feed::MarketFeed::maxSpeed));
        window = std::make_unique<MainWindow>(*pump);
        window->resize(1400, 800);
        window->showPage(window->tradePage());
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    ~TradePageTest() override { refhost::ThemeService::instance().setScale(1); }

    void tell(const feed::Instrument &instrument)
    {
        records.takeInstrument(instrument);
        page().takeInstrument(instrument);
    }
    void tell(const feed::QuoteSnapshot &quote)
    {
        page().takeQuotes({records.quoteRecord(quote)});
        page().takeQuote(quote);
    }
    void tellAll()
    {
        tell(named(tradingtest::stock(0, "600000.SH")));
        tell(named(tradingtest::stock(1, "000001.SZ")));
        tell(named(tradingtest::future(2, "AP010")));
        for (int i = 0; i < 3; ++i)
            tell(quoteOf(i, 10.5 + i));
        window->showNow();
    }
    TradePage &page() const { return window->tradePage(); }
    KV::CQuotesGraphWidget &graph() const { return *page().ladder().findChild<KV::CQuotesGraphWidget *>(); }
    std::string clicked(const QPoint &point)
    {
        QSignalSpy spy(&page(), &TradePage::ladderClicked);
        graph().grab();
        QTest::mouseClick(&graph(), Qt::LeftButton, Qt::NoModifier, point);
        QStringList lines;
        for (const QList<QVariant> &each : spy)
            lines << QStringLiteral("%1 %2 %3 %4")
                         .arg(each[0].toInt())
                         .arg(each[1].toInt())
                         .arg(each[2].toInt())
                         .arg(each[3].toString());
        return lines.join(QStringLiteral("; ")).toStdString();
    }
    std::string shownCode() const { return page().ladder().header().code().toStdString(); }

    const LoggedIn user;
    MarketRecords records;
    std::unique_ptr<FeedPump> pump;
    std::unique_ptr<MainWindow> window;
};

QPoint valueAt(const KV::QuoteValuePlace &place)
{
    return {place.right - 5, place.baseline - 3};
}

BarButton *buttonOf(QWidget &parent, const QString &text)
{
    for (auto *button : parent.findChildren<BarButton *>())
        if (button->text() == text && button->isVisible())
            return button;
    return nullptr;
}

} // namespace

TEST_F(TradePageTest, TheFirstInstrumentIsShownAndTheQuoteListLeadsTheLadder)
{
    QSignalSpy changed(&page(), &TradePage::currentCodeChanged);
    EXPECT_EQ(page().currentCode(), QString());
    EXPECT_EQ(page().currentInstrument(), nullptr);
    EXPECT_EQ(page().quoteList().summary().toStdString(), "0 只");
    tellAll();
    EXPECT_EQ(shownCode(), "600000.SH");
    EXPECT_EQ(page().quoteList().summary().toStdString(), "3 只");
    EXPECT_EQ(clicked(valueAt(graph().places().asks[0].price)), "1128 0 0 10.5100");

    KV::CHpfDataTable &table = page().quoteList().table();
    table.setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    EXPECT_EQ(shownCode(), "000001.SZ");
    EXPECT_EQ(page().ladder().header().name().toStdString(), "名称1");
    EXPECT_EQ(clicked(valueAt(graph().places().asks[0].price)), "1128 0 0 11.5100");
    EXPECT_EQ(changed.count(), 2) << "the first instrument, and the one below it";

    auto *grid = table.findChild<ZB::GridView *>();
    const QRect cell = grid->cellRect(grid->currentRow(), grid->visibleColumns().front());
    ASSERT_FALSE(cell.isEmpty());
    QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, cell.center() + QPoint(0, cell.height()));
    EXPECT_EQ(shownCode(), "AP010");
    EXPECT_EQ(clicked(valueAt(graph().places().asks[0].price)), "1128 0 0 12.5100");
    QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, cell.center() - QPoint(0, cell.height()));
    EXPECT_EQ(shownCode(), "600000.SH") << "the mouse leads it as the keys do";
    EXPECT_EQ(clicked(valueAt(graph().places().asks[0].price)), "1128 0 0 10.5100");

    EXPECT_TRUE(page().setCurrentCode(QStringLiteral("600000.SH")));
    EXPECT_EQ(table.currentData()->key(), "600000.SH") << "the quote list goes along";
    EXPECT_FALSE(page().setCurrentCode(QStringLiteral("999999.SH")));
    EXPECT_EQ(shownCode(), "600000.SH");
}

TEST_F(TradePageTest, ANewQuoteOfTheShownInstrumentOnlyChangesTheLadder)
{
    tellAll();
    tell(quoteOf(1, 20));
    EXPECT_EQ(clicked(valueAt(graph().places().latest)), "1128 0 0 10.5000");
    tell(quoteOf(0, 10.2));
    EXPECT_EQ(clicked(valueAt(graph().places().latest)), "1128 0 0 10.2000");
    EXPECT_EQ(page().currentQuote()->last, 10.2);
    feed::QuoteSnapshot stray = quoteOf(7, 1);
    page().takeQuote(stray);
    stray.instrument = -1;
    page().takeQuote(stray);
    EXPECT_EQ(shownCode(), "600000.SH");

    page().setCurrentCode(QStringLiteral("000001.SZ"));
    EXPECT_EQ(clicked(valueAt(graph().places().bids[1].volume)), "1129 0 0 2000.0000")
        << "what came while it was hidden";
}

TEST_F(TradePageTest, EveryKindOfClickInTheLadderIsTold)
{
    tellAll();
    page().ladder().setLayoutKind(KV::QuoteLevel2Vertical);
    const KV::QuotesLayout places = graph().places();
    EXPECT_EQ(clicked(valueAt(places.bids[0].price)), "1128 0 0 10.5000");
    EXPECT_EQ(clicked(valueAt(places.bids[4].volume)), "1129 0 0 5000.0000");
    EXPECT_EQ(clicked(places.priceTypes[0].rect.center()), "1127 0 " + std::to_string(places.priceTypes[0].type) + " ");
    EXPECT_EQ(clicked(places.cancelSell.center()), "1243 0 49 600000.SH");
    EXPECT_EQ(clicked(places.latestCaption), "");
}

TEST_F(TradePageTest, TheLayoutIsChosenByButtonAndByKeyAndFuturesHaveTheOrdinaryOne)
{
    tellAll();
    LadderPanel &ladder = page().ladder();
    const int narrow = ladder.width();
    buttonOf(ladder, QStringLiteral("横排"))->click();
    EXPECT_EQ(ladder.layoutKind(), KV::QuoteLevel2Horizontal);
    EXPECT_EQ(ladder.ladder().getQuoteType(), KV::QuoteLevel2Horizontal);
    EXPECT_EQ(ladder.width(), 2 * narrow);
    page().toggleLayout();
    EXPECT_EQ(ladder.layoutKind(), KV::QuoteNormal) << "the last one is followed by the first one";
    EXPECT_EQ(ladder.width(), narrow);
    page().toggleLayout();
    EXPECT_EQ(ladder.layoutKind(), KV::QuoteLevel2Vertical);
    EXPECT_TRUE(buttonOf(ladder, QStringLiteral("竖排"))->isChecked());
    page().saveState();

    page().setCurrentCode(QStringLiteral("AP010"));
    EXPECT_FALSE(buttonOf(ladder, QStringLiteral("竖排"))->isEnabled());
    EXPECT_TRUE(graph().places().priceTypes.empty());
    page().setCurrentCode(QStringLiteral("000001.SZ"));
    EXPECT_EQ(graph().places().priceTypes.size(), 3u);

    ladder.setLayoutKind(KV::QuoteNormal);
    page().loadState();
    EXPECT_EQ(ladder.layoutKind(), KV::QuoteLevel2Vertical);
}

TEST_F(TradePageTest, ALadderThatIsTooHighScrollsBesideItsBar)
{
    tellAll();
    page().ladder().setLayoutKind(KV::QuoteLevel2Vertical);
    const int width = page().ladder().width();
    window->resize(1400, 420);
    EXPECT_GT(page().ladder().width(), width);
    window->resize(1400, 800);
    EXPECT_EQ(page().ladder().width(), width);
    refhost::ThemeService::instance().setScale(1.5);
    EXPECT_EQ(page().ladder().ladder().width(), width * 3 / 2);
}

TEST_F(TradePageTest, TheRoomBelowTheLadderFollowsTheTheme)
{
    tellAll();
    const auto below = [&] {
        const QImage picture = page().ladder().grab().toImage();
        return picture.pixelColor(picture.width() / 2, picture.height() - 3).name().toStdString();
    };
    const auto background = [] { return WindowLook::fromResources().background.name().toStdString(); };
    EXPECT_EQ(below(), background());
    refhost::ThemeService::instance().setTheme(QStringLiteral("light"));
    const std::string light = background();
    EXPECT_EQ(below(), light);
    refhost::ThemeService::instance().setTheme(QStringLiteral("dark"));
    EXPECT_NE(background(), light);
    EXPECT_EQ(below(), background());
}

TEST_F(TradePageTest, AddedPanelsGetTheirRoomAndThereIsNoneWithoutThem)
{
    tellAll();
    Panel *first = &window->ticketPanel();
    EXPECT_EQ(first->mapTo(&page(), first->rect().bottomRight()), page().rect().bottomRight());
    EXPECT_EQ(page().quoteList().height(), page().height());
    EXPECT_EQ(page().panels(), (std::vector<Panel *>{&page().quoteList(), &page().ladder(), first}));

    auto *ticket = new SidePanel(QStringLiteral("快捷委托"));
    ticket->setFixedWidth(first->width());
    auto *orders = new SidePanel(QStringLiteral("当日委托"));
    auto *deals = new SidePanel(QStringLiteral("当日成交"));
    page().addSidePanel(ticket);
    page().addBottomPanel(orders, QStringLiteral("委托"));
    page().addBottomPanel(deals, QStringLiteral("成交"));
    QApplication::processEvents();
    EXPECT_EQ(ticket->mapTo(&page(), ticket->rect().bottomRight()), page().rect().bottomRight());
    EXPECT_LT(page().quoteList().height(), page().height() * 2 / 3);
    EXPECT_EQ(orders->mapTo(&page(), orders->rect().bottomLeft()), page().rect().bottomLeft());
    EXPECT_TRUE(orders->isVisible());
    EXPECT_EQ(page().panels(), (std::vector<Panel *>{&page().quoteList(), &page().ladder(), first, ticket, orders}));

    buttonOf(*orders, QStringLiteral("成交"))->click();
    EXPECT_TRUE(deals->isVisible());
    EXPECT_EQ(page().bottomPanels().currentPanel(), deals);
    EXPECT_TRUE(deals->isAncestorOf(QApplication::focusWidget()));
    EXPECT_TRUE(buttonOf(*deals, QStringLiteral("成交"))->isChecked());
    EXPECT_FALSE(buttonOf(*deals, QStringLiteral("委托"))->isChecked());
    page().focusNextPanel();
    EXPECT_TRUE(page().quoteList().isAncestorOf(QApplication::focusWidget()));
}

TEST_F(TradePageTest, SilenceIsToldOnlyWhileQuotesAreExpected)
{
    tellAll();
    KV::CQuotesPricesList &ladder = page().ladder().ladder();
    ladder.setSilenceLimit(1);
    QTest::qWait(5);
    EXPECT_TRUE(graph().isStale());
    feed::QuoteSnapshot quote = quoteOf(0, 10.5);
    quote.phase = feed::TradingPhase::LunchBreak;
    tell(quote);
    page().refresh();
    QTest::qWait(5);
    EXPECT_FALSE(graph().isStale());
}

TEST_F(TradePageTest, AStoredQuoteIsAsOldAsItIsWhenItsStockIsChosen)
{
    tellAll();
    KV::CQuotesPricesList &ladder = page().ladder().ladder();
    QTest::qWait(1100);
    tell(quoteOf(0, 10.6));
    page().setCurrentCode(QStringLiteral("000001.SZ"));
    ladder.setFeedCut(true);
    EXPECT_TRUE(graph().ageText().startsWith(QStringLiteral("行情中断 "))) << graph().ageText().toStdString();
    EXPECT_NE(graph().ageText().toStdString(), "行情中断 0秒");
    ladder.setFeedCut(false);
    ladder.setSilenceLimit(1000);
    EXPECT_TRUE(graph().isStale());
    tell(quoteOf(1, 11.6));
    EXPECT_FALSE(graph().isStale()) << "a new quote is new";
}

TEST_F(TradePageTest, ASimulatedMarketFillsThePage)
{
    pump->start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return pump->counters().quotes > 200; }, 30000));
    pump->stop();
    window->showNow();
    EXPECT_GT(page().quoteList().shownCount(), 1);
    ASSERT_NE(page().currentQuote(), nullptr);
    const auto row = page().quoteList().table().currentData();
    ASSERT_TRUE(row);
    EXPECT_EQ(row->key(), page().currentCode().toStdString()) << "its row came after the ladder had it";
    const double last = page().currentQuote()->last;
    EXPECT_EQ(clicked(valueAt(graph().places().latest)),
              QStringLiteral("1128 0 0 %1").arg(last, 0, 'f', 4).toStdString());
}
