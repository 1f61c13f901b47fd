#include <gtest/gtest.h>

#include "framework/gridlistsource.h"
#include "grid/gridcanvas.h"
#include "grid/gridcellpainter.h"
#include "grid/gridheaderpainter.h"
#include "grid/gridtext.h"
#include "grid/gridunit.h"

using namespace ZB;

namespace {

constexpr QRgb paper = 0xffffffff;

QImage blank(int width = 200, int height = 24)
{
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(paper);
    return picture;
}

QRect inkOf(const QImage &picture)
{
    QRect ink;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixel(x, y) != paper)
                ink |= QRect(x, y, 1, 1);
    return ink;
}

/// What is drawn of a text in a column of `width` pixels: "3+…" for three characters and an ellipsis.
std::string drawnIn(const GridText &texts, const QString &text, int width, GridCut cut,
                    Qt::Alignment alignment = Qt::AlignLeft)
{
    const GridPlacedText placed = texts.place(QRect(0, 0, width, 24), text, GridFont::Text, alignment, cut);
    return (QString::number(placed.count) + (placed.cut ? QStringLiteral("+") : QString()) + placed.tail).toStdString();
}

} // namespace

TEST(GridText, CutsTextsWithAnEllipsisAndNumbersToHashes)
{
    GridText texts;
    texts.setLook(plainLook(), 1.0);
    const int digit = texts.width(QStringLiteral("0"), GridFont::Text);
    const int hash = texts.width(QStringLiteral("#"), GridFont::Text);
    const int dots = texts.width(QStringLiteral("…"), GridFont::Text);
    const QString number = QStringLiteral("00000000");
    EXPECT_EQ(drawnIn(texts, number, 8 * digit, GridCut::Hashes), "8");
    EXPECT_EQ(drawnIn(texts, number, 8 * digit - 1, GridCut::Hashes), "0+###");
    EXPECT_EQ(drawnIn(texts, number, 2 * hash, GridCut::Hashes), "0+##");
    EXPECT_EQ(drawnIn(texts, number, 0, GridCut::Hashes), "0+");
    EXPECT_EQ(drawnIn(texts, number, 8 * digit - 1, GridCut::Ellipsis),
              std::to_string((8 * digit - 1 - dots) / digit) + "+…");
    EXPECT_EQ(drawnIn(texts, number, 3 * digit + dots, GridCut::Ellipsis), "3+…");
    EXPECT_EQ(drawnIn(texts, number, dots - 1, GridCut::Ellipsis), "0+");
    EXPECT_EQ(drawnIn(texts, QString(100000, QLatin1Char('0')), 3 * digit + dots, GridCut::Ellipsis), "3+…");
    EXPECT_EQ(drawnIn(texts, QString(), 0, GridCut::Ellipsis), "0");
}

TEST(GridText, FiguresStandBelowOneAnotherWhenAlignedRight)
{
    GridText texts;
    texts.setLook(plainLook(), 1.0);
    for (const QString &longer : {QStringLiteral("1,234,567.25"), QStringLiteral("+8.25"), QStringLiteral("-111.25")}) {
        QImage a = blank();
        QImage b = blank();
        GridCanvas canvasA(a);
        GridCanvas canvasB(b);
        texts.draw(canvasA, a.rect(), QStringLiteral(".25"), GridFont::Number, Qt::AlignRight, GridCut::Hashes, 0);
        texts.draw(canvasB, b.rect(), longer, GridFont::Number, Qt::AlignRight, GridCut::Hashes, 0);
        const int left = a.width() - texts.width(QStringLiteral(".25"), GridFont::Number);
        const QRect tail(left, 0, a.width() - left, a.height());
        EXPECT_EQ(a.copy(tail), b.copy(tail)) << longer.toStdString();
    }
}

