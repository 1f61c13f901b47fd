#include <QtGui/QFontMetrics>
#include <gtest/gtest.h>

#include <string>

#include "order/cquoteshorizontallayout.h"
#include "order/cquotesnormallayout.h"
#include "order/cquotesverticallayout.h"
#include "theme/themeservice.h"
#include "uicontrol/ladderwindow.h"
#include "zb/cuiresource.h"

using namespace KV;

namespace {

const QuotesMetrics metrics{18, 12, QSize(12, 12)};

std::string text(const QRect &rect)
{
    return QStringLiteral("%1,%2 %3x%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height()).toStdString();
}

std::string lines(const QuotesLayout &layout)
{
    QStringList all;
    for (const QLine &line : layout.lines)
        all << QString::number(line.y1());
    return all.join(QLatin1Char(' ')).toStdString();
}

std::string row(const QuoteRowPlace &place)
{
    return text(place.band) + " caption " + std::to_string(place.caption.x()) + "," +
           std::to_string(place.caption.y()) + " digit " + text(QRect(place.digit, QSize(12, 12))) + " price " +
           text(place.price.area(40)) + " volume " + text(place.volume.area(30)) + " bar " + text(place.bar(5, 10));
}

/// All rectangles in which a layout puts something of its own; none may lie on another.
std::vector<QRect> pieces(const QuotesLayout &layout)
{
    std::vector<QRect> all{layout.middleBand, layout.cancelBuy, layout.cancelSell};
    for (const auto &side : {layout.asks, layout.bids})
        for (const QuoteRowPlace &place : side)
            all.push_back(place.band);
    for (const QuotePriceTypePlace &place : layout.priceTypes)
        all.push_back(place.rect);
    return all;
}

QRect roomOf(const QuoteValuePlace &place)
{
    return {place.right - place.room, place.rowTop + ZB::scaled(QuotesLayout::rowLead), place.room, place.pitch};
}

/// The room of every text: none may be written over another.
std::vector<QRect> texts(const QuotesLayout &layout, const QuotesMetrics &letters)
{
    // What says how old a quote is takes the place of the balance.
    std::vector<QRect> all{roomOf(layout.latest), roomOf(layout.change),
                           layout.priceTypes.empty() ? layout.age : layout.balanceText};
    const auto addCaption = [&](const QPoint &at, int characters, const QRect &row) {
        all.emplace_back(at.x(), row.top(), characters * letters.captionWidth, row.height());
    };
    addCaption(layout.latestCaption, 2, roomOf(layout.latest));
    for (const auto &side : {layout.asks, layout.bids})
        for (const QuoteRowPlace &place : side) {
            addCaption(place.caption, 1, place.band);
            all.emplace_back(place.digit, letters.digit);
            all.push_back(roomOf(place.price));
            all.push_back(roomOf(place.volume));
            if (!place.cancel.isEmpty())
                all.push_back(place.cancel);
        }
    for (const QuoteSummaryPlace &place : layout.summary) {
        addCaption(place.caption, 2, roomOf(place.value));
        all.push_back(roomOf(place.value));
    }
    if (layout.priceTypes.empty())
        return all;
    all.insert(all.end(), {roomOf(layout.percent), layout.balanceBar, layout.cancelBuy, layout.cancelSell});
    for (const QuotePriceTypePlace &place : layout.priceTypes)
        all.push_back(place.rect);
    return all;
}

void expectApart(const std::vector<QRect> &rects, const QRect &frame)
{
    for (std::size_t i = 0; i < rects.size(); ++i) {
        EXPECT_TRUE(frame.contains(rects[i])) << text(rects[i]) << " in " << text(frame);
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_FALSE(rects[i].intersects(rects[j])) << text(rects[i]) << " and " << text(rects[j]);
    }
}

} // namespace

TEST(QuotesNormalLayout, PutsTheBlockInTheMiddleOfTheHeight)
{
    const CQuotesNormalLayout layout(QSize(200, 350), metrics, false);
    // Pitch 23; block (18 + 115) x 2 + 28 = 294; top (350 - 294) / 2 = 28; asks end at 143.
    EXPECT_EQ(lines(layout), "0 147 173 296");
    EXPECT_EQ(text(layout.askArea), "1,1 198x146");
    EXPECT_EQ(text(layout.middleBand), "1,148 198x24");
    EXPECT_EQ(text(layout.bidArea), "1,174 198x122");
    EXPECT_EQ(layout.latestCaption, QPoint(8, 168));
    EXPECT_EQ(layout.latest.right, 103);
    EXPECT_EQ(layout.change.right, 183);
    EXPECT_EQ(row(layout.asks[0]), "1,124 198x23 caption 8,141 digit 24,131 12x12 price 63,123 51x23 "
                                   "volume 153,123 41x23 bar 146,124 40x22");
    EXPECT_EQ(row(layout.asks[4]), "1,32 198x23 caption 8,49 digit 24,39 12x12 price 63,31 51x23 "
                                   "volume 153,31 41x23 bar 146,32 40x22");
    EXPECT_EQ(row(layout.bids[0]), "1,174 198x23 caption 8,191 digit 24,181 12x12 price 63,173 51x23 "
                                   "volume 153,173 41x23 bar 146,174 40x22");
    EXPECT_EQ(text(layout.summary[0].value.area(40)), "58,296 51x23");
    EXPECT_EQ(text(layout.summary[3].value.area(40)), "138,319 51x23");
    expectApart({layout.askArea, layout.middleBand, layout.bidArea}, layout.frame);
}

TEST(QuotesNormalLayout, RoomForTheCancelRowShiftsTheBlockUpByHalfOfIt)
{
    const CQuotesNormalLayout without(QSize(200, 350), metrics, false);
    const CQuotesNormalLayout with(QSize(200, 350), metrics, true);
    EXPECT_EQ(with.lines[1].y1(), (350 - 15 - 294) / 2 + 5 * 23 + 4);
    EXPECT_EQ(without.lines[1].y1() - with.lines[1].y1(), 8);
}

TEST(QuotesNormalLayout, ScalesItsLengthsAndKeepsItsLinesThin)
{
    refhost::ThemeService::instance().setScale(2.0);
    const CQuotesNormalLayout layout(QSize(400, 700), QuotesMetrics{36, 24, QSize(24, 24)}, false);
    EXPECT_EQ(lines(layout), "0 294 346 592");
    EXPECT_EQ(row(layout.asks[0]), "1,248 398x46 caption 16,282 digit 48,262 12x12 price 166,246 62x46 "
                                   "volume 336,246 52x46 bar 292,248 80x45");
    refhost::ThemeService::instance().setScale(1.0);
}

TEST(QuoteRowPlace, BarsGrowWithTheVolumeAndNeverBeyondTheirLength)
{
    const CQuotesNormalLayout layout(QSize(200, 350), metrics, false);
    const QuoteRowPlace &place = layout.asks[0];
    EXPECT_EQ(text(place.bar(10, 10)), "106,124 80x22");
    EXPECT_EQ(text(place.bar(1, 3)), "160,124 26x22") << "rounded down";
    EXPECT_EQ(text(place.bar(2147483646, 2147483646)), "106,124 80x22") << "no overflow";
    for (const QRect &none : {place.bar(0, 10), place.bar(5, 0), place.bar(-5, 10), place.bar(5, -1)})
        EXPECT_TRUE(none.isEmpty());
}

TEST(QuotesLevel2Layouts, KeepTheirPartsApartAndInsideAtTheSizesOfTheThemeWithLettersOfAnyFamily)
{
    for (const int lineHeight : {16, 18, 20, 21})
        for (const bool cancel : {false, true}) {
            SCOPED_TRACE(std::to_string(lineHeight) + (cancel ? " with cancel marks" : ""));
            const QuotesMetrics letters{lineHeight, 12, QSize(12, 12)};
            const CQuotesVerticalLayout vertical(QSize(200, cancel ? 445 : 430), letters, cancel);
            const CQuotesHorizontalLayout horizontal(QSize(400, cancel ? 255 : 240), letters, cancel);
            for (const QuotesLayout &layout : {QuotesLayout(vertical), QuotesLayout(horizontal)}) {
                std::vector<QRect> all = pieces(layout);
                const bool twoRows = layout.summary[0].value.rowTop != layout.summary[2].value.rowTop;
                for (const std::size_t i : {0, 2}) {
                    const QuoteValuePlace &place = layout.summary[i].value;
                    if (i == 0 || twoRows)
                        all.emplace_back(layout.summary[i].caption.x(), place.rowTop + QuotesLayout::rowLead, 100,
                                         place.pitch);
                }
                expectApart(all, layout.frame);
                EXPECT_GE(layout.bids[0].band.height(), lineHeight);
                for (const QuoteRowPlace &place : layout.asks)
                    EXPECT_EQ(place.cancel.isEmpty(), !cancel);
            }
        }
}

TEST(QuotesLayouts, GiveEveryTextRoomOfItsOwnAtEveryScaleOfTheTheme)
{
    refhost::ThemeService &themes = refhost::ThemeService::instance();
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 2.5, 3.0}) {
        themes.setScale(scale);
        const QFontMetrics names(*ZB::CUiResource::instance()->getFont(QStringLiteral("fnt_quote_list_name")));
        const QuotesMetrics letters{names.height(), names.horizontalAdvance(QStringLiteral("卖")),
                                    QSize(ZB::scaled(12), ZB::scaled(12))};
        for (const EQuoteType kind : {QuoteNormal, QuoteLevel2Vertical, QuoteLevel2Horizontal})
            for (const bool cancel : {false, true}) {
                SCOPED_TRACE(
                    QStringLiteral("layout %1 at %2, marks %3").arg(kind).arg(scale).arg(cancel).toStdString());
                LadderWindow window(kind);
                window.list->setShowCancelOrder(cancel);
                window.settle();
                expectApart(texts(window.places(), letters), window.graph->rect());
            }
    }
    themes.setScale(1);
}

