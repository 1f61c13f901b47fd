#include "services/logservice.h"

#include <log4cxx/logger.h>
#include <log4cxx/logmanager.h>
#include <log4cxx/spi/loggerrepository.h>

#include <QtCore/QDir>
#include <clocale>
#include <mutex>
#include <vector>

#include "services/logappender.h"
#include "services/logfileappender.h"
#include "utils/clogcenter.h"

namespace refhost {

namespace {

constexpr char debugFileLogger[] = "KDDbgFile";
constexpr qint64 fileSize = 20 << 20;
constexpr int olderFiles = 5;

/// log4cxx reads messages in the charset of the locale, and in the "C" locale every Chinese character would become "?".
void useUtf8()
{
    const QByteArray locale = QByteArray(std::setlocale(LC_CTYPE, nullptr)).toLower();
    if (!locale.contains("utf-8") && !locale.contains("utf8"))
        std::setlocale(LC_CTYPE, "C.UTF-8");
}

} // namespace

struct LogService::State
{
    std::shared_ptr<LogAppender> lines = std::make_shared<LogAppender>();
    mutable std::mutex mutex; ///< guards what follows
    log4cxx::AppenderPtr programFile;
    log4cxx::AppenderPtr debugFile;
    QStringList files;

    void closeFiles()
    {
        if (programFile != nullptr)
            log4cxx::Logger::getRootLogger()->removeAppender(programFile);
        if (debugFile != nullptr) {
            log4cxx::Logger::getLogger(debugFileLogger)->setLevel(log4cxx::Level::getOff());
            log4cxx::Logger::getLogger(debugFileLogger)->removeAppender(debugFile);
        }
        for (const log4cxx::AppenderPtr &file : {programFile, debugFile})
            if (file != nullptr)
                file->close();
        programFile.reset();
        debugFile.reset();
        files.clear();
    }
};

LogService &LogService::instance()
{
    // Never destroyed: destructors of other static objects may log.
    static LogService *service = new LogService;
    return *service;
}

LogService::LogService() : state(std::make_unique<State>())
{
    useUtf8();
    const log4cxx::LoggerPtr root = log4cxx::Logger::getRootLogger();
    root->setLevel(log4cxx::Level::getInfo());
    root->addAppender(state->lines);
    // Details are for the file alone: off until there is one, or log4cxx complains that nothing takes them.
    const log4cxx::LoggerPtr debugFile = log4cxx::Logger::getLogger(debugFileLogger);
    debugFile->setAdditivity(false);
    debugFile->setLevel(log4cxx::Level::getOff());
    root->getLoggerRepository()->setConfigured(true);
}

LogService::~LogService() = default;

QString LogService::openFiles(const QString &folder)
{
    const std::lock_guard<std::mutex> lock(state->mutex);
    state->closeFiles();
    const QDir dir(folder);
    if (!dir.mkpath(QStringLiteral(".")))
        return QStringLiteral("无法创建日志目录 %1").arg(folder);
    const QStringList paths{dir.absoluteFilePath(QStringLiteral("terminal.log")),
                            dir.absoluteFilePath(QStringLiteral("debug.log"))};
    std::vector<std::shared_ptr<LogFileAppender>> opened;
    for (const QString &path : paths) {
        opened.push_back(std::make_shared<LogFileAppender>(path, fileSize, olderFiles));
        if (!opened.back()->open())
            return QStringLiteral("无法写入日志文件 %1：%2").arg(path, opened.back()->errorText());
    }
    state->programFile = opened[0];
    state->debugFile = opened[1];
    log4cxx::Logger::getRootLogger()->addAppender(state->programFile);
    log4cxx::Logger::getLogger(debugFileLogger)->addAppender(state->debugFile);
    log4cxx::Logger::getLogger(debugFileLogger)->setLevel(log4cxx::Level::getDebug());
    state->files = paths;
    return {};
}

void LogService::closeFiles()
{
    const std::lock_guard<std::mutex> lock(state->mutex);
    state->closeFiles();
}

QStringList LogService::files() const
{
    const std::lock_guard<std::mutex> lock(state->mutex);
    return state->files;
}

int LogService::addListener(LogListener listener, std::vector<LogLine> *before)
{
    return state->lines->addListener(std::move(listener), before);
}

void LogService::removeListener(int id)
{
    state->lines->removeListener(id);
}

} // namespace refhost
