#include <QtGui/QFontMetrics>
#include <QtGui/QPainter>
#include <boost/smart_ptr/make_shared.hpp>
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <limits>

#include "theme/themeservice.h"
#include "uicontrol/ladderwindow.h"
#include "zb/cuiresource.h"

using namespace KV;

namespace {

constexpr double noPrice = std::numeric_limits<double>::max();
const EQuoteType layouts[] = {QuoteNormal, QuoteLevel2Vertical, QuoteLevel2Horizontal};

const QColor &color(const char *key)
{
    return *ZB::CUiResource::instance()->getColor(QLatin1String(key));
}

const QFont &nameFont()
{
    return *ZB::CUiResource::instance()->getFont(QStringLiteral("fnt_quote_list_name"));
}

const QFont &numberFont()
{
    return *ZB::CUiResource::instance()->getFont(QStringLiteral("fnt_quote_list_volumn_price"));
}

/// The edges of letters differ by some shades from one picture to the next.
bool isSame(QRgb a, QRgb b)
{
    constexpr int shades = 8;
    return std::abs(qRed(a) - qRed(b)) <= shades && std::abs(qGreen(a) - qGreen(b)) <= shades &&
           std::abs(qBlue(a) - qBlue(b)) <= shades;
}

/// Whether a picture shows within a rectangle what `draw` draws there, on the ground of its first pixel.
bool shows(const QImage &picture, const QRect &within, const std::function<void(QPainter &)> &draw)
{
    QImage expected(within.size(), QImage::Format_RGB32);
    expected.fill(picture.pixel(within.topLeft()));
    QPainter painter(&expected);
    painter.translate(-within.topLeft());
    painter.setRenderHint(QPainter::TextAntialiasing);
    draw(painter);
    painter.end();
    for (int y = 0; y < within.height(); ++y)
        for (int x = 0; x < within.width(); ++x)
            if (!isSame(expected.pixel(x, y), picture.pixel(within.topLeft() + QPoint(x, y))))
                return false;
    return true;
}

/// A word in the name font that starts at a point of its baseline.
bool showsCaption(const QImage &picture, const QPoint &at, const QRect &row, const QString &word)
{
    const QRect within(at.x(), row.top() + 1, QFontMetrics(nameFont()).horizontalAdvance(word), row.height() - 2);
    return shows(picture, within, [&](QPainter &painter) {
        painter.setFont(nameFont());
        painter.setPen(color("clr_table_text_default"));
        painter.drawText(at, word);
    });
}

/// A number that ends at `right`, and nothing else in its room.
bool showsNumber(const QImage &picture, const QuoteValuePlace &place, int right, const QString &text,
                 const char *colorKey)
{
    const QRect within(place.right - place.room, place.rowTop + ZB::scaled(4) + 1, place.room, place.pitch - 2);
    return shows(picture, within, [&](QPainter &painter) {
        painter.setFont(numberFont());
        painter.setPen(color(colorKey));
        painter.drawText(right - QFontMetrics(numberFont()).horizontalAdvance(text), place.baseline, text);
    });
}

bool showsCentred(const QImage &picture, const QRect &rect, const QString &text, const char *colorKey)
{
    return shows(picture, rect.adjusted(1, 1, -1, -1), [&](QPainter &painter) {
        painter.setFont(nameFont());
        painter.setPen(color(colorKey));
        painter.drawText(rect, Qt::AlignCenter | Qt::TextSingleLine, text);
    });
}

QRect rowOf(const QuoteValuePlace &place)
{
    return {place.right - place.room, place.rowTop + ZB::scaled(4), place.room, place.pitch};
}

/// All that may change with the values.
std::vector<QRect> roomsOfValues(const QuotesLayout &places)
{
    // The edge of a letter may be blended with one pixel beyond.
    const auto room = [](const QuoteValuePlace &place) {
        return QRect(place.right - place.room, place.rowTop, place.room + 1, place.pitch + ZB::scaled(6));
    };
    std::vector<QRect> rooms{room(places.latest), room(places.change), room(places.percent), places.balanceText,
                             places.balanceBar};
    for (const auto *side : {&places.asks, &places.bids})
        for (const QuoteRowPlace &row : *side)
            rooms.insert(rooms.end(), {room(row.price), room(row.volume), row.bar(1, 1), row.cancel});
    for (const QuoteSummaryPlace &summary : places.summary)
        rooms.push_back(room(summary.value));
    return rooms;
}

} // namespace

