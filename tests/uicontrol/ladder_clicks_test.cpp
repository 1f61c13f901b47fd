#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtGui/QFocusEvent>
#include <QtTest/QTest>
#include <gtest/gtest.h>
#include <limits>

#include "uicontrol/ladderwindow.h"
#include "zb/cuiresource.h"

using namespace KV;

namespace {

QPoint on(const QuoteValuePlace &place)
{
    return {place.right - place.lead - 4, place.rowTop + place.pitch / 2 + 3};
}

struct Kind
{
    EQuoteType layout;
    kdservice::EVxTraderType trader;
};

const Kind kinds[] = {{QuoteNormal, kdservice::TraderStock},           {QuoteNormal, kdservice::TraderFuture},
                      {QuoteNormal, kdservice::TraderCredit},          {QuoteNormal, kdservice::TraderStockOption},
                      {QuoteLevel2Vertical, kdservice::TraderStock},   {QuoteLevel2Vertical, kdservice::TraderOption},
                      {QuoteLevel2Horizontal, kdservice::TraderStock}, {QuoteLevel2Horizontal, kdservice::TraderOption},
                      {QuoteLevel2Vertical, kdservice::TraderFuture}};

} // namespace

TEST(LadderClicks, OnPricesAndVolumesTellTheirValuesInEveryLayoutForEveryTrader)
{
    for (const Kind &kind : kinds) {
        SCOPED_TRACE(QStringLiteral("layout %1 trader %2").arg(kind.layout).arg(kind.trader).toStdString());
        LadderWindow window(kind.layout, kind.trader);
        window.give(plainQuote());
        const QuotesLayout places = window.places();
        window.click(on(places.asks[0].price));
        EXPECT_EQ(window.takeEvents().toStdString(), "1128 0 0 10.0600");
        window.click(on(places.bids[0].price));
        EXPECT_EQ(window.takeEvents().toStdString(), "1128 0 0 10.0500");
        window.click(on(places.asks[0].volume));
        EXPECT_EQ(window.takeEvents().toStdString(), "1129 0 0 100.0000");
        window.click(on(places.latest));
        window.click(on(places.summary[1].value));
        window.click(on(places.summary[2].value));
        window.click(on(places.summary[3].value));
        EXPECT_EQ(window.takeEvents().toStdString(),
                  "1128 0 0 10.0500 | 1128 0 0 10.0000 | 1128 0 0 11.0000 | 1128 0 0 9.0000");
        const bool single = kind.trader == kdservice::TraderCredit || kind.trader == kdservice::TraderStockOption;
        window.click(on(places.bids[4].price));
        EXPECT_EQ(window.takeEvents().toStdString(), single ? "" : "1128 0 0 10.0100");
        window.click(on(places.asks[0].price), Qt::RightButton);
        window.click(QPoint(places.asks[0].caption.x(), places.asks[0].band.center().y()));
        EXPECT_EQ(window.takeEvents().toStdString(), "") << "other buttons and captions mean nothing";
    }
}

TEST(LadderClicks, OnPriceTypesAndCancelButtonsTellTheHostInTheLevel2Layouts)
{
    for (const EQuoteType layout : {QuoteLevel2Vertical, QuoteLevel2Horizontal}) {
        LadderWindow window(layout);
        window.give(plainQuote());
        const QuotesLayout places = window.places();
        for (const QuotePriceTypePlace &place : places.priceTypes)
            window.click(place.rect.center());
        EXPECT_EQ(window.takeEvents().toStdString(), "1127 0 1  | 1127 0 3  | 1127 0 2 ");
        window.click(places.cancelBuy.center());
        window.click(places.cancelSell.center());
        EXPECT_EQ(window.takeEvents().toStdString(), "1243 0 48 600519.SH | 1243 0 49 600519.SH");
    }
}

TEST(LadderClicks, OnTheMarksOfLevelsCancelTheOrdersOfTheseLevels)
{
    for (const EQuoteType layout : {QuoteLevel2Vertical, QuoteLevel2Horizontal}) {
        LadderWindow window(layout);
        quoter::QuoterAllData quote = plainQuote();
        quote.bidPrices[3] = 0;
        window.list->setShowCancelOrder(true);
        window.give(quote);
        const QuotesLayout places = window.places();
        window.click(places.asks[1].cancel.center());
        window.click(places.bids[4].cancel.center());
        window.click(places.bids[3].cancel.center());
        EXPECT_EQ(window.takeEvents().toStdString(), "1243 2 49 600519.SH | 1243 5 48 600519.SH");
    }
}

