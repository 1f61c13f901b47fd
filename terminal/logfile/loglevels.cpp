#include "logfile/loglevels.h"

#include "services/logline.h"

namespace terminal {

namespace {

/// Characters in which a level stands, if a line has one.
constexpr int searched = 100;

/// Capital words anywhere, small ones only where they cannot be a part of a sentence; the first group is an error.
const QString levelWords = QStringLiteral(
    "(\\b(?:ERROR|ERR|FATAL|SEVERE|CRITICAL|EMERG|ALERT)\\b|[\\[<](?:error|err|fatal|critical|Error)[\\]>]|"
    "\\blevel=\"?(?:error|fatal|critical)|错误|严重)|"
    "\\b(?:WARN|WARNING)\\b|[\\[<](?:warn|warning|Warning)[\\]>]|\\blevel=\"?warn|警告");

} // namespace

LogLevels::LogLevels() : words(levelWords), previous(refhost::LogInfo)
{
    words.optimize();
}

int LogLevels::levelOf(const QString &line)
{
    if (!line.isEmpty() && line.at(0).isSpace())
        return previous;
    const QRegularExpressionMatch match = words.match(line.left(searched));
    if (!match.hasMatch())
        previous = refhost::LogInfo;
    else
        previous = match.capturedLength(1) > 0 ? refhost::LogError : refhost::LogWarning;
    return previous;
}

void LogLevels::restart()
{
    previous = refhost::LogInfo;
}

} // namespace terminal
