#pragma once

#include <QtCore/QStringList>
#include <QtGui/QFont>
#include <random>

inline QFont fontOf(const char *family, int pixels)
{
    QFont font{QString::fromLatin1(family)};
    font.setPixelSize(pixels);
    return font;
}

/// Random lines of words from several alphabets, the way they meet in logs, and of loose characters.
class LogLineMaker
{
public:
    explicit LogLineMaker(unsigned seed) : random(seed) {}

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
                          QString(QChar(0x200F)),
                          QStringLiteral("e") + QString(9, QChar(0x0301)) + QString(8, QChar(0x200D)),
                          QString(17, QChar(2)),
                          QString(7, QChar(0x0941))};
    std::mt19937 random;
};