TEST(LadderClicks, OnWhatOverlapsDeliverEachKindOnceInTheirOrder)
{
    QuoteClickAreas areas;
    const QRect rect(0, 0, 10, 10);
    areas.volumes = {{rect, 7}, {rect, 8}};
    areas.prices = {{QRect(5, 0, 10, 10), 1.5}, {rect, 2.5}};
    areas.priceTypes = {{rect, 3}};
    areas.cancels = {{rect, 48, 1}, {rect, 48, 2}};
    areas.cancelButtons = {QuoteClickAreas::Cancel{rect, 48, 0}, QuoteClickAreas::Cancel{QRect(8, 0, 9, 9), 49, 0}};
    const auto levels = [&](const QPoint &point) {
        std::string all;
        for (const QuoteClickAreas::Cancel &cancel : areas.at(point).cancels)
            all += std::to_string(cancel.side) + ":" + std::to_string(cancel.level) + " ";
        return all;
    };
    EXPECT_EQ(areas.at({1, 1}).volume, 7);
    EXPECT_EQ(areas.at({1, 1}).price, 2.5);
    EXPECT_EQ(areas.at({6, 1}).price, 1.5);
    EXPECT_EQ(areas.at({1, 1}).priceType, 3);
    EXPECT_EQ(levels({1, 1}), "48:1 48:0 ");
    EXPECT_EQ(levels({9, 1}), "48:1 48:0 49:0 ");
    EXPECT_FALSE(areas.contains({30, 30}));
    areas.clear();
    EXPECT_FALSE(areas.contains({1, 1}));
}

TEST(LadderClicks, OnALadderTooNarrowForItsPartsTellTheVolumeThenThePriceThenTheCancelling)
{
    LadderWindow window(QuoteLevel2Vertical);
    quoter::QuoterAllData quote = plainQuote();
    quote.askVolumes[2] = -2147483647 - 1;
    window.list->setShowCancelOrder(true);
    window.give(quote);
    window.graph->setFixedSize(112, window.graph->height());
    window.settle();
    const QRect band = window.places().asks[2].band;
    QStringList told;
    for (int x = 0; x < window.graph->width(); ++x) {
        window.click({x, band.center().y()});
        const QString events = window.takeEvents();
        if (!events.isEmpty() && (told.isEmpty() || told.last() != events))
            told << events;
    }
    const QString volume = QStringLiteral("1129 0 0 -2147483648.0000");
    const QString price = QStringLiteral("1128 0 0 10.0800");
    const QString cancel = QStringLiteral("1243 3 49 600519.SH");
    EXPECT_EQ(told.join(QLatin1Char('\n')).toStdString(),
              QStringList({price, price + QStringLiteral(" | ") + cancel,
                           volume + QStringLiteral(" | ") + price + QStringLiteral(" | ") + cancel,
                           volume + QStringLiteral(" | ") + cancel, volume})
                  .join(QLatin1Char('\n'))
                  .toStdString())
        << "from left to right";
}

TEST(LadderClicks, OnAZeroTellTheZeroThatIsShownAsMissingAndNothingWhereThereIsNoValue)
{
    for (const EQuoteType layout : {QuoteNormal, QuoteLevel2Vertical, QuoteLevel2Horizontal}) {
        LadderWindow window(layout);
        quoter::QuoterAllData quote = plainQuote();
        quote.askPrices[2] = 0;
        quote.bidVolumes[1] = 0;
        quote.bidVolumes[2] = 2147483647;
        window.detail->upperLimitPrice = 0;
        window.detail->lowerLimitPrice = std::numeric_limits<double>::max();
        window.give(quote);
        const QuotesLayout places = window.places();
        window.click(on(places.asks[2].price));
        window.click(on(places.bids[1].volume));
        window.click(on(places.bids[2].volume));
        window.click(on(places.summary[2].value));
        window.click(on(places.summary[3].value));
        EXPECT_EQ(window.takeEvents().toStdString(), "1128 0 0 0.0000 | 1129 0 0 0.0000 | 1128 0 0 0.0000")
            << "nothing for what has no value";
        window.giveNothing();
        window.settle();
        for (const QuoteValuePlace &place : {places.asks[0].price, places.asks[0].volume, places.latest,
                                             places.summary[0].value, places.summary[1].value})
            window.click(on(place));
        EXPECT_EQ(window.takeEvents().toStdString(), "") << "the whole quote has gone";
    }
}

