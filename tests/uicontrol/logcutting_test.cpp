#include "log/cloglinecutter.h"

#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <QtGui/QFontInfo>
#include <gtest/gtest.h>
#include <random>

namespace {

using KV::CLogLineCutter;

QFont fontOf(const char *family, int pixels)
{
    QFont font{QString::fromLatin1(family)};
    font.setPixelSize(pixels);
    return font;
}

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

/// Random lines of words from several alphabets, the way they meet in logs, and of loose characters.
class LineMaker
{
public:
    explicit LineMaker(unsigned seed) : random(seed) {}

    int below(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }

    QString line()
    {
        const QStringList &words = below(3) == 0 ? all : below(2) == 0 ? everyday : chinese;
        QString text;
        for (int left = below(8) == 0 ? below(400) : below(60); left > 0; --left) {
            text += words.at(below(words.size()));
            if (below(3) == 0)
                text += QChar(0x20 + below(95));
            if (below(6) == 0)
                text += QChar(0x4E00 + below(0x51A5));
        }
        return text;
    }

private:
    const QStringList everyday{QStringLiteral("AVAVA"),     QStringLiteral("office"),
                               QStringLiteral("To. We"),    QStringLiteral("2021-09-06 23:41:57,363 "),
                               QStringLiteral("fffi->==>"), QStringLiteral("[INFO]"),
                               QStringLiteral("x=0x1F;"),   QStringLiteral("\t")};
    const QStringList chinese{QStringLiteral("股票('688981', '中芯国际', 10631239.0524)"),
                              QStringLiteral("委托，成交。"),
                              QStringLiteral("——"),
                              QStringLiteral("“开盘”"),
                              QStringLiteral("１２％"),
                              QStringLiteral("かなカナ"),
                              QStringLiteral(" "),
                              QStringLiteral("…")};
    const QStringList all{QStringLiteral("a\u0301e\u0308"),
                          QString::fromUtf8("😀🚀"),
                          QString::fromUtf8("👨‍👩‍👧"),
                          QStringLiteral("مرحبا 12"),
                          QStringLiteral("שלום"),
                          QStringLiteral("Привет 7"),
                          QStringLiteral("ไทย"),
                          QStringLiteral("\t"),
                          QStringLiteral("\r"),
                          QStringLiteral("한국어"),
                          QStringLiteral("क्षत्रिय"),
                          QStringLiteral("→①"),
                          QString(QChar(0xD83D)),
                          QString(QChar(0xDE00)),
                          QString(QChar(0x9C)),
                          QString(QChar(0x2028)),
                          QString(QChar(1)),
                          QStringLiteral("⚠\uFE0F"),
                          QStringLiteral("中文"),
                          QStringLiteral("plain"),
                          QString(QChar(0x200F))};
    std::mt19937 random;
};

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
    LineMaker maker(seed);
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