TEST(GridText, TextsThatNeedShapingAreDrawnToo)
{
    GridText texts;
    texts.setLook(plainLook(), 1.0);
    for (const QString &text : {QStringLiteral("e\u0301t\u00e9"), QString::fromUtf8("\U0001F600 ok"),
                                QString::fromUtf8("عربي"), QString(5000, QChar(0x0301))}) {
        QImage picture = blank();
        GridCanvas canvas(picture);
        texts.draw(canvas, QRect(20, 0, 60, 24), text, GridFont::Text, Qt::AlignLeft, GridCut::Ellipsis, 0xff204060);
        EXPECT_EQ(inkOf(picture) & QRect(0, 0, 90, 24), inkOf(picture)) << text.left(20).toStdString();
    }
    QImage picture = blank();
    GridCanvas canvas(picture);
    texts.draw(canvas, picture.rect(), QStringLiteral("e\u0301"), GridFont::Text, Qt::AlignLeft, GridCut::Ellipsis, 0);
    EXPECT_FALSE(inkOf(picture).isEmpty());
}

TEST(GridText, DrawsNothingOutsideOfTheClip)
{
    GridText texts;
    texts.setLook(plainLook(), 1.0);
    QImage whole = blank();
    QImage cut = blank();
    GridCanvas canvas(whole);
    texts.draw(canvas, whole.rect(), QString::fromUtf8("中国平安 600000"), GridFont::Text, Qt::AlignLeft,
               GridCut::Ellipsis, 0);
    const QRect clip(7, 9, 31, 5);
    GridCanvas clipped(cut);
    clipped.setClip(clip);
    texts.draw(clipped, cut.rect(), QString::fromUtf8("中国平安 600000"), GridFont::Text, Qt::AlignLeft,
               GridCut::Ellipsis, 0);
    EXPECT_TRUE(clip.contains(inkOf(cut)));
    EXPECT_EQ(whole.copy(clip), cut.copy(clip));
}

TEST(TextPictureCache, DropsWhatWasNotUsedForLongest)
{
    QFont font;
    font.setPixelSize(12);
    TextPictureCache measure;
    const qint64 one = measure.picture(QStringLiteral("aa"), font, 0, 0).sizeInBytes();
    TextPictureCache cache(3 * one);
    const void *first = cache.picture(QStringLiteral("aa"), font, 0, 0xff000000).constBits();
    cache.picture(QStringLiteral("aa"), font, 0, 0xffff0000);
    cache.picture(QStringLiteral("aa"), font, 1, 0xff000000);
    EXPECT_EQ(cache.count(), 3);
    EXPECT_EQ(cache.picture(QStringLiteral("aa"), font, 0, 0xff000000).constBits(), first);
    for (int i = 0; i < 50; ++i) {
        cache.picture(QStringLiteral("a") + QChar(QLatin1Char('a').unicode() + i % 26), font, 2, static_cast<QRgb>(i));
        EXPECT_LE(cache.bytes(), 3 * one + one);
        EXPECT_EQ(cache.picture(QStringLiteral("aa"), font, 0, 0xff000000).constBits(), first) << "used all the time";
    }
    cache.picture(QString(3000, QLatin1Char('w')), font, 0, 0); // larger than all that is kept
    EXPECT_EQ(cache.count(), 1);
}

TEST(GridCellPainter, AFlashFadesWithinHalfASecond)
{
    GridCell cell;
    cell.flash = GridFlash::Rise;
    cell.flashStart = 1000;
    std::string steps;
    for (const qint64 now : {999, 1000, 1001, 1250, 1468, 1469, 1499, 1500, 99999})
        steps += std::to_string(GridCellPainter::flashStep(cell, now)) + " ";
    EXPECT_EQ(steps, "16 16 16 8 2 1 1 0 0 ");

    const GridLook look = plainLook();
    GridCellPainter painter;
    painter.setLook(look, 1.0);
    const auto ground = [&](quint8 step, GridFlash flash) {
        QImage picture = blank(40, 24);
        GridCanvas canvas(picture);
        GridCell drawn;
        drawn.flash = flash;
        drawn.flashStep = step;
        painter.paintBackground(canvas, picture.rect(), painter.background(drawn), false);
        return QColor(picture.pixel(5, 5));
    };
    EXPECT_EQ(ground(0, GridFlash::Rise), look.background);
    EXPECT_GT(ground(16, GridFlash::Rise).red(), ground(16, GridFlash::Rise).green());
    EXPECT_GT(ground(16, GridFlash::Fall).green(), ground(16, GridFlash::Fall).red());
    EXPECT_LT(ground(16, GridFlash::Rise).green(), ground(4, GridFlash::Rise).green());
}

