#include "services/logservice.h"

#include <gtest/gtest.h>
#include <log4cxx/logger.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <atomic>
#include <thread>

#include "services/logfileappender.h"
#include "utils/clogcenter.h"

using namespace refhost;

namespace {

/// Collects lines as "level text", without the time.
class Listening
{
public:
    Listening()
    {
        id = LogService::instance().addListener([this](const QString &text, int level) {
            lines << QStringLiteral("%1 %2").arg(level).arg(text.section(QLatin1Char(' '), 1));
            times << text.section(QLatin1Char(' '), 0, 0);
        });
    }
    ~Listening() { LogService::instance().removeListener(id); }

    QStringList lines;
    QStringList times;

private:
    int id;
};

QString contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QStringLiteral("cannot open");
}

} // namespace

TEST(LogService, HandsLinesWithTheirLevelToListeners)
{
    testing::internal::CaptureStderr();
    {
        const Listening listening;
        const log4cxx::LoggerPtr logger = utils::getStdLogger();
        LOG4CXX_DEBUG(logger, "detail");
        LOG4CXX_INFO(logger, "委托已报");
        LOG4CXX_WARN(logger, "行情延迟\n第二行");
        LOG4CXX_ERROR(logger, "连接断开");
        LOG4CXX_FATAL(utils::getLogger("some.other"), "end");
        EXPECT_EQ(listening.lines.join(QLatin1Char('|')).toStdString(),
                  "0 委托已报|1 行情延迟\n第二行|2 连接断开|2 end");
        EXPECT_NE(utils::getLogger(nullptr), nullptr);
        EXPECT_TRUE(QRegExp(QStringLiteral("\\d\\d:\\d\\d:\\d\\d\\.\\d\\d\\d")).exactMatch(listening.times[0]));
    }
    LOG4CXX_INFO(utils::getStdLogger(), "nobody listens");
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_EQ(errors.find("委托已报"), std::string::npos);
    EXPECT_NE(errors.find(" WARN 行情延迟\n第二行\n"), std::string::npos);
    EXPECT_NE(errors.find(" ERROR 连接断开\n"), std::string::npos);
}

TEST(LogService, AListenerGetsTheNewestLinesFromBefore)
{
    for (int i = 0; i < 1005; ++i)
        LOG4CXX_INFO(utils::getStdLogger(), "before " << i);
    std::vector<LogLine> before;
    int heard = 0;
    const int id = LogService::instance().addListener([&heard](const QString &, int) { ++heard; }, &before);
    LOG4CXX_INFO(utils::getStdLogger(), "after");
    LogService::instance().removeListener(id);
    ASSERT_EQ(before.size(), 1000U);
    EXPECT_EQ(before.front().text.section(QLatin1Char(' '), 1).toStdString(), "before 5");
    EXPECT_EQ(before.back().text.section(QLatin1Char(' '), 1).toStdString(), "before 1004");
    EXPECT_EQ(before.back().level, LogInfo);
    EXPECT_EQ(heard, 1);
}

TEST(LogService, AListenerThatLogsDoesNotHearItself)
{
    int heard = 0;
    const int id = LogService::instance().addListener([&heard](const QString &, int) {
        ++heard;
        LOG4CXX_INFO(utils::getStdLogger(), "again");
    });
    LOG4CXX_INFO(utils::getStdLogger(), "once");
    LogService::instance().removeListener(id);
    EXPECT_EQ(heard, 1);
}

TEST(LogService, WritesTheProgramsLinesAndTheDetailsToTwoFiles)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("日志/今天"));
    ASSERT_EQ(LogService::instance().openFiles(path).toStdString(), "");
    ASSERT_EQ(LogService::instance().files().size(), 2);
    const Listening listening;
    LOG4CXX_INFO(utils::getStdLogger(), "委托已报");
    LOG4CXX_DEBUG(utils::getLogger("KDDbgFile"), "[dbg_id=911] 明细");
    const QStringList files = LogService::instance().files();
    LogService::instance().closeFiles();
    LOG4CXX_INFO(utils::getStdLogger(), "later");

    EXPECT_TRUE(contentOf(files[0]).endsWith(QStringLiteral(" INFO 委托已报\n"))) << contentOf(files[0]).toStdString();
    EXPECT_TRUE(contentOf(files[1]).endsWith(QStringLiteral(" DEBUG [dbg_id=911] 明细\n")));
    EXPECT_EQ(listening.lines.join(QLatin1Char('|')).toStdString(), "0 委托已报|0 later");
    EXPECT_TRUE(LogService::instance().files().isEmpty());
}

TEST(LogService, GrownFilesMakeRoom)
{
    QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("grown.log"));
    const auto appender = std::make_shared<LogFileAppender>(path, 100, 2);
    ASSERT_TRUE(appender->open());
    const log4cxx::LoggerPtr logger = utils::getLogger("grown");
    logger->setAdditivity(false);
    logger->addAppender(appender);
    for (int line = 0; line < 12; ++line)
        LOG4CXX_INFO(logger, "line " << line);
    logger->removeAppender(appender);
    appender->close();

    // A line takes 36 or 37 bytes, so that the fourth line of a file finds it grown.
    const auto lineNumbers = [](const QString &text) {
        QStringList numbers;
        for (const QString &line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
            numbers << line.section(QLatin1Char(' '), -1);
        return numbers.join(QLatin1Char(' ')).toStdString();
    };
    EXPECT_EQ(lineNumbers(contentOf(path)), "9 10 11");
    EXPECT_EQ(lineNumbers(contentOf(path + QStringLiteral(".1"))), "6 7 8");
    EXPECT_EQ(lineNumbers(contentOf(path + QStringLiteral(".2"))), "3 4 5");
    EXPECT_FALSE(QFile::exists(path + QStringLiteral(".3")));
}

TEST(LogService, SaysWhyItCannotWriteFiles)
{
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("file")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    EXPECT_NE(LogService::instance().openFiles(file.fileName() + QStringLiteral("/below")), QString());
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("logs/debug.log")));
    EXPECT_NE(LogService::instance().openFiles(folder.filePath(QStringLiteral("logs"))), QString());
    EXPECT_TRUE(LogService::instance().files().isEmpty());
}

TEST(LogService, ListenersComeAndGoWhileOthersLog)
{
    std::atomic<bool> stop{false};
    std::atomic<int> heard{0};
    std::vector<std::thread> writers;
    for (int writer = 0; writer < 3; ++writer)
        writers.emplace_back([&stop] {
            while (!stop)
                LOG4CXX_INFO(utils::getStdLogger(), "line");
        });
    for (int round = 0; round < 200; ++round) {
        const int id = LogService::instance().addListener([&heard](const QString &, int) { ++heard; });
        const int before = heard;
        while (heard == before)
            std::this_thread::yield();
        LogService::instance().removeListener(id);
    }
    stop = true;
    for (std::thread &writer : writers)
        writer.join();
}
