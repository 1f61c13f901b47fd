#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextCodec>
#include <gtest/gtest.h>
#include <random>

#include "logfile/logtail.h"

using namespace terminal;

namespace {

const char *nameOf(LogFileEvent event)
{
    switch (event) {
    case LogFileEvent::Opened:
        return "<opened";
    case LogFileEvent::Truncated:
        return "<truncated";
    case LogFileEvent::Replaced:
        return "<replaced";
    case LogFileEvent::Lost:
        return "<lost";
    case LogFileEvent::None:
        break;
    }
    return "<";
}

/// A file that a test writes, and the tail of it.
class LogTailTest : public ::testing::Test
{
protected:
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("日志.log"));

    void write(const QByteArray &bytes, QIODevice::OpenMode mode = QIODevice::Append) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | mode));
        file.write(bytes);
    }

    /// Nobody has written for a while: what ends the file is a line.
    void age() const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(-3600), QFileDevice::FileModificationTime));
    }

    /// All that is there to read now: lines, and in angle brackets what became of the file.
    static std::string readAll(LogTail &tail)
    {
        QStringList found;
        LogRead read;
        for (bool more = true; more;) {
            more = tail.read(read);
            if (read.event != LogFileEvent::None || read.skipped > 0)
                found << QLatin1String(nameOf(read.event)) +
                             (read.skipped > 0 ? QStringLiteral(" -%1").arg(read.skipped) : QString()) +
                             QLatin1Char('>');
            found << read.lines;
        }
        return found.join(QLatin1Char('|')).toStdString();
    }

    static LogTail::Limits limits()
    {
        LogTail::Limits small;
        small.quietMs = 100000; // the tests say when a file is quiet
        return small;
    }
};

} // namespace

TEST_F(LogTailTest, LinesComeAsTheyAreCompleted)
{
    write("a\r\n\r\n委托");
    LogTail tail(path, limits());
    EXPECT_EQ(readAll(tail), "<opened>|a|");
    EXPECT_EQ(readAll(tail), "");
    write("已报\nb\rc\r");
    EXPECT_EQ(readAll(tail), "委托已报");
    write("\n");
    EXPECT_EQ(readAll(tail), "b\rc");
    EXPECT_TRUE(tail.isAtEnd());
}

TEST_F(LogTailTest, ALastLineWithoutAnEndComesWhenTheFileIsQuiet)
{
    write("\xEF\xBB\xBF"
          "甲\nlast \xE5\xA7");
    LogTail tail(path, limits());
    EXPECT_EQ(readAll(tail), "<opened>|甲");
    age();
    EXPECT_EQ(readAll(tail), "last ") << "but not half a character";
    write("\x94\nnext\r");
    EXPECT_EQ(readAll(tail), "委");
    age();
    EXPECT_EQ(readAll(tail), "next");
    write("\n");
    EXPECT_EQ(readAll(tail), "") << "the end of a line that was given already";
    write("\nx\n");
    EXPECT_EQ(readAll(tail), "|x") << "a line that is empty";
}

TEST_F(LogTailTest, BlocksMayCutCharactersAndLineEndsAnywhere)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&random](unsigned n) { return static_cast<int>(random() % n); };
    for (const char *codec : {"UTF-8", "GB18030"}) {
        QStringList lines;
        QByteArray bytes;
        for (int i = 0; i < 300; ++i) {
            QString line = QStringLiteral("委托已报 %1").arg(i);
            for (int left = below(40); left > 0; --left)
                line += below(3) == 0 ? QChar('0' + below(10)) : QChar(0x4E00 + below(0x5000));
            lines << line;
            bytes += QTextCodec::codecForName(codec)->fromUnicode(line) + (below(2) == 0 ? "\r\n" : "\n");
        }
        QFile::remove(path);
        write({});
        LogTail::Limits small = limits();
        small.blockBytes = 7;
        LogTail tail(path, small);
        QStringList found;
        LogRead read;
        for (int at = 0; at < bytes.size();) {
            const int size = std::min(1 + below(200), bytes.size() - at);
            write(bytes.mid(at, size));
            at += size;
            while (tail.read(read))
                found << read.lines;
        }
        EXPECT_EQ(found.join(QLatin1Char('\n')).toStdString(), lines.join(QLatin1Char('\n')).toStdString());
        EXPECT_EQ(tail.decoder().encoding().toStdString(), codec);
    }
}