TEST(LadderClicks, SurviveAHandlerThatDestroysTheLadder)
{
    class Form : public ZB::CBaseWidget
    {
    public:
        bool handleEvent(int, int, int, QString, void *) override
        {
            delete list;
            return true;
        }
        QPointer<CQuotesPricesList> list;
    };
    Form form;
    form.list = new CQuotesPricesList(OpParamQuotes, &form);
    auto *graph = form.list->findChild<CQuotesGraphWidget *>();
    auto detail = boost::shared_ptr<kdservice::CInstrumentDetail>(new kdservice::CInstrumentDetail);
    form.list->setQuoterAllData(boost::shared_ptr<quoter::QuoterAllData>(new quoter::QuoterAllData(plainQuote())),
                                detail);
    form.show();
    graph->grab();
    const QPoint point = on(graph->places().asks[0].volume);
    QMouseEvent release(QEvent::MouseButtonRelease, point, graph->mapToGlobal(point), Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QApplication::sendEvent(graph, &release);
    EXPECT_TRUE(form.list.isNull());
}

TEST(LadderMouse, ShowsAHandOnEverythingThatAClickTakesAndOnNothingElse)
{
    for (const EQuoteType layout : {QuoteNormal, QuoteLevel2Vertical, QuoteLevel2Horizontal}) {
        SCOPED_TRACE(layout);
        LadderWindow window(layout);
        window.list->setShowCancelOrder(true);
        window.give(plainQuote());
        const QuotesLayout places = window.places();
        std::vector<QPoint> taken{on(places.latest), on(places.asks[4].price), on(places.bids[4].volume)};
        for (const QuoteSummaryPlace &place : places.summary)
            taken.push_back(on(place.value));
        std::vector<QPoint> plain{on(places.change), places.latestCaption, places.bids[1].caption,
                                  places.summary[2].caption};
        if (layout != QuoteNormal) {
            taken.insert(taken.end(), {places.asks[0].cancel.center(), places.bids[4].cancel.center(),
                                       places.cancelBuy.center(), places.cancelSell.center()});
            for (const QuotePriceTypePlace &place : places.priceTypes)
                taken.push_back(place.rect.center());
            plain.insert(plain.end(), {on(places.percent), places.balanceText.center(), places.balanceBar.center()});
        }
        for (std::size_t i = 0; i < std::max(taken.size(), plain.size()); ++i) {
            window.move(taken[i % taken.size()]);
            EXPECT_EQ(window.graph->cursor().shape(), Qt::PointingHandCursor) << i % taken.size();
            window.move(plain[i % plain.size()]);
            EXPECT_EQ(window.graph->cursor().shape(), Qt::ArrowCursor) << i % plain.size();
        }
    }
}

TEST(LadderMouse, AHandGoesWithTheValueUnderItAndComesWithTheNextOne)
{
    LadderWindow window;
    window.give(plainQuote());
    window.move(on(window.places().asks[2].price));
    ASSERT_EQ(window.graph->cursor().shape(), Qt::PointingHandCursor);
    quoter::QuoterAllData quote = plainQuote();
    quote.askPrices[2] = std::numeric_limits<double>::max();
    window.give(quote);
    EXPECT_EQ(window.graph->cursor().shape(), Qt::ArrowCursor);
    window.give(plainQuote());
    EXPECT_EQ(window.graph->cursor().shape(), Qt::PointingHandCursor);
    window.list->setUiEnabled(true, false);
    window.settle();
    EXPECT_EQ(window.graph->cursor().shape(), Qt::ArrowCursor) << "a click would take nothing";
}

TEST(LadderMouse, LightsUpWhatIsUnderItAlsoWhenALadderAppearsOrChangesItsLayoutUnderAPointerThatRests)
{
    const QRgb hover = ZB::CUiResource::instance()->getColor(QStringLiteral("clr_quote_one_stock_price_back"))->rgb();
    LadderWindow window;
    window.give(plainQuote());
    const auto isLit = [&](const QuoteValuePlace &place) {
        return window.picture().pixel(place.right + 9, place.rowTop + 5) == hover;
    };
    window.hide();
    const QPoint resting = on(window.places().asks[1].price);
    QCursor::setPos(window.graph->mapToGlobal(resting));
    window.show();
    window.settle();
    EXPECT_TRUE(isLit(window.places().asks[1].price));
    EXPECT_EQ(window.graph->cursor().shape(), Qt::PointingHandCursor);
    for (const QPoint &elsewhere : {QPoint(3, resting.y()), QPoint(-40, -40)}) {
        window.move(elsewhere);
        EXPECT_FALSE(isLit(window.places().asks[1].price));
        window.move(resting);
        EXPECT_TRUE(isLit(window.places().asks[1].price));
    }

    window.list->setQuoteType(QuoteLevel2Vertical);
    window.settle();
    window.move(on(window.places().bids[0].price));
    window.list->setQuoteType(QuoteNormal);
    window.settle();
    const QPoint point = window.graph->mapFromGlobal(QCursor::pos());
    for (const QuoteRowPlace &row : window.places().bids)
        EXPECT_EQ(isLit(row.price), row.price.area(30).contains(point)) << row.band.top();
}

TEST(LadderMouse, ADoubleClickIsKnownWhileItsVolumeIsDelivered)
{
    class Form : public LadderWindow
    {
    public:
        bool handleEvent(int event, int first, int second, QString text, void *pointer) override
        {
            doubles << graph->isDoubleClick();
            return LadderWindow::handleEvent(event, first, second, text, pointer);
        }
        QList<bool> doubles;
    };
    Form form;
    form.give(plainQuote());
    const QPoint point = on(form.places().bids[0].volume);
    form.click(point);
    QTest::mouseDClick(form.graph, Qt::LeftButton, Qt::NoModifier, point);
    QTest::mouseRelease(form.graph, Qt::LeftButton, Qt::NoModifier, point);
    form.click(point);
    EXPECT_EQ(form.doubles, (QList<bool>{false, true, false}));
}

TEST(LadderKeys, MoveACursorOverTheLevelsAndReturnTakesItsPrice)
{
    LadderWindow window;
    quoter::QuoterAllData quote = plainQuote();
    quote.askPrices[1] = 0;
    window.give(quote);
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.takeEvents().toStdString(), "") << "no cursor yet";
    window.press(Qt::Key_Up);
    window.press(Qt::Key_Return);
    window.press(Qt::Key_Up);
    window.press(Qt::Key_Enter);
    window.press(Qt::Key_Home);
    window.press(Qt::Key_Return);
    window.press(Qt::Key_Up);
    window.press(Qt::Key_Return);
    window.press(Qt::Key_End);
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.takeEvents().toStdString(), "1128 0 0 10.0600 | 1128 0 0 10.0800 | 1128 0 0 10.1000 | "
                                                 "1128 0 0 10.1000 | 1128 0 0 10.0100")
        << "levels without a price are passed over";
    window.press(Qt::Key_Escape);
    window.press(Qt::Key_Return);
    window.press(Qt::Key_Down);
    window.list->setStockCode(QStringLiteral("000001.SZ"));
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.takeEvents().toStdString(), "") << "another stock has no cursor";
}