TEST(LadderWords, NameEverySideTheLatestPriceAndTheSummary)
{
    const QStringList names{QStringLiteral("现价"), QStringLiteral("前收"), QStringLiteral("涨停"),
                            QStringLiteral("跌停")};
    for (const int scale : {1, 2}) {
        refhost::ThemeService::instance().setScale(scale);
        for (const EQuoteType layout : layouts) {
            SCOPED_TRACE(QStringLiteral("layout %1 at %2").arg(layout).arg(scale).toStdString());
            LadderWindow window(layout);
            window.give(plainQuote());
            const QImage image = window.picture();
            const QuotesLayout places = window.places();
            for (std::size_t i = 0; i < 5; ++i) {
                const QuoteRowPlace &ask = places.asks[i];
                const QuoteRowPlace &bid = places.bids[i];
                EXPECT_TRUE(showsCaption(image, ask.caption, ask.band, QStringLiteral("卖"))) << i;
                EXPECT_TRUE(showsCaption(image, bid.caption, bid.band, QStringLiteral("买"))) << i;
                EXPECT_FALSE(showsCaption(image, bid.caption, bid.band, QStringLiteral("卖"))) << i;
            }
            EXPECT_TRUE(showsCaption(image, places.latestCaption, rowOf(places.latest), QStringLiteral("最新")));
            EXPECT_TRUE(
                showsNumber(image, places.latest, places.latest.right, QStringLiteral("10.05"), "clr_global_rise"));
            const QRect line(places.lines.back().p1() + QPoint(4, 0), QSize(1, 2));
            EXPECT_EQ(image.pixel(line.topLeft()), color("clr_quote_border_line").rgb());
            EXPECT_NE(image.pixel(line.bottomLeft()), color("clr_quote_border_line").rgb()) << "one pixel thick";
            window.click({places.asks[2].price.right - ZB::scaled(4), places.asks[2].band.center().y()});
            EXPECT_EQ(window.takeEvents().toStdString(), "1128 0 0 10.0800");
            for (std::size_t i = 0; i < 4; ++i)
                EXPECT_TRUE(showsCaption(image, places.summary[i].caption, rowOf(places.summary[i].value),
                                         names[static_cast<int>(i)]))
                    << i;
        }
    }
    refhost::ThemeService::instance().setScale(1);
}

TEST(LadderWords, NumberEachLevelDifferently)
{
    for (const EQuoteType layout : layouts) {
        LadderWindow window(layout);
        window.give(plainQuote());
        const QImage image = window.picture();
        const auto cell = [&](std::size_t level) {
            return image.copy(QRect(window.places().asks[level].digit, QSize(12, 12)));
        };
        for (std::size_t i = 1; i < 5; ++i)
            for (std::size_t j = 1; j < i; ++j)
                EXPECT_NE(cell(i), cell(j)) << i << " and " << j;
    }
}

TEST(LadderWords, ValuesEndAtTheirPlacesAndWhatIsMissingIsADash)
{
    LadderWindow window;
    const auto summary = [&](std::size_t i) -> QuoteValuePlace { return window.places().summary[i].value; };
    window.give(plainQuote());
    QImage image = window.picture();
    const QuotesLayout places = window.places();
    EXPECT_TRUE(showsNumber(image, places.latest, 103, QStringLiteral("10.05"), "clr_global_rise"));
    EXPECT_TRUE(showsNumber(image, places.change, 183, QStringLiteral("+0.05"), "clr_global_rise"));
    EXPECT_TRUE(showsNumber(image, places.asks[2].price, 103, QStringLiteral("10.08"), "clr_global_rise"));
    EXPECT_TRUE(showsNumber(image, summary(0), 103, QStringLiteral("10.05"), "clr_global_rise"));
    EXPECT_TRUE(showsNumber(image, summary(1), 183, QStringLiteral("10.00"), "clr_table_text_default"));
    EXPECT_TRUE(showsNumber(image, summary(2), 103, QStringLiteral("11.00"), "clr_global_rise"));
    EXPECT_TRUE(showsNumber(image, summary(3), 183, QStringLiteral("9.00"), "clr_global_fall"));
    EXPECT_FALSE(showsNumber(image, summary(3), 182, QStringLiteral("9.00"), "clr_global_fall"));
    for (const auto &[upper, lower] : {std::pair(0.0, noPrice), std::pair(noPrice, 0.0)}) {
        window.detail->upperLimitPrice = upper;
        window.detail->lowerLimitPrice = lower;
        window.give(plainQuote());
        image = window.picture();
        EXPECT_TRUE(showsNumber(image, summary(2), 103, QStringLiteral("-"), "clr_table_text_default")) << upper;
        EXPECT_TRUE(showsNumber(image, summary(3), 183, QStringLiteral("-"), "clr_table_text_default")) << lower;
    }
}

