#pragma once

#include <QtCore/QString>
#include <functional>

#include "refhostexport.h"

namespace refhost {

/// Levels of log lines as the log panel counts them.
enum LogLevel : int
{
    LogInfo = 0, ///< and all below
    LogWarning = 1,
    LogError = 2
};

/// A line that was logged, as listeners get it.
struct LogLine
{
    QString text;
    int level = LogInfo;
};

/// Takes a log line without date: "09:30:00.120 text", perhaps of several lines.
using LogListener = std::function<void(const QString &text, int level)>;

} // namespace refhost