TEST(LadderKeys, GoFromSideToSideWhereTheyStandSideBySide)
{
    LadderWindow window(QuoteLevel2Horizontal);
    window.give(plainQuote());
    window.press(Qt::Key_Down);
    window.press(Qt::Key_Down);
    window.press(Qt::Key_Return);
    window.press(Qt::Key_Right);
    window.press(Qt::Key_Return);
    window.press(Qt::Key_Up);
    window.press(Qt::Key_Up);
    window.press(Qt::Key_Return);
    window.press(Qt::Key_Left);
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.takeEvents().toStdString(),
              "1128 0 0 10.0400 | 1128 0 0 10.0700 | 1128 0 0 10.0600 | 1128 0 0 10.0500");
}

TEST(LadderKeys, GoOnThroughTheButtonsBelowTheLevels)
{
    const QRgb current = ZB::CUiResource::instance()->getColor(QStringLiteral("clr_table_current_cell"))->rgb();
    for (const EQuoteType layout : {QuoteLevel2Vertical, QuoteLevel2Horizontal}) {
        LadderWindow window(layout);
        window.press(Qt::Key_Down);
        window.press(Qt::Key_Return);
        EXPECT_EQ(window.takeEvents().toStdString(), "1127 0 1 ") << "buttons need no quote";
        window.give(plainQuote());
        window.press(Qt::Key_End);
        const QuotesLayout places = window.places();
        const auto frameOf = [&](const QRect &rect) { return window.picture().pixel(rect.topLeft()); };
        EXPECT_NE(frameOf(places.priceTypes[0].rect), current);
        window.press(Qt::Key_Down);
        EXPECT_EQ(frameOf(places.priceTypes[0].rect), current);
        EXPECT_NE(frameOf(places.priceTypes[1].rect), current);
        window.press(Qt::Key_Return);
        window.press(Qt::Key_Right);
        window.press(Qt::Key_Space);
        window.press(Qt::Key_Right);
        window.press(Qt::Key_Enter);
        EXPECT_EQ(window.takeEvents().toStdString(), "1127 0 1  | 1127 0 3  | 1127 0 2 ");
        window.press(Qt::Key_Down);
        EXPECT_EQ(frameOf(places.cancelBuy), current);
        window.press(Qt::Key_Return);
        for (int i = 0; i < 3; ++i)
            window.press(Qt::Key_Right);
        EXPECT_EQ(frameOf(places.cancelSell), current) << "there is none beyond";
        window.press(Qt::Key_Return);
        window.press(Qt::Key_Left);
        window.press(Qt::Key_Return);
        EXPECT_EQ(window.takeEvents().toStdString(), "1243 0 48 600519.SH | 1243 0 49 600519.SH | 1243 0 48 600519.SH");
        for (int i = 0; i < 4; ++i)
            window.press(Qt::Key_Up);
        window.press(Qt::Key_Return);
        EXPECT_EQ(window.takeEvents().toStdString(), "1128 0 0 10.0100") << "and back to the levels";

        window.press(Qt::Key_Down);
        window.list->setQuoteType(QuoteNormal);
        window.settle();
        window.press(Qt::Key_Return);
        EXPECT_EQ(window.takeEvents().toStdString(), "") << "this layout has no buttons";
        window.press(Qt::Key_Up);
        window.press(Qt::Key_Return);
        EXPECT_EQ(window.takeEvents().toStdString(), "1128 0 0 10.0600");
    }
}

