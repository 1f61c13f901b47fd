#pragma once

#include <QtCore/QStringList>
#include <memory>
#include <vector>

#include "services/logline.h"

namespace refhost {

/// Where log lines go. From the first logger that anybody asks for, warnings and errors go to the standard error; files
/// and listeners are asked for here. Any thread.
class REFHOST_API LogService
{
public:
    static LogService &instance();

    /// Writes, from now on, the lines of the program to `terminal.log` in the folder and those of the debug file to
    /// `debug.log` there, in UTF-8; each keeps five older files of 20 MB. Makes the folder. Returns an empty text, or
    /// what went wrong, and then writes no files.
    QString openFiles(const QString &folder);
    void closeFiles();
    /// The files that are written to now; empty without openFiles().
    QStringList files() const;

    /// Hands every line from info on to a function, on the thread that logs, without any lock; lines that the function
    /// logs itself are not handed out. `before` gets the lines from before, the newest 1,000 of them. Returns what
    /// removeListener() takes.
    int addListener(LogListener listener, std::vector<LogLine> *before = nullptr);
    /// A line that is under way on another thread may still arrive just after this.
    void removeListener(int id);

    LogService(const LogService &) = delete;
    LogService &operator=(const LogService &) = delete;

private:
    LogService();
    ~LogService();
    struct State;
    std::unique_ptr<State> state;
};

} // namespace refhost
