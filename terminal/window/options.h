#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <optional>

#include "theme/themepalette.h"

namespace terminal {

/// What the command line asks for. Absent values are left to the user's configuration.
struct Options
{
    QStringList replayPaths;       ///< files and folders; none for the simulated exchange
    double speed = 1;              ///< seconds of market time in a second; feed::MarketFeed::maxSpeed for "max"
    quint64 seed = 1;              ///< of the simulated exchange
    bool headless = false;         ///< off screen, without a user
    std::optional<double> seconds; ///< ends after so long
    QString shotsDir;              ///< where screenshots go; empty for none
    bool tour = false;             ///< screenshots of every feature of the tables too
    std::optional<QSize> size;     ///< of the window, in pixels at 100 %
    std::optional<bool> dark;
    std::optional<refhost::RiseFall> riseFall;
    std::optional<int> scale; ///< in per cent
    QString logFile;          ///< to show and to follow; empty for none
    QString logDir;
    QString deskFile; ///< of the paper desk; empty for none
    QString configFile;
};

/// The outcome of reading a command line: options to run with, or a text to print and the status to exit with.
struct ParsedOptions
{
    enum class Action
    {
        Run,
        Print, ///< `text` goes to the standard output, exit status 0
        Refuse ///< `text` says what is wrong, exit status 2
    };
    Action action = Action::Run;
    Options options;
    QString text;
};

/// Reads a command line; the first argument is the program's name. Needs no application object.
ParsedOptions parseOptions(const QStringList &arguments);

} // namespace terminal