TEST(LadderWords, ANumberThatDoesNotFitIsSmallerAndNeverCut)
{
    LadderWindow window;
    quoter::QuoterAllData quote = plainQuote();
    const QuoteValuePlace place = window.places().summary[1].value;
    const QRect room = rowOf(place).adjusted(0, 1, 0, -1);
    const auto showsPrevious = [&](const QString &text, int pixels) {
        QFont font(numberFont());
        font.setPixelSize(pixels);
        return shows(window.picture(), room, [&](QPainter &painter) {
            painter.setFont(font);
            painter.setPen(color("clr_table_text_default"));
            painter.drawText(183 - QFontMetrics(font).horizontalAdvance(text), place.baseline, text);
        });
    };
    QFont fitting(numberFont());
    const QString number = QStringLiteral("12345.67");
    while (QFontMetrics(fitting).horizontalAdvance(number) > place.room)
        fitting.setPixelSize(fitting.pixelSize() - 1);
    ASSERT_GE(fitting.pixelSize(), 8);
    ASSERT_LT(fitting.pixelSize(), numberFont().pixelSize());
    quote.previousClose = 12345.67;
    window.give(quote);
    EXPECT_TRUE(showsPrevious(number, fitting.pixelSize()));
    EXPECT_FALSE(showsPrevious(number, fitting.pixelSize() + 1));
    quote.previousClose = 123456789012.34;
    window.give(quote);
    EXPECT_TRUE(showsPrevious(QStringLiteral("###"), 8)) << "its first digits would be another number";
}

TEST(LadderWords, OneHalfOfASnapshotIsNoSnapshot)
{
    LadderWindow window;
    window.giveNothing();
    window.settle();
    const QImage nothing = window.picture();
    window.give(plainQuote());
    ASSERT_NE(window.picture(), nothing);
    window.list->setQuoterAllData(boost::make_shared<quoter::QuoterAllData>(plainQuote()), nullptr);
    EXPECT_EQ(window.picture(), nothing);
    window.give(plainQuote());
    window.list->setQuoterAllData(nullptr, window.detail);
    EXPECT_EQ(window.picture(), nothing);
}

TEST(LadderWords, ButtonsCountThePendingOrdersOfTheirSide)
{
    for (const EQuoteType layout : {QuoteLevel2Vertical, QuoteLevel2Horizontal}) {
        LadderWindow window(layout);
        window.give(plainQuote());
        window.list->setOrderNum(3, 12);
        const QuotesLayout places = window.places();
        QImage image = window.picture();
        EXPECT_TRUE(showsCentred(image, places.cancelBuy, QStringLiteral("撤买 3"), "clr_btn_text_color"));
        EXPECT_TRUE(showsCentred(image, places.cancelSell, QStringLiteral("撤卖 12"), "clr_btn_text_color"));
        EXPECT_FALSE(showsCentred(image, places.cancelSell, QStringLiteral("撤卖 3"), "clr_btn_text_color"));
        EXPECT_EQ(image.pixel(places.cancelBuy.topLeft()), color("clr_global_rise").rgb());
        EXPECT_EQ(image.pixel(places.cancelSell.topLeft()), color("clr_global_fall").rgb());
        EXPECT_EQ(image.pixel(places.cancelBuy.topLeft() + QPoint(2, 2)), color("clr_btn_background_color").rgb());
        window.list->setOrderNum(0, 0);
        image = window.picture();
        EXPECT_TRUE(showsCentred(image, places.cancelBuy, QStringLiteral("撤买 0"), "clr_btn_text_color"));
        EXPECT_EQ(image.pixel(places.cancelBuy.topLeft()), color("clr_border").rgb()) << "nothing to cancel";
        window.list->setOrderNum(std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min());
        image = window.picture();
        if (layout == QuoteLevel2Vertical) {
            EXPECT_TRUE(showsCentred(image, places.cancelBuy, QStringLiteral("撤买 ###"), "clr_btn_text_color"))
                << "what it does stays readable";
        }
        for (const QuotePriceTypePlace &place : places.priceTypes) {
            const QString word = place.type == PriceOpposite  ? QStringLiteral("对手价")
                                 : place.type == PriceOwnBest ? QStringLiteral("本方最优")
                                                              : QStringLiteral("最优五档");
            EXPECT_TRUE(showsCentred(image, place.rect, word, "clr_btn_text_color")) << place.type;
        }
    }
}