TEST_F(LogTailTest, OfALongFileTheNewestLinesAreRead)
{
    QByteArray text;
    for (int i = 0; i < 1000; ++i)
        text += "line " + QByteArray::number(i) + "\n";
    write(text);
    LogTail::Limits few = limits();
    few.lines = 3;
    LogTail ended(path, few);
    EXPECT_EQ(readAll(ended), "<opened -8863>|line 997|line 998|line 999");
    write("end");
    age();
    LogTail open(path, few);
    EXPECT_EQ(readAll(open), "<opened -8872>|line 998|line 999|end") << "the last line counts too";
    few.lines = 1000000;
    few.backlog = 20;
    LogTail small(path, few);
    EXPECT_EQ(readAll(small), "<opened -8881>|line 999|end") << "from the start of a line";
    few.backlog = 1000000;
    LogTail whole(path, few);
    EXPECT_EQ(readAll(whole).substr(0, 16), "<opened>|line 0|");
}

TEST_F(LogTailTest, AFileThatOutrunsTheReaderLosesItsMiddle)
{
    write("first\nsecond\n");
    LogTail::Limits few = limits();
    few.backlog = 30;
    LogTail tail(path, few);
    EXPECT_EQ(readAll(tail), "<opened>|first|second");
    write("half");
    EXPECT_EQ(readAll(tail), "");
    write(QByteArray(" and half\n") + QByteArray(100, 'x') + "\n" + "behind\nit all\n");
    EXPECT_EQ(readAll(tail), "< -111>|behind|it all");
}

TEST_F(LogTailTest, ALineBeyondTheLimitComesInPartsOfWholeCharacters)
{
    LogTail::Limits narrow = limits();
    narrow.lineBytes = 10;
    write(QByteArray("0123456789") + "\n" + QByteArray("委托已报成交") + "\n" + QByteArray(25, 'y') + "\n\n.\n");
    LogTail tail(path, narrow);
    EXPECT_EQ(readAll(tail), "<opened>|0123456789|委托已|报成交|yyyyyyyyyy|yyyyyyyyyy|yyyyy||.");
    narrow.blockBytes = 4;
    LogTail slow(path, narrow);
    EXPECT_EQ(readAll(slow), "<opened>|0123456789|委托已|报成交|yyyyyyyyyy|yyyyyyyyyy|yyyyy||.");
}

TEST_F(LogTailTest, ATruncatedFileIsReadFromItsStart)
{
    write("one\ntwo\nthr");
    LogTail tail(path, limits());
    EXPECT_EQ(readAll(tail), "<opened>|one|two");
    write("new\n", QIODevice::Truncate);
    EXPECT_EQ(readAll(tail), "thr|<truncated>|new") << "what was begun is not lost";
    write("a longer text than before\n", QIODevice::Truncate);
    EXPECT_EQ(readAll(tail), "<replaced>|a longer text than before") << "known by what stands in it";
    write({}, QIODevice::Truncate);
    EXPECT_EQ(readAll(tail), "<truncated>");
}

TEST_F(LogTailTest, ARenamedFileIsReadToItsEndAndTheNewOneFromItsStart)
{
    write("one\n");
    LogTail tail(path, limits());
    EXPECT_EQ(readAll(tail), "<opened>|one");
    QFile before(path);
    ASSERT_TRUE(before.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered));
    ASSERT_TRUE(QFile::rename(path, path + QStringLiteral(".1")));
    before.write("late\n");
    write("one\ntwo\nthree\nfour\n");
    EXPECT_EQ(readAll(tail), "late|<replaced>|one|two|three|four");
}

TEST_F(LogTailTest, WhatCannotBeReadIsToldOnceAndTriedAgain)
{
    LogTail tail(path, limits());
    LogRead read;
    EXPECT_TRUE(tail.read(read));
    EXPECT_EQ(read.event, LogFileEvent::Lost);
    EXPECT_EQ(read.problem.toStdString(), "文件不存在，等待它出现");
    EXPECT_FALSE(tail.read(read)) << "told already";
    ASSERT_TRUE(QDir().mkpath(path));
    EXPECT_TRUE(tail.read(read));
    EXPECT_EQ(read.problem.toStdString(), "这是一个文件夹，不是文件");
    ASSERT_TRUE(QDir().rmdir(path));
    write("here\n");
    EXPECT_EQ(readAll(tail), "<opened>|here");
    const QString away = path + QStringLiteral(".away");
    ASSERT_TRUE(QFile::rename(path, away));
    EXPECT_EQ(readAll(tail), "<lost>");
    ASSERT_TRUE(QFile::rename(away, path));
    write("again\n");
    EXPECT_EQ(readAll(tail), "<opened>|again") << "the same file goes on where it was";
#ifdef Q_OS_UNIX
    LogTail device(QStringLiteral("/dev/zero"), limits());
    EXPECT_EQ(readAll(device), "<lost>");
#endif
}