TEST(LadderKeys, TheSpaceBarTakesTheVolumeAndDeleteTheOrdersOfTheLevel)
{
    LadderWindow window(QuoteLevel2Vertical);
    quoter::QuoterAllData quote = plainQuote();
    quote.askVolumes[1] = 2147483647;
    window.give(quote);
    window.press(Qt::Key_Space);
    window.press(Qt::Key_Up);
    window.press(Qt::Key_Delete);
    EXPECT_EQ(window.takeEvents().toStdString(), "") << "nothing before the cursor, no marks that cancel";
    window.press(Qt::Key_Space);
    window.list->setShowCancelOrder(true);
    window.settle();
    window.press(Qt::Key_Delete);
    window.press(Qt::Key_Up);
    window.press(Qt::Key_Space);
    window.press(Qt::Key_Delete);
    window.press(Qt::Key_End);
    window.press(Qt::Key_Delete);
    EXPECT_EQ(window.takeEvents().toStdString(),
              "1129 0 0 100.0000 | 1243 1 49 600519.SH | 1243 2 49 600519.SH | 1243 5 48 600519.SH");
}

TEST(LadderKeys, AFocusThatCameByKeyboardIsFramed)
{
    ZB::CUiResource *resources = ZB::CUiResource::instance();
    const QRgb framed = resources->getColor(QStringLiteral("clr_table_current_cell"))->rgb();
    const QRgb border = resources->getColor(QStringLiteral("clr_quote_border_line"))->rgb();
    LadderWindow window;
    window.give(plainQuote());
    const auto edge = [&] { return window.picture().pixel(0, window.graph->height() / 2); };
    EXPECT_EQ(edge(), border);
    window.graph->clearFocus();
    window.graph->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(edge(), framed);
    window.click({3, 3});
    EXPECT_EQ(edge(), border) << "the mouse goes on";
    window.graph->clearFocus();
    window.graph->setFocus(Qt::BacktabFocusReason);
    EXPECT_EQ(edge(), framed);
    const auto send = [&](QEvent::Type type) {
        QFocusEvent event(type, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(window.graph, &event);
    };
    send(QEvent::FocusOut);
    EXPECT_EQ(edge(), border) << "another window has the keyboard";
    send(QEvent::FocusIn);
    EXPECT_EQ(edge(), framed) << "back where it was";
    window.graph->clearFocus();
    EXPECT_EQ(edge(), border);
}
