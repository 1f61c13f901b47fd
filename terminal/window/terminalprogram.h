#pragma once

#include <QtCore/QString>
#include <memory>

#include "window/options.h"
#include "window/runlog.h"

class QApplication;
class QTranslator;

namespace refhost {
class UserConfig;
}

namespace terminal {

class FeedPump;
class MainWindow;
class TradeDesk;

/// From now on what Qt has to say goes to the program's log, until a TerminalProgram ends.
void logQtMessages();

/// The program behind the options: services, feed and window, put together and run. GUI thread; one at a time.
class TerminalProgram
{
public:
    TerminalProgram(QApplication &application, const Options &options);
    ~TerminalProgram();
    TerminalProgram(const TerminalProgram &) = delete;
    TerminalProgram &operator=(const TerminalProgram &) = delete;

    /// Runs until the user closes the window, or as --headless says. The exit status: 0, or 2 for data or folders that
    /// cannot be used.
    int run();

private:
    bool openLog();
    void openConfiguration();
    void makeFeed();
    bool makeDesk();
    void showWindow();
    int runHeadless();
    int runWithUser();
    QString sourceText() const;

    const Options options;
    const RunLog runLog;
    const std::unique_ptr<QTranslator> qtTexts;
    refhost::UserConfig *settings = nullptr; ///< while the program runs
    std::unique_ptr<FeedPump> pump;
    std::unique_ptr<TradeDesk> desk;    ///< heard by the pump
    std::unique_ptr<MainWindow> window; ///< refers to pump and desk
};

} // namespace terminal
