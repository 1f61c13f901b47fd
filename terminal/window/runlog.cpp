#include "window/runlog.h"

#include <log4cxx/logger.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <cmath>

#include "services/logservice.h"
#include "services/userconfig.h"
#include "utils/clogcenter.h"

namespace terminal {

namespace {

QString absolute(const QString &path)
{
    return QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
}

QString speedText(double speed)
{
    return std::isfinite(speed) ? QStringLiteral("%1 倍").arg(speed) : QStringLiteral("最快");
}

QString countsText(const feed::FeedCounters &counters)
{
    return QStringLiteral("委托 %1，成交 %2，行情 %3，警告 %4，错误 %5")
        .arg(counters.orders)
        .arg(counters.deals)
        .arg(counters.quotes)
        .arg(counters.warnings)
        .arg(counters.errors);
}

QString durationText(qint64 milliseconds)
{
    const qint64 seconds = milliseconds / 1000;
    const QLatin1Char zero('0');
    return QStringLiteral("%1:%2:%3")
        .arg(seconds / 3600, 2, 10, zero)
        .arg(seconds / 60 % 60, 2, 10, zero)
        .arg(seconds % 60, 2, 10, zero);
}

} // namespace

RunLog::RunLog()
{
    sinceStart.start();
}

void RunLog::info(const QString &text)
{
    LOG4CXX_INFO(utils::getStdLogger(), text.toStdString());
}

void RunLog::error(const QString &text)
{
    LOG4CXX_ERROR(utils::getStdLogger(), text.toStdString());
}

void RunLog::tellStart(const Options &options, const QString &source) const
{
    info(QStringLiteral("启动：版本 %1，Qt %2，行情 %3，速度 %4")
             .arg(QStringLiteral(TERMINAL_VERSION), QLatin1String(qVersion()), source, speedText(options.speed)));
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (!arguments.isEmpty())
        info(QStringLiteral("启动参数：%1").arg(arguments.join(QLatin1Char(' '))));
}

void RunLog::tellFiles(const Options &options, const refhost::UserConfig &settings) const
{
    const QStringList logs = refhost::LogService::instance().files();
    if (!logs.isEmpty())
        info(QStringLiteral("日志文件：%1，详细日志：%2").arg(absolute(logs.value(0)), absolute(logs.value(1))));
    const QString config = settings.path();
    if (!config.isEmpty())
        // A file that was made a moment ago has nothing in it yet.
        info((QFileInfo(config).size() > 0 ? QStringLiteral("设置文件：%1") : QStringLiteral("设置文件：%1（新建）"))
                 .arg(absolute(config)));
    if (!options.logFile.isEmpty())
        info(QStringLiteral("显示日志文件：%1").arg(absolute(options.logFile)));
}

void RunLog::tellMarketEnd(const feed::FeedCounters &counters) const
{
    info(QStringLiteral("行情结束：%1").arg(countsText(counters)));
}

void RunLog::tellEnd(const feed::FeedCounters &counters, refhost::UserConfig &settings) const
{
    const QString config = settings.path();
    if (!config.isEmpty() && settings.flush()) // of a failure the log tells already
        info(QStringLiteral("设置已保存：%1").arg(absolute(config)));
    info(QStringLiteral("退出：运行 %1，%2").arg(durationText(sinceStart.elapsed()), countsText(counters)));
}

} // namespace terminal
