#pragma once

#include <QtCore/QObject>
#include <functional>

class QWidget;

namespace bench {

/// Counts how often a widget was painted while this lives.
class PaintCount : public QObject
{
    Q_OBJECT

public:
    explicit PaintCount(QWidget *watched);
    ~PaintCount() override;

    long long paints() const { return count; }

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    long long count = 0;
};

/// What came of a run of frames; times in milliseconds.
struct FrameTimes
{
    long long frames = 0;
    double median = 0;
    double p99 = 0; ///< 99 of 100 stay below
    double worst = 0;
    double updatesPerSecond = 0; ///< that were taken in
};

/// A feed by the clock.
struct FramePlan
{
    double seconds = 0;
    int updatesPerSecond = 0;
};

/// Handles events until there are none left: posted ones, timers that are due, the painting that they ask for.
void handleEvents();

/// Sixty frames a second by the clock. A frame gets the updates that have come due since the one before, and its time
/// is that of `take` and of every event that is there then; between frames the thread sleeps, so that no work of the
/// table stays uncounted. Who takes longer than a frame misses the next ones, and has to take up to two frames' updates
/// at once; more than that is left out and shows in the rate. `prepare` makes so many updates, outside of the clock.
/// Fails loudly when most frames were not painted. At least one frame.
FrameTimes pacedFrames(const FramePlan &plan, QWidget *painted, const std::function<void(int count)> &prepare,
                       const std::function<void()> &take);

} // namespace bench