TEST(GridCellPainter, UnitsHaveASlotOfTheirOwnWhereTheColumnKeepsOne)
{
    GridCellPainter painter;
    painter.setLook(plainLook(), 1.0);
    GridColumn column;
    column.alignment = Qt::AlignRight | Qt::AlignVCenter;
    column.unitSample = QString::fromUtf8("万");
    const auto inked = [&](const QString &unit) {
        QImage picture = blank(120, 24);
        GridCanvas canvas(picture);
        GridCell cell;
        cell.text = QStringLiteral("12.50");
        cell.unit = unit;
        painter.paintContent(canvas, picture.rect(), cell, column);
        return inkOf(picture);
    };
    const QRect plain = inked(QString());
    const QRect percent = inked(QStringLiteral("%"));
    EXPECT_EQ(plain.left(), percent.left()) << "figures stay in line, with and without a unit";
    EXPECT_GT(percent.right(), plain.right());
    column.unitSample.clear();
    EXPECT_LT(inked(QStringLiteral("%")).left(), inked(QString()).left());
}

TEST(GridUnit, OnlyTheUnitOfANumberComesOff)
{
    const auto split = [](QString text) {
        const QString unit = takeUnit(text);
        return (text + QLatin1Char('|') + unit).toStdString();
    };
    EXPECT_EQ(split(QStringLiteral("12.50%")), "12.50|%");
    EXPECT_EQ(split(QStringLiteral("-3 %")), "-3|%");
    EXPECT_EQ(split(QStringLiteral("1.2万")), "1.2|万");
    EXPECT_EQ(split(QStringLiteral("9亿")), "9|亿");
    for (const char *whole : {"", "%", "-", "12.50", "万科亿", "\x01%"})
        EXPECT_EQ(split(QString::fromUtf8(whole)), std::string(whole) + "|");
}

TEST(GridHeaderPainter, FiguresOfTheStatisticsRowStandBelowThoseOfTheCells)
{
    GridLook look = plainLook();
    look.statisticsFont = look.numberFont;
    look.statisticsMargin = look.margin;
    GridCellPainter cells;
    cells.setLook(look, 1.0);
    GridHeaderPainter headers(cells);
    GridColumn column;
    column.width = 120;
    column.numeric = true;
    column.alignment = column.statisticsAlignment = Qt::AlignRight | Qt::AlignVCenter;
    column.unitSample = QStringLiteral("%");
    GridGeometry geometry;
    geometry.columns.reset(1);
    geometry.columns.set(0, column);
    geometry.size = QSize(120, 100);
    geometry.rowHeight = geometry.statisticsHeight = 24;
    const auto inkedOn = [](const QImage &picture, QRgb ground) {
        QRect ink;
        for (int y = 4; y < picture.height() - 4; ++y)
            for (int x = 2; x < picture.width() - 4; ++x)
                if (picture.pixel(x, y) != ground)
                    ink |= QRect(x, y, 1, 1);
        return ink;
    };
    QImage body = blank(120, 24);
    GridCanvas canvas(body);
    GridCell cell;
    cell.text = QStringLiteral("12.50");
    cell.unit = QStringLiteral("%");
    cells.paintContent(canvas, body.rect(), cell, column);
    const QRect above = inkedOn(body, paper);
    for (const char *text : {"12.50%", "12.50"}) {
        QImage statistics;
        headers.paintStatistics(statistics, geometry, {QString::fromUtf8(text)}, QString());
        const QRect below = inkedOn(statistics, look.statisticsBackground.rgb());
        EXPECT_EQ(below.left(), above.left()) << text;
        EXPECT_EQ(below.right() == above.right(), text[5] == '%') << text;
    }
}
