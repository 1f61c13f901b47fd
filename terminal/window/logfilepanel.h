#pragma once

#include "logfile/logfollower.h"
#include "window/logpanel.h"

namespace terminal {

/// A panel with the log in a file, which is followed as it grows.
class LogFilePanel : public LogPanel
{
    Q_OBJECT

public:
    LogFilePanel(const QString &path, int widgetId, QWidget *parent = nullptr);
    ~LogFilePanel() override;

    bool isSettled() override;

private:
    void take(const LogFileNews &news);
    void tellEvent(const LogFileNews &news);
    QString standingNotice() const;

    LogFollower follower;
    QString problem;
    QString encoding;
    qint64 skipped = 0; ///< bytes, at the last opening
    bool zeroBytes = false;
    bool wasOpened = false;
};

} // namespace terminal
