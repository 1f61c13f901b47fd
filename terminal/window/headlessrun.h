#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <functional>

#include "window/options.h"

namespace terminal {

class FeedPump;
class MainWindow;

/// A run without a user: plays until the feed is finished and shown or the time is over, takes the screenshots and
/// tells in one line of JSON what was done.
class HeadlessRun : public QObject
{
    Q_OBJECT

public:
    HeadlessRun(FeedPump &pump, MainWindow &window, const Options &options);
    ~HeadlessRun() override;

    /// Runs the event loop. The program's exit status: 0, or 2 when the data could not be used or a screenshot not be
    /// written; the log says why.
    int run();

private:
    void finish();
    void settle();
    void measure();
    void complete();
    bool takeShots();
    bool takePages(const QString &look);
    bool takeShot(const QString &name) const;
    /// With each theme at each scale; look: "dark-100" and so on. Ends with the first false.
    bool inEveryLook(const std::function<bool(const QString &look)> &take);
    QByteArray report() const;

    FeedPump &pump;
    MainWindow &window;
    const Options options;
    QSize size; ///< of the window at 100 %
    QTimer timeOver;
    QTimer settling;
    QElapsedTimer settlingTime;
    QElapsedTimer clock;
    bool measured = false;
    double seconds = 0;
    double worstStall = 0;
};

} // namespace terminal
