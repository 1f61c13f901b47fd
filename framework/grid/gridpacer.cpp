#include "grid/gridpacer.h"

#include <QtCore/QTimerEvent>
#include <algorithm>
#include <utility>

namespace ZB {

GridPacer::GridPacer(std::function<void()> onFrame) : frame(std::move(onFrame))
{
    clock.start();
}

void GridPacer::request()
{
    requestIn(0);
}

void GridPacer::requestIn(int milliseconds)
{
    if (timer.isActive() && soonest)
        return; // thousands of changes need not ask the clock
    const qint64 present = now();
    const qint64 wanted = std::max(present + milliseconds, lastFrame + frameMilliseconds);
    soonest = wanted <= std::max(present, lastFrame + frameMilliseconds);
    if (timer.isActive() && due <= wanted)
        return;
    due = wanted;
    timer.start(static_cast<int>(wanted - present), Qt::PreciseTimer, this);
}

void GridPacer::done()
{
    timer.stop();
    lastFrame = now();
}

void GridPacer::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != timer.timerId())
        return;
    timer.stop();
    frame();
}

} // namespace ZB
