#pragma once

#include <QtCore/QRegularExpression>
#include <QtCore/QString>

namespace terminal {

/// Tells the level of the lines of a log, in their order: by a word such as ERROR or 警告 near a line's beginning.
/// Indented lines belong to the one above. One thread at a time.
class LogLevels
{
public:
    LogLevels();

    /// A refhost::LogLevel.
    int levelOf(const QString &line);
    /// The next line belongs to nothing.
    void restart();

private:
    const QRegularExpression words;
    int previous;
};

} // namespace terminal
