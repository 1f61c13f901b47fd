#include <QtCore/QTextCodec>
#include <gtest/gtest.h>

#include "logfile/logdecoder.h"
#include "logfile/loglevels.h"
#include "services/logline.h"

using namespace terminal;

namespace {

QByteArray inGb18030(const QString &text)
{
    return QTextCodec::codecForName("GB18030")->fromUnicode(text);
}

std::string decoded(LogDecoder &decoder, const QByteArray &bytes)
{
    return decoder.decode(bytes.constData(), bytes.size()).toStdString();
}

} // namespace

TEST(LogDecoder, EachLineTellsItsOwnEncoding)
{
    LogDecoder decoder;
    EXPECT_EQ(decoded(decoder, "plain"), "plain");
    EXPECT_EQ(decoder.encoding().toStdString(), "");
    for (const char *line :
         {"委托已报", "2022-03-21 16:10:54,074 涨停数：147   跌停数：1", "中", "㐀𠀀 é 100 €", "，。“”"}) {
        const QString text = QString::fromUtf8(line);
        EXPECT_EQ(decoded(decoder, text.toUtf8()), line);
        EXPECT_EQ(decoded(decoder, inGb18030(text)), line);
    }
}

TEST(LogDecoder, CharactersOfTwoBytesFollowTheOtherLines)
{
    const QByteArray notice = inGb18030(QStringLiteral("通知")); // is well-formed UTF-8 too
    LogDecoder chinese;
    EXPECT_EQ(decoded(chinese, notice), "通知");
    EXPECT_EQ(chinese.encoding().toStdString(), "GB18030");
    LogDecoder other;
    EXPECT_EQ(decoded(other, "委托 Привет"), "委托 Привет");
    EXPECT_EQ(decoded(other, "Привет, übung"), "Привет, übung") << "no bytes of Chinese characters";
    EXPECT_EQ(decoded(other, "на"), "на");
    EXPECT_EQ(other.encoding().toStdString(), "UTF-8");
}

TEST(LogDecoder, BrokenBytesSpoilNoMoreThanTheirPlace)
{
    LogDecoder decoder;
    EXPECT_EQ(decoded(decoder, QByteArray("委托\xE6\x88 成交 \xFF 撤单")), "委托\uFFFD\uFFFD 成交 \uFFFD 撤单");
    EXPECT_EQ(decoded(decoder, QByteArray("委托已报").chopped(1)), "委托已\uFFFD\uFFFD");
    EXPECT_EQ(decoded(decoder, inGb18030(QStringLiteral("成交回报")).chopped(1)).substr(0, 9), "成交回");
    EXPECT_EQ(decoded(decoder, QByteArray("\xC0\xAF")).find('/'), std::string::npos) << "forms longer than needed";
}

TEST(LogDecoder, ARunOfZeroBytesIsOneCharacter)
{
    LogDecoder decoder;
    EXPECT_EQ(decoded(decoder, "a"), "a");
    EXPECT_FALSE(decoder.sawZeroBytes());
    EXPECT_EQ(decoded(decoder, QByteArray("a\0\0\0b\0", 6)), "a␀b␀");
    EXPECT_TRUE(decoder.sawZeroBytes());
    EXPECT_EQ(decoded(decoder, QByteArray("\0", 1) + QByteArray("委托")), "␀委托");
}

TEST(LogDecoder, TheStartOfACharacterIsKnownAtEveryPlaceOfALine)
{
    const QString text = QString::fromUtf8("2022 委托a已1报，通知0㐀中㐁𠀀。");
    for (const bool utf8 : {true, false}) {
        LogDecoder decoder;
        const QByteArray bytes = utf8 ? text.toUtf8() : inGb18030(text);
        decoder.decode(bytes.constData(), bytes.size());
        for (int from = 0, start = 0; from < text.size();) {
            const QString character = text.mid(from, text.at(from).isHighSurrogate() ? 2 : 1);
            const int length = utf8 ? character.toUtf8().size() : inGb18030(character).size();
            for (int part = 0; part < length; ++part)
                EXPECT_EQ(decoder.unfinished(bytes.constData(), start + part), part)
                    << (utf8 ? "UTF-8 " : "GB18030 ") << character.toStdString() << " " << part;
            from += character.size();
            start += length;
        }
    }
}

TEST(LogLevels, WordsNearTheBeginningTellTheLevel)
{
    const struct
    {
        const char *line;
        int level;
    } cases[] = {
        {"2021-09-06 23:41:57,040 INFO started", refhost::LogInfo},
        {"2021-09-06 23:41:57,040 WARN queue is long", refhost::LogWarning},
        {"    at queue.cpp:12", refhost::LogWarning},
        {"", refhost::LogInfo},
        {"[2021-09-06] [error] no route", refhost::LogError},
        {"\tcaused by: timeout", refhost::LogError},
        {"0 errors, no warning was given", refhost::LogInfo},
        {"level=error msg=\"no route\"", refhost::LogError},
        {"TERRORS AND SWARNS", refhost::LogInfo},
        {"09:30:00 FATAL WARN", refhost::LogError},
        {"09:30:00 警告：行情延迟", refhost::LogWarning},
        {"09:30:00 错误：连接断开", refhost::LogError},
        {"09:30:00 委托已报", refhost::LogInfo},
    };
    LogLevels levels;
    for (const auto &entry : cases)
        EXPECT_EQ(levels.levelOf(QString::fromUtf8(entry.line)), entry.level) << entry.line;
    levels.levelOf(QStringLiteral("ERROR"));
    levels.restart();
    EXPECT_EQ(levels.levelOf(QStringLiteral(" of another file")), refhost::LogInfo);
}