TEST(QuotesLevel2Layouts, PutBestPricesNextToEachOther)
{
    const CQuotesVerticalLayout vertical(QSize(200, 430), metrics, false);
    EXPECT_EQ(vertical.asks[0].band.bottom() + 1, vertical.lines[1].y1());
    EXPECT_EQ(vertical.bids[0].band.top() - 1, vertical.lines[2].y1());
    EXPECT_LT(vertical.asks[4].band.top(), vertical.asks[0].band.top());
    const CQuotesHorizontalLayout horizontal(QSize(400, 240), metrics, false);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(horizontal.bids[i].band.top(), horizontal.asks[i].band.top());
        EXPECT_LT(horizontal.bids[i].price.right, 200);
        EXPECT_GT(horizontal.asks[i].price.right - horizontal.asks[i].price.room, 200);
    }
    EXPECT_TRUE(horizontal.asks[0].barGrowsRight);
}

TEST(QuotesLevel2Layouts, UprightAllPricesEndInOneColumn)
{
    for (const bool cancel : {false, true}) {
        const CQuotesVerticalLayout layout(QSize(200, 445), metrics, cancel);
        for (std::size_t i = 0; i < 5; ++i) {
            EXPECT_EQ(layout.asks[i].price.right, layout.latest.right);
            EXPECT_EQ(layout.bids[i].price.right, layout.latest.right);
        }
    }
}

TEST(QuotesLayouts, AreSafeInWidgetsOfNoSize)
{
    for (const QSize size : {QSize(0, 0), QSize(1, 1), QSize(200, 1), QSize(1, 400)})
        for (const bool cancel : {false, true}) {
            const QuotesLayout all[] = {CQuotesNormalLayout(size, metrics, cancel),
                                        CQuotesVerticalLayout(size, metrics, cancel),
                                        CQuotesHorizontalLayout(size, metrics, cancel)};
            for (const QuotesLayout &layout : all)
                for (std::size_t i = 1; i < 5; ++i)
                    EXPECT_FALSE(layout.asks[i].band.intersects(layout.asks[i - 1].band));
        }
}
