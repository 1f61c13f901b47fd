#include <QtGui/QPainter>
#include <QtTest/QTest>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "theme/themeservice.h"
#include "uicontrol/ladderwindow.h"
#include "zb/cuiresource.h"

using namespace KV;

namespace {

constexpr double noPrice = std::numeric_limits<double>::max();

QColor color(const char *key)
{
    return *ZB::CUiResource::instance()->getColor(QLatin1String(key));
}

/// A colour with opacity laid over an opaque one, as a painter does it.
QRgb over(const QColor &top, const QColor &bottom)
{
    QImage image(1, 1, QImage::Format_RGB32);
    image.fill(bottom);
    QPainter(&image).fillRect(0, 0, 1, 1, top);
    return image.pixel(0, 0);
}

/// Whether a picture has a pixel of this colour inside a rectangle.
bool has(const QImage &image, const QRect &rect, QRgb wanted)
{
    const QRect inside = rect & image.rect();
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        for (int x = inside.left(); x <= inside.right(); ++x)
            if (image.pixel(x, y) == wanted)
                return true;
    return false;
}

/// How much ink of any kind a rectangle holds that is not its ground.
int ink(const QImage &image, const QRect &rect, QRgb ground)
{
    int count = 0;
    const QRect inside = rect & image.rect();
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        for (int x = inside.left(); x <= inside.right(); ++x)
            count += image.pixel(x, y) != ground;
    return count;
}

QRect placeOf(const QuoteValuePlace &place)
{
    return QRect(place.right - place.room, place.rowTop + 4, place.room, place.pitch);
}

} // namespace

TEST(LadderPainting, FillsItsAreasInTheColoursOfTheTheme)
{
    LadderWindow window;
    window.give(plainQuote());
    const QImage image = window.picture();
    const QuotesLayout places = window.places();
    EXPECT_EQ(QColor(image.pixel(0, 0)).name(), color("clr_quote_border_line").name());
    EXPECT_EQ(QColor(image.pixel(199, 100)).name(), color("clr_quote_border_line").name());
    for (const QLine &line : places.lines)
        EXPECT_EQ(QColor(image.pixel(100, line.y1())).name(), color("clr_quote_border_line").name());
    EXPECT_EQ(QColor(image.pixel(3, 3)).name(), color("clr_quote_ask_backgroud").name());
    EXPECT_EQ(QColor(image.pixel(3, places.middleBand.top())).name(), color("clr_quote_lastprice_backgroud").name());
    EXPECT_EQ(QColor(image.pixel(3, places.bidArea.bottom())).name(), color("clr_quote_bid_backgroud").name());
    EXPECT_EQ(QColor(image.pixel(3, places.asks[0].band.top())).name(), color("clr_quote_one_ask_background").name());
    EXPECT_EQ(QColor(image.pixel(3, places.bids[0].band.top())).name(), color("clr_quote_one_bid_background").name());
    EXPECT_EQ(QColor(image.pixel(3, places.bids[1].band.top())).name(), color("clr_quote_bid_backgroud").name());
    EXPECT_EQ(QColor(image.pixel(3, image.height() - 3)).name(), color("clr_bidoffer_price_background").name());
}

TEST(LadderPainting, DrawsBarsOfTheSidesColourAsLongAsTheirVolumes)
{
    for (const EQuoteType layout : {QuoteNormal, QuoteLevel2Vertical, QuoteLevel2Horizontal}) {
        LadderWindow window(layout);
        quoter::QuoterAllData quote = plainQuote();
        quote.askVolumes = {100, 250, 2147483647, 50, 0};
        window.give(quote);
        const QImage image = window.picture();
        const QuotesLayout places = window.places();
        const QRgb bar = over(color("clr_table_item_bg_fall"), color("clr_quote_ask_backgroud"));
        const int y = places.asks[1].band.top();
        const auto length = [&](const QuoteRowPlace &row) {
            int count = 0;
            for (int x = row.band.left(); x <= row.band.right(); ++x)
                count += image.pixel(x, row.band.top()) == bar;
            return count;
        };
        EXPECT_EQ(length(places.asks[1]), 80) << y;
        EXPECT_EQ(length(places.asks[2]), 0) << "no volume, and none that counts for the largest";
        EXPECT_EQ(length(places.asks[3]), 16);
        EXPECT_EQ(length(places.asks[4]), 0);
    }
}

