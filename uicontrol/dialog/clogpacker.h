#pragma once

#include <QtCore/QStringList>
#include <QtCore/QVector>
#include <atomic>
#include <memory>

#include "dialog/logfileentry.h"
#include "uicontrolexport.h"

namespace KV {

class CLogPackFolder;

/// What is to be packed.
struct LogPackRequest
{
    QVector<LogFileEntry> files;
    QStringList accounts;                      ///< numbers to mask wherever they stand
    qint64 mostPacked = qint64(2000) << 20;    ///< bytes of the zip file; a larger one is a problem
    QString name = QStringLiteral("logs.zip"); ///< of the zip file in its folder
};

/// A zip file with masked copies of log files, in a temporary folder that lives as long as this does.
struct UICONTROL_API LogPack
{
    LogPack();
    ~LogPack();
    LogPack(const LogPack &) = delete;
    LogPack &operator=(const LogPack &) = delete;

    /// @name While the work is under way; any thread
    /// @{
    std::atomic<qint64> readBytes{0};   ///< of the log files, so far
    std::atomic<bool> cancelled{false}; ///< to be set by whoever wants no pack any more
    std::atomic<bool> finished{false};  ///< what follows is complete
    /// @}

    QString problem;       ///< why there is no zip file, in words for the user; empty when there is
    QStringList notes;     ///< about files that are not in it as they should be
    QString path;          ///< of the zip file
    qint64 size = 0;       ///< of the zip file, bytes
    qint64 totalBytes = 0; ///< of the files
    int fileCount = 0;     ///< in the zip file
    std::unique_ptr<CLogPackFolder> folder;
};

/// The most bytes that the files of a pack may have together; more is a problem of the pack.
constexpr qint64 mostLogBytes = qint64(2) << 30;

/// Fills a pack, and sets `finished` at the end. The files are only read, as far as they reached at the start: a file
/// that grows meanwhile stays cut there, one that is renamed is read on under its new name (the newest of them: not
/// every file is held open at once), and one that has become shorter is named in the notes. Personal data in a file's
/// name is masked too. A cancelled or failed pack has no folder. Not for the GUI thread.
UICONTROL_API void packLogs(const LogPackRequest &request, LogPack &pack);

} // namespace KV
