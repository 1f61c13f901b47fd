#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <memory>

#include "threads/callqueue.h"

namespace terminal {

/// Brings what the program logs, on whichever thread, to the GUI thread, together with the lines from before. While the
/// GUI thread is busy the newest 50,000 lines wait.
class ProgramLog : public QObject
{
    Q_OBJECT

public:
    explicit ProgramLog(QObject *parent = nullptr);
    ~ProgramLog() override;

    /// Hands over at once what has not been handed over yet. GUI thread.
    void take();

Q_SIGNALS:
    /// Lines of one level, separated by line feeds, in the order in which they were logged.
    void arrived(const QString &text, int level);

private:
    struct State;
    core::CallQueue calls;        ///< of whoever logs
    std::shared_ptr<State> state; ///< shared with the listener, which may be at work when this ends
    int listener = 0;
};

} // namespace terminal