TEST(LadderPainting, ColoursPricesAgainstThePreviousCloseAndTheLatestByItsChange)
{
    struct Case
    {
        double latest;
        double previousClose;
        const char *latestKey;
        const char *askKey;
    };
    const Case cases[] = {{10.05, 10.00, "clr_global_rise", "clr_global_rise"},
                          {10.05, 10.50, "clr_global_fall", "clr_global_fall"},
                          {10.06, 10.06, "clr_table_text_default", "clr_global_equal"},
                          {10.060000000000002, 10.06, "clr_table_text_default", "clr_global_equal"},
                          {10.05, noPrice, "clr_table_text_default", "clr_global_equal"}};
    LadderWindow window;
    for (const Case &each : cases) {
        SCOPED_TRACE(QStringLiteral("%1 %2").arg(each.latest).arg(each.previousClose).toStdString());
        quoter::QuoterAllData quote = plainQuote();
        quote.latestPrice = each.latest;
        quote.previousClose = each.previousClose;
        window.give(quote);
        const QImage image = window.picture();
        const QuotesLayout places = window.places();
        for (const char *key : {"clr_global_rise", "clr_global_fall", "clr_global_equal", "clr_table_text_default"}) {
            EXPECT_EQ(has(image, placeOf(places.latest), color(key).rgb()), qstrcmp(key, each.latestKey) == 0) << key;
            EXPECT_EQ(has(image, placeOf(places.asks[0].price), color(key).rgb()), qstrcmp(key, each.askKey) == 0)
                << key;
        }
    }
}

TEST(LadderPainting, CaptionsOfDeeperLevelsFadeForFuturesOnly)
{
    const auto strongest = [](LadderWindow &window) {
        QString all;
        const QImage image = window.picture();
        for (const QuoteRowPlace &row : window.places().bids) {
            const QRect caption(row.caption.x(), row.band.top(), 12, row.band.height());
            const int ground = qGray(image.pixel(row.caption.x() - 2, row.band.center().y()));
            int most = 0;
            for (int y = caption.top(); y <= caption.bottom(); ++y)
                for (int x = caption.left(); x <= caption.right(); ++x)
                    most = std::max(most, std::abs(qGray(image.pixel(x, y)) - ground));
            all += QString::number(most) + QLatin1Char(' ');
        }
        return all.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    };
    LadderWindow stock(QuoteNormal, kdservice::TraderStock);
    stock.give(plainQuote());
    const QStringList even = strongest(stock);
    LadderWindow future(QuoteNormal, kdservice::TraderFuture);
    future.give(plainQuote());
    const QStringList fading = strongest(future);
    for (int i = 1; i < 5; ++i) {
        EXPECT_NEAR(even[i].toInt(), even[1].toInt(), 12);
        EXPECT_LT(fading[i].toInt(), fading[i - 1].toInt());
    }
    // 255, 153, 91, 54, 32 of 255.
    EXPECT_NEAR(fading[2].toInt(), even[2].toInt() * 91 / 255, 8);
    EXPECT_NEAR(fading[4].toInt(), even[4].toInt() * 32 / 255, 8);
}

TEST(LadderPainting, ShowsADashForWhatIsMissing)
{
    LadderWindow window;
    quoter::QuoterAllData quote = plainQuote();
    quote.askPrices[1] = 0;
    quote.askVolumes[1] = 0;
    quote.askPrices[2] = noPrice;
    quote.askVolumes[2] = std::numeric_limits<qint64>::max();
    quote.askVolumes[3] = 2147483647;
    window.give(quote);
    const QImage image = window.picture();
    const QuotesLayout places = window.places();
    const QRgb ground = color("clr_quote_ask_backgroud").rgb();
    const auto inkOf = [&](const QuoteValuePlace &place) {
        return ink(image, QRect(place.right - place.room, place.rowTop + 5, place.room, place.pitch - 2), ground);
    };
    const int dash = inkOf(places.asks[1].price);
    EXPECT_GT(dash, 0);
    EXPECT_EQ(inkOf(places.asks[2].price), dash);
    EXPECT_EQ(inkOf(places.asks[1].volume), dash);
    EXPECT_EQ(inkOf(places.asks[2].volume), dash);
    EXPECT_EQ(inkOf(places.asks[3].volume), dash);
    EXPECT_GT(inkOf(places.asks[3].price), 4 * dash);
}

