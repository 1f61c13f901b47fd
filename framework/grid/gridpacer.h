#pragma once

#include <QtCore/QBasicTimer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <functional>

namespace ZB {

/// Turns any number of requests into frames that are at least 16 ms apart. The first request after a rest is answered
/// by the event loop's next turn. GUI thread.
class GridPacer : public QObject
{
    Q_OBJECT

public:
    static constexpr int frameMilliseconds = 16;

    explicit GridPacer(std::function<void()> frame);

    void request();
    /// A frame after that time unless one comes earlier.
    void requestIn(int milliseconds);
    /// A frame has been shown now; nothing that was requested is left to do.
    void done();
    /// Milliseconds of a steady clock.
    qint64 now() const { return clock.elapsed(); }

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    std::function<void()> frame;
    QElapsedTimer clock;
    QBasicTimer timer;
    qint64 lastFrame = -frameMilliseconds;
    qint64 due = 0;       ///< while the timer runs
    bool soonest = false; ///< no frame could be due sooner than the one that the timer runs for
};

} // namespace ZB
