#include "log/cloglinecutter.h"

#include <QtCore/QStringList>
#include <gtest/gtest.h>
#include <random>

#include "uicontrol/loglines.h"

namespace {

using KV::CLogLineCutter;

/// One piece per measured character, as the rule says it.
QStringList plainPieces(const QFontMetrics &metrics, const QString &line, int width)
{
    if (metrics.horizontalAdvance(line) <= width)
        return {line};
    QStringList pieces;
    int start = 0;
    int count = 10;
    if (line.size() > 10) {
        do {
            if (metrics.horizontalAdvance(line.mid(start, count)) > width) {
                pieces << line.mid(start, count - 1);
                start += count - 1;
                count = 10;
            }
            ++count;
        } while (start + count < line.size());
    }
    if (start < line.size())
        pieces << line.mid(start);
    return pieces;
}

QStringList cutPieces(CLogLineCutter &cutter, const QString &line, int width)
{
    std::vector<int> lengths;
    cutter.cut(line.utf16(), line.size(), width, lengths);
    QStringList pieces;
    int start = 0;
    for (const int length : lengths) {
        pieces << line.mid(start, length);
        start += length;
    }
    return pieces;
}

std::string lengths(const QStringList &pieces)
{
    std::string text;
    for (const QString &piece : pieces)
        text += std::to_string(piece.size()) + ' ';
    return text;
}

struct CuttingFont
{
    const char *family;
    int pixels;
};

class LogCuttingOfFont : public ::testing::TestWithParam<CuttingFont>
{
};

} // namespace

TEST_P(LogCuttingOfFont, RandomLinesGetThePiecesOfThePlainLoop)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    LogLineMaker maker(seed);
    const QFont font = fontOf(GetParam().family, GetParam().pixels);
    const QFontMetrics metrics(font);
    CLogLineCutter cutter(font);
    for (int round = 0; round < 250; ++round) {
        const QString line = maker.line();
        const int width = maker.below(6) == 0 ? maker.below(130) - 2 : 101 + maker.below(900);
        const QStringList expected = plainPieces(metrics, line, width);
        ASSERT_EQ(cutPieces(cutter, line, width).join(QLatin1Char('\n')).toStdString(),
                  expected.join(QLatin1Char('\n')).toStdString())
            << "width " << width << " line " << line.toStdString();
        ASSERT_EQ(cutter.measure().width(line), metrics.horizontalAdvance(line)) << line.toStdString();
    }
}

TEST_P(LogCuttingOfFont, FontsThatTheRestOfTheLineLoadsCountForControlCharactersFromItsStart)
{
    // A size of its own, for which no other test has loaded them.
    const int size = GetParam().pixels + 1;
    const QFont font = fontOf(GetParam().family, size);
    const QString line = QStringLiteral("s") + QString(12, QChar(0)) + QStringLiteral("\r\t\tcolumn\taf") +
                         QString(9, QChar(0)) + QStringLiteral("\x1B[31m9.0524\x1B[0m, 能际") +
                         QString::fromUtf8("中˱、ω˱，शि😀z˱，→“。");
    CLogLineCutter cutter(font);
    const QStringList pieces = cutPieces(cutter, line, 9 * size);
    const QStringList expected = plainPieces(QFontMetrics(font), line, 9 * size);
    EXPECT_EQ(pieces.join(QLatin1Char('\n')).toStdString(), expected.join(QLatin1Char('\n')).toStdString());
}

INSTANTIATE_TEST_SUITE_P(Fonts, LogCuttingOfFont,
                         ::testing::Values(CuttingFont{"Noto Sans Mono CJK SC", 12},
                                           CuttingFont{"Noto Sans Mono CJK SC", 15},
                                           CuttingFont{"Noto Sans Mono CJK SC", 18},
                                           CuttingFont{"Noto Sans Mono CJK SC", 36}, CuttingFont{"monospace", 12},
                                           CuttingFont{"sans-serif", 12}, CuttingFont{"Lato", 13},
                                           CuttingFont{"Noto Sans CJK SC", 12}, CuttingFont{"Noto Sans CJK SC", 24},
                                           CuttingFont{"Noto Serif CJK SC", 13}, CuttingFont{"DejaVu Sans", 12},
                                           CuttingFont{"DejaVu Sans", 27}, CuttingFont{"DejaVu Serif", 12},
                                           CuttingFont{"DejaVu Sans Mono", 12}),
                         [](const auto &chosen) {
                             const QString name = QString::fromLatin1(chosen.param.family) + QLatin1Char('_') +
                                                  QString::number(chosen.param.pixels);
                             return QString(name).remove(QLatin1Char(' ')).remove(QLatin1Char('-')).toStdString();
                         });

TEST(LogCutting, RunsWithoutWidthAreCutAsThePlainLoopCutsThemAndAtLastByTheirNumberAtACostThatGrowsWithIt)
{
    const QFont font = fontOf("DejaVu Sans", 15);
    const QFontMetrics metrics(font);
    CLogLineCutter cutter(font);
    for (const char16_t unit : u"\u0301\u20DD\u200B\u200D\uFE0F\u064B") { // the last one is a NUL
        SCOPED_TRACE(static_cast<int>(unit));
        const auto line = [unit](int run) {
            return QStringLiteral("价格 abc") + QString(run, QChar(unit)) + QString(90, QLatin1Char('x')) +
                   QString(30, QChar(unit)) + QStringLiteral("成交回报");
        };
        for (const int run : {3, 31, 700})
            EXPECT_EQ(lengths(cutPieces(cutter, line(run), 400)), lengths(plainPieces(metrics, line(run), 400))) << run;

        constexpr int longest = 1536;
        constexpr int longRun = 40 * longest;
        const qint64 before = cutter.measure().shapedCharacters();
        const QStringList pieces = cutPieces(cutter, QString(longRun, QChar(unit)) + QStringLiteral("xx"), 400);
        EXPECT_LT(cutter.measure().shapedCharacters() - before, 16 * longRun);
        std::string expected;
        for (int i = 0; i < 40; ++i)
            expected += std::to_string(longest) + ' ';
        if (metrics.horizontalAdvance(QString(longest, QChar(unit))) == 0) { // not so in every font
            EXPECT_EQ(lengths(pieces), expected + "2 ");
        }
    }
}
