#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "logfile/loglevels.h"
#include "logfile/logtail.h"
#include "threads/callqueue.h"

namespace terminal {

/// Lines of one level, in a row.
struct LogFileBlock
{
    QString text; ///< separated by line feeds
    int level = 0;
    int lines = 0;
};

/// What has become of a file, and what is new in it.
struct LogFileNews
{
    LogFileEvent event = LogFileEvent::None; ///< happened before the blocks
    qint64 skipped = 0;                      ///< bytes passed over in front of the blocks
    std::vector<LogFileBlock> blocks;
    QString problem;        ///< why nothing can be read; empty while all is well
    QString encoding;       ///< "UTF-8" or "GB18030"; empty while all is ASCII
    bool zeroBytes = false; ///< the file is not text alone
};

/// Follows a file: reads it on a thread of its own, looks for news four times a second, and hands them over on the GUI
/// thread, never more at once than a few hundred kilobytes.
class LogFollower : public QObject
{
    Q_OBJECT

public:
    explicit LogFollower(const QString &path, QObject *parent = nullptr) : LogFollower(path, LogTail::Limits(), parent)
    {
    }
    LogFollower(const QString &path, const LogTail::Limits &limits, QObject *parent);
    /// Ends the reading; waits for the step at work.
    ~LogFollower() override;

    void start();
    const QString &path() const { return filePath; }
    /// Everything that the file held when it was looked at last has been handed over.
    bool isCaughtUp() const { return caughtUp; }

Q_SIGNALS:
    void arrived(const terminal::LogFileNews &news);
    /// Once, when isCaughtUp() becomes true for the first time.
    void loaded();

private:
    void run();
    LogFileNews newsOf(LogRead &read);
    bool handOver(LogFileNews news);
    void take();

    const QString filePath;
    core::CallQueue calls; ///< of the reading thread
    LogTail tail;          ///< of the reading thread
    LogLevels levels;      ///< of the reading thread
    std::mutex mutex;      ///< guards everything down to stopping
    std::condition_variable changed;
    std::optional<LogFileNews> waiting; ///< on its way to the GUI thread
    bool atEnd = false;
    bool stopping = false;
    bool caughtUp = false; ///< of the GUI thread
    bool wasLoaded = false;
    std::thread reader;
};

} // namespace terminal
