#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtTest/QTest>
#include <gtest/gtest.h>
#include <thread>

#include "logfile/logfollower.h"
#include "logfile/programlog.h"
#include "utils/clogcenter.h"

using namespace terminal;

namespace {

void append(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Append));
    file.write(bytes);
}

/// What a follower hands over, as "level:line".
class Follower : public LogFollower
{
public:
    explicit Follower(const QString &path, const LogTail::Limits &limits = LogTail::Limits())
        : LogFollower(path, limits, nullptr)
    {
        QObject::connect(this, &LogFollower::arrived, [this](const LogFileNews &news) {
            EXPECT_EQ(QThread::currentThread(), thread());
            for (const LogFileBlock &block : news.blocks) {
                const QStringList blockLines = block.text.split(QLatin1Char('\n'));
                EXPECT_EQ(blockLines.size(), block.lines);
                for (const QString &line : blockLines)
                    lines << QStringLiteral("%1:%2").arg(block.level).arg(line);
            }
            largest = std::max(largest, news.blocks.empty() ? 0 : news.blocks.back().text.size());
        });
        start();
    }

    QStringList lines;
    int largest = 0;
};

} // namespace

TEST(LogFollower, ALongFileComesInBlocksAndWhole)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.log"));
    QByteArray text;
    QStringList expected;
    for (int i = 0; i < 30000; ++i) {
        text += QByteArray::number(i) + " 委托已报\n";
        expected << QStringLiteral("0:%1 委托已报").arg(i);
    }
    append(path, text);
    LogTail::Limits small;
    small.blockBytes = 4096;
    Follower follower(path, small);
    bool wasLoaded = false;
    QObject::connect(&follower, &LogFollower::loaded, [&] { wasLoaded = true; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return wasLoaded; }, 20000));
    EXPECT_TRUE(follower.isCaughtUp());
    EXPECT_TRUE(follower.lines == expected) << follower.lines.size();
    EXPECT_LE(follower.largest, 4096);
}

TEST(LogFollower, EndsWhileTheGuiThreadDoesNotTakeAnything)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.log"));
    append(path, QByteArray("line\n").repeated(100000));
    LogTail::Limits small;
    small.blockBytes = 64;
    {
        Follower follower(path, small);
        QThread::msleep(20);
        EXPECT_TRUE(follower.lines.isEmpty());
    }
    QCoreApplication::processEvents(); // what was on its way goes nowhere
}

TEST(ProgramLog, LinesOfAllThreadsArriveOnTheGuiThreadAfterThoseFromBefore)
{
    static int run = 0; // the log keeps the lines of a test that is repeated
    const QString before = QStringLiteral("program log test: before %1").arg(++run);
    LOG4CXX_INFO(utils::getStdLogger(), before.toStdString());
    ProgramLog log;
    QStringList lines;
    bool started = false;
    QObject::connect(&log, &ProgramLog::arrived, [&](const QString &text, int level) {
        for (const QString &line : text.split(QLatin1Char('\n'))) {
            const QString message = line.section(QLatin1Char(' '), 1);
            started = started || message == before;
            if (started)
                lines << QStringLiteral("%1:%2").arg(level).arg(message);
        }
    });
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number)
        threads.emplace_back([number] {
            for (int i = 0; i < 50; ++i)
                LOG4CXX_INFO(utils::getStdLogger(), "t" << number << " " << i);
        });
    for (std::thread &thread : threads)
        thread.join();
    ASSERT_TRUE(QTest::qWaitFor([&] { return lines.size() >= 201; }));
    EXPECT_EQ(lines.takeFirst(), QStringLiteral("0:") + before);
    for (int number = 0; number < 4; ++number) {
        const QStringList own = lines.filter(QStringLiteral("0:t%1 ").arg(number));
        ASSERT_EQ(own.size(), 50);
        for (int i = 0; i < 50; ++i)
            EXPECT_EQ(own[i], QStringLiteral("0:t%1 %2").arg(number).arg(i));
    }
}
