#include <QtGui/QFontMetrics>
#include <QtGui/QPainter>
#include <gtest/gtest.h>

#include "log/clogglyphpictures.h"
#include "uicontrol/loglines.h"

namespace {

using KV::CLogGlyphPictures;

constexpr int rowWidth = 400;

CLogGlyphPictures::Style styleFor(const QFont &font, bool light)
{
    const QFontMetrics metrics(font);
    const int lineHeight = metrics.height() - 2; // what stands out above and below is cut off
    return {font,
            light ? Qt::black : QColor(0xD5DAE3),
            light ? Qt::white : QColor(0x14181F),
            light ? QColor(0xFFE58A) : QColor(0x6B5A12),
            lineHeight,
            (lineHeight - metrics.height()) / 2 + metrics.ascent()};
}

/// A row as it looks when the text is drawn as a whole: on a wider sheet, of which the row is cut out.
QImage plainRow(const CLogGlyphPictures::Style &style, double ratio, const QString &text, int left, int right,
                const CLogGlyphPictures::Spans &marks)
{
    constexpr int aside = 300;
    QImage sheet((QSizeF(rowWidth + 2 * aside, style.lineHeight) * ratio).toSize(), QImage::Format_RGB32);
    sheet.setDevicePixelRatio(ratio);
    sheet.fill(style.background);
    QPainter painter(&sheet);
    const auto fillMarks = [&painter, &style, &marks] {
        for (const auto &[x, width] : marks)
            painter.fillRect(QRect(aside + x, 0, width, style.lineHeight), style.match);
    };
    fillMarks();
    painter.setFont(style.font);
    painter.setPen(style.text);
    painter.drawText(QPointF(aside + left, style.baseline), text);
    painter.setClipRect(QRect(aside + right, 0, rowWidth, style.lineHeight));
    painter.fillRect(sheet.rect(), style.background);
    fillMarks();
    painter.end();
    QImage row = sheet.copy(QRectF(aside * ratio, 0, rowWidth * ratio, style.lineHeight * ratio).toRect());
    row.setDevicePixelRatio(ratio);
    return row;
}

/// The pixels in which two rows differ, as "x,y:by". Qt blends glyphs that an edge cuts a little differently: there a
/// few levels do not count.
std::string differences(const QImage &row, const QImage &expected, const QFontMetrics &metrics, double right)
{
    if (row.size() != expected.size())
        return "another size";
    const int edge = qRound(metrics.height() * row.devicePixelRatioF());
    const int rightEdge = qRound(right * row.devicePixelRatioF());
    std::string text;
    for (int y = 0; y < row.height(); ++y)
        for (int x = 0; x < row.width(); ++x) {
            const QColor a = row.pixelColor(x, y);
            const QColor b = expected.pixelColor(x, y);
            const int by =
                std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
            const bool isAtEdge = x < edge || std::abs(x - rightEdge) < edge;
            if (by > (isAtEdge ? 32 : 0))
                text += std::to_string(x) + "," + std::to_string(y) + ":" + std::to_string(by) + " ";
        }
    return text;
}

/// Up to two marks between characters of a text, and now and then one that cuts a character.
CLogGlyphPictures::Spans someMarks(LogLineMaker &maker, const QFontMetrics &metrics, const QString &text, int left)
{
    CLogGlyphPictures::Spans marks;
    int at = 0;
    for (int count = maker.below(3); count > 0 && at < text.size(); --count) {
        const int from = at + maker.below(text.size() - at);
        at = std::min(text.size(), from + 1 + maker.below(8));
        const int x = left + metrics.horizontalAdvance(text.left(from)) + (maker.below(10) == 0 ? 1 : 0);
        marks.emplace_back(x, metrics.horizontalAdvance(text.mid(from, at - from)));
        at += 2;
    }
    return marks;
}

} // namespace

TEST(LogGlyphs, ARowOfCopiedGlyphsIsTheRowThatIsDrawnAsAWhole)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    LogLineMaker maker(seed);
    const struct
    {
        const char *family;
        int pixels;
    } fonts[] = {{"Noto Sans Mono CJK SC", 12}, {"Noto Sans Mono CJK SC", 18}, {"Noto Sans Mono CJK SC", 15},
                 {"Noto Sans CJK SC", 12},      {"DejaVu Sans Mono", 12},      {"DejaVu Serif", 13}};
    for (const auto &given : fonts) {
        const QFont font = fontOf(given.family, given.pixels);
        const QFontMetrics metrics(font);
        CLogGlyphPictures glyphs;
        int drawn = 0;
        for (int round = 0; round < 150; ++round) {
            const double ratio = round < 70 ? 1 : round < 140 ? 2 : 1.5;
            const auto style = styleFor(font, round / 35 % 2 == 0);
            const QString text = maker.line().left(120);
            const int left = 5 - maker.below(200);
            const int right = rowWidth - maker.below(40);
            const auto marks = someMarks(maker, metrics, text, left);
            glyphs.use(style, ratio);
            if (const QImage *row = glyphs.draw(text, rowWidth, left, right, marks)) {
                ++drawn;
                ASSERT_EQ(differences(*row, plainRow(style, ratio, text, left, right, marks), metrics, right), "")
                    << given.family << " " << given.pixels << " ratio " << ratio << " left " << left << " right "
                    << right << " " << text.toStdString();
            }
        }
        EXPECT_GT(drawn, 50) << given.family << " " << given.pixels;
        glyphs.use(styleFor(font, true), 1);
        const QString line = QStringLiteral("23:41:57,363 [INFO] 股票('688981', '中芯国际', 10631239.0524) & www #~^");
        EXPECT_NE(glyphs.draw(line, rowWidth, 5, 395, {{5, 70}}), nullptr) << given.family << " " << given.pixels;
        EXPECT_EQ(glyphs.draw(QStringLiteral("שלום"), rowWidth, 5, 395, {}), nullptr);
        glyphs.use(styleFor(font, true), 1.5);
        EXPECT_EQ(glyphs.draw(line, rowWidth, 5, 395, {}), nullptr);
    }
}
