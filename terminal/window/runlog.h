#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>

#include "feed/feedbatch.h"
#include "window/options.h"

namespace refhost {
class UserConfig;
}

namespace terminal {

/// What the program's log says of a run as a whole: what it began with, which files it uses, how it ended. GUI thread;
/// needs a QApplication.
class RunLog
{
public:
    RunLog();

    /// The version, the market and the command line.
    void tellStart(const Options &options, const QString &source) const;
    /// The files that are written and read besides the market's: log files, settings, a log that is shown.
    void tellFiles(const Options &options, const refhost::UserConfig &settings) const;
    /// The feed has ended and all of it is in the tables.
    void tellMarketEnd(const feed::FeedCounters &counters) const;
    /// The run is over. The user's settings are written out first, so that the line tells the truth about them.
    void tellEnd(const feed::FeedCounters &counters, refhost::UserConfig &settings) const;

    static void info(const QString &text);
    static void error(const QString &text);

private:
    QElapsedTimer sinceStart;
};

} // namespace terminal
