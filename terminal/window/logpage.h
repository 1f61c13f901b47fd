#pragma once

#include "logfile/programlog.h"
#include "window/page.h"
#include "zb/cuiresourcechangehandler.h"

class QSplitter;

namespace terminal {

class LogFilePanel;
class LogPanel;

/// What the program logs, and above it a log file, if one is followed.
class LogPage : public Page, public ZB::CUiResourceChangeHandler
{
    Q_OBJECT

public:
    explicit LogPage(QWidget *parent = nullptr);
    ~LogPage() override;

    /// Shows a file from now on. Once at most.
    void follow(const QString &path);
    LogPanel &programPanel() const { return *program; }
    /// Null when no file is followed.
    LogFilePanel *filePanel() const { return file; }

    std::vector<Panel *> panels() const override;
    bool isSettled() override;
    void showNow() override;
    void toggleLayout() override;
    void loadState() override;
    void saveState() const override;

    void themeChanged() override;

Q_SIGNALS:
    /// The user wants to send the program's logs to those who look after it.
    void sendRequested();

private:
    ProgramLog programLog;
    QSplitter *splitter;
    LogFilePanel *file = nullptr;
    LogPanel *program;
};

} // namespace terminal