TEST(LadderWords, TellTheChangeInPerCentAndHowBothSidesStand)
{
    for (const EQuoteType layout : {QuoteLevel2Vertical, QuoteLevel2Horizontal}) {
        LadderWindow window(layout);
        window.give(plainQuote()); // 4000 bought, 1500 sold
        const QuotesLayout places = window.places();
        const QImage image = window.picture();
        EXPECT_TRUE(
            showsNumber(image, places.percent, places.percent.right, QStringLiteral("+0.50%"), "clr_global_rise"));
        EXPECT_TRUE(shows(image, places.balanceText, [&](QPainter &painter) {
            painter.setFont(nameFont());
            painter.setPen(color("clr_global_rise"));
            painter.drawText(places.balanceText, Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("买 73%"));
            painter.setPen(color("clr_global_fall"));
            painter.drawText(places.balanceText, Qt::AlignRight | Qt::AlignVCenter, QStringLiteral("卖 27%"));
        }));
        int bought = 0;
        int sold = 0;
        for (int x = places.balanceBar.left(); x <= places.balanceBar.right(); ++x) {
            const QRgb pixel = image.pixel(x, places.balanceBar.center().y());
            bought += pixel == color("clr_global_rise").rgb() && sold == 0;
            sold += pixel == color("clr_global_fall").rgb();
        }
        EXPECT_EQ(bought, qRound(places.balanceBar.width() * 4000 / 5500.0));
        EXPECT_EQ(bought + sold, places.balanceBar.width()) << "from the left: what is bought, then what is sold";

        window.giveNothing();
        window.settle();
        const QImage empty = window.picture();
        EXPECT_EQ(empty.pixel(places.balanceBar.center()), color("clr_quote_border_line").rgb());
        EXPECT_TRUE(
            showsNumber(empty, places.percent, places.percent.right, QStringLiteral("-"), "clr_table_text_default"));
    }
}

TEST(LadderWords, BadAndLargeValuesNeitherCrashNorLeaveTheirRooms)
{
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const double values[] = {0,        noPrice,       -noPrice,       1e300,
                             -1,       123456789.123, -123456789.123, std::numeric_limits<double>::quiet_NaN(),
                             infinite, 99999.99,      1e-9,           10.060000000000002};
    const qint64 volumes[] = {0,
                              -1,
                              2147483646,
                              2147483647,
                              2147483648LL,
                              -2147483648LL,
                              std::numeric_limits<qint64>::max(),
                              std::numeric_limits<qint64>::min()};
    std::size_t turn = 0;
    for (const int scale : {1, 2}) {
        refhost::ThemeService::instance().setScale(scale);
        for (const EQuoteType layout : layouts) {
            SCOPED_TRACE(QStringLiteral("layout %1 at %2").arg(layout).arg(scale).toStdString());
            LadderWindow window(layout);
            window.giveNothing();
            window.settle();
            const QImage empty = window.picture();
            for (const double price : values)
                for (const qint64 volume : volumes) {
                    quoter::QuoterAllData quote;
                    quote.latestPrice = values[++turn % std::size(values)];
                    quote.previousClose = values[turn / 5 % std::size(values)];
                    quote.askPrices.fill(price);
                    quote.bidPrices.fill(price);
                    quote.askVolumes.fill(volume);
                    quote.bidVolumes.fill(volume);
                    window.detail->upperLimitPrice = price;
                    window.detail->lowerLimitPrice = price;
                    window.detail->priceTick = turn % 2 == 0 ? price : 0.01;
                    window.give(quote);
                    QImage image = window.picture();
                    for (const QRect &room : roomsOfValues(window.places()))
                        if (!room.isEmpty()) // an empty one would stand for all of the picture
                            QPainter(&image).drawImage(room.topLeft(), empty, room);
                    ASSERT_EQ(image, empty) << price << " " << volume << " " << quote.latestPrice;
                }
        }
    }
    refhost::ThemeService::instance().setScale(1);
    LadderWindow tiny;
    tiny.give(plainQuote());
    for (const QSize size : {QSize(200, 1), QSize(1, 200), QSize(1, 1)}) {
        tiny.graph->setFixedSize(size);
        tiny.graph->grab();
    }
}

TEST(LadderWords, AnUnknownLayoutPaintsNothingAndTakesNoClicks)
{
    LadderWindow window;
    window.give(plainQuote());
    const QuotesLayout places = window.places();
    const QSize size = window.graph->size();
    window.list->setQuoteType(static_cast<EQuoteType>(7));
    window.graph->setFixedSize(size);
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    const QImage before = image;
    window.graph->render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    EXPECT_EQ(image, before);
    window.click({places.asks[0].price.right - 4, places.asks[0].band.center().y()});
    window.press(Qt::Key_Up);
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.takeEvents().toStdString(), "");
}