TEST(LadderPainting, OneLevelForCreditAndStockOptionAccountsAndAPlaceholderWithoutAnyQuote)
{
    const auto rowsWithInk = [](LadderWindow &window) {
        std::string rows;
        const QImage image = window.picture();
        const QuotesLayout places = window.places();
        for (const auto *side : {&places.asks, &places.bids})
            for (const QuoteRowPlace &row : *side) {
                const QRgb ground = image.pixel(row.caption.x() - 2, row.band.center().y());
                rows += ink(image, QRect(row.caption.x(), row.band.top() + 1, 30, 21), ground) > 0 ? '#' : '.';
            }
        return rows;
    };
    for (const auto trader : {kdservice::TraderCredit, kdservice::TraderStockOption}) {
        LadderWindow window(QuoteNormal, trader);
        window.give(plainQuote());
        EXPECT_EQ(rowsWithInk(window), "#....#....");
    }
    LadderWindow window;
    EXPECT_EQ(rowsWithInk(window), "#....#....") << "the placeholders before the first quote";
    window.giveNothing();
    window.settle();
    EXPECT_EQ(rowsWithInk(window), "##########") << "levels without values";
    window.give(plainQuote());
    EXPECT_EQ(rowsWithInk(window), "##########");
}

TEST(LadderPainting, IsTheSameForTheSameCodeAndEmptyForAnother)
{
    LadderWindow window;
    const QImage empty = window.picture();
    window.give(plainQuote());
    const QImage full = window.picture();
    window.list->setStockCode(QStringLiteral("600519.SH"));
    EXPECT_EQ(window.picture(), full);
    window.list->setStockCode(QStringLiteral("000001.SZ"));
    EXPECT_EQ(window.picture(), empty);
}

TEST(LadderPainting, AQuietOrCutFeedTurnsPricesGreyAndSaysHowOldTheyAre)
{
    for (const EQuoteType layout : {QuoteNormal, QuoteLevel2Vertical, QuoteLevel2Horizontal}) {
        LadderWindow window(layout);
        window.give(plainQuote());
        const QImage fresh = window.picture();
        const QRect age = window.places().age;
        const QRgb rise = color("clr_global_rise").rgb();
        const QRgb warning = color("clr_text_error").rgb();
        ASSERT_TRUE(has(fresh, placeOf(window.places().asks[0].price), rise));
        window.list->setFeedCut(true);
        window.settle();
        const QImage cut = window.picture();
        EXPECT_FALSE(has(cut, placeOf(window.places().asks[0].price), rise));
        EXPECT_TRUE(has(cut, placeOf(window.places().asks[0].price), color("clr_table_text_second").rgb()));
        EXPECT_TRUE(has(cut, age, warning));
        const QRect bar = window.places().bids[1].bar(900, 1000);
        const QColor ground = color("clr_quote_bid_backgroud");
        EXPECT_EQ(cut.pixel(bar.topLeft()), over(color("clr_table_item_bg_stale"), ground));
        EXPECT_EQ(fresh.pixel(bar.topLeft()), over(color("clr_table_item_bg_rise"), ground));
        window.list->setFeedCut(false);
        window.settle();
        EXPECT_EQ(window.picture(), fresh);

        window.list->setSilenceLimit(1);
        QTRY_VERIFY_WITH_TIMEOUT(has(window.picture(), age, warning), 3000);
        EXPECT_TRUE(window.graph->isStale());
        window.list->setSilenceLimit(60000);
        window.settle();
        EXPECT_EQ(window.picture(), fresh);
    }
}

TEST(LadderPainting, FollowsTheThemeAndTheColoursOfDirection)
{
    refhost::ThemeService &themes = refhost::ThemeService::instance();
    LadderWindow window;
    window.give(plainQuote());
    const QRgb redRise = color("clr_global_rise").rgb();
    themes.setRiseFall(refhost::RiseFall::GreenUp);
    const QRgb greenRise = color("clr_global_rise").rgb();
    EXPECT_TRUE(has(window.picture(), placeOf(window.places().asks[0].price), greenRise));
    EXPECT_FALSE(has(window.picture(), placeOf(window.places().asks[0].price), redRise));
    themes.setRiseFall(refhost::RiseFall::RedUp);
    themes.setTheme(QStringLiteral("light"));
    EXPECT_EQ(window.picture().pixel(3, window.graph->height() - 3), color("clr_bidoffer_price_background").rgb());
    themes.setTheme(QStringLiteral("dark"));
}
