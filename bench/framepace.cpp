#include "framepace.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEvent>
#include <QtCore/QThread>
#include <QtWidgets/QWidget>
#include <algorithm>
#include <vector>

#include "benchcase.h"

namespace bench {

namespace {

constexpr int framesPerSecond = 60;
constexpr qint64 second = 1000000000; // ns

qint64 timeOf(qint64 frame)
{
    return frame * second / framesPerSecond;
}

void sleepUntil(const QElapsedTimer &clock, qint64 time)
{
    const qint64 left = time - clock.nsecsElapsed();
    if (left > 0)
        QThread::usleep(static_cast<unsigned long>(left / 1000));
}

} // namespace

PaintCount::PaintCount(QWidget *watched)
{
    watched->installEventFilter(this);
}

PaintCount::~PaintCount() = default;

bool PaintCount::eventFilter(QObject *, QEvent *event)
{
    count += event->type() == QEvent::Paint ? 1 : 0;
    return false;
}

void handleEvents()
{
    constexpr int atMost = 1000; // ms; an application that never comes to rest
    QCoreApplication::processEvents(QEventLoop::AllEvents, atMost);
}

FrameTimes pacedFrames(const FramePlan &plan, QWidget *painted, const std::function<void(int count)> &prepare,
                       const std::function<void()> &take)
{
    const PaintCount count(painted);
    std::vector<double> times;
    handleEvents();
    QElapsedTimer clock;
    clock.start();
    const auto end = static_cast<qint64>(plan.seconds * static_cast<double>(second));
    const qint64 mostAtOnce = 2 * plan.updatesPerSecond / framesPerSecond;
    qint64 given = 0;
    qint64 due = 0; ///< updates up to now
    for (qint64 frame = 1; times.empty() || clock.nsecsElapsed() < end; ++frame) {
        frame = std::max(frame, clock.nsecsElapsed() * framesPerSecond / second + 1);
        const qint64 dueNow = timeOf(frame) * plan.updatesPerSecond / second;
        const qint64 updates = std::min(dueNow - due, mostAtOnce);
        prepare(static_cast<int>(updates));
        sleepUntil(clock, timeOf(frame));
        times.push_back(1e3 * secondsOf([&] {
                            take();
                            handleEvents();
                        }));
        due = dueNow;
        given += updates;
    }
    const double seconds = static_cast<double>(clock.nsecsElapsed()) / static_cast<double>(second);
    std::sort(times.begin(), times.end());
    const auto frames = static_cast<long long>(times.size());
    if (10 * count.paints() < 9 * frames) // in a few of them nothing changes that is on the screen
        qFatal("%lld frames were painted %lld times", frames, count.paints());
    const auto at = [&times](double part) {
        return times[static_cast<std::size_t>(part * static_cast<double>(times.size() - 1))];
    };
    return {frames, at(0.5), at(0.99), times.back(), static_cast<double>(given) / seconds};
}

} // namespace bench
