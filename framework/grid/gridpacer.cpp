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
    if (timer.isActive() && due <= lastFrame + frameMilliseconds)
        return; // no frame can be sooner; thousands of changes need not ask the clock
    const qint64 wanted = std::max(now() + milliseconds, lastFrame + frameMilliseconds);
    if (timer.isActive() && due <= wanted)
        return;
    due = wanted;
    timer.start(static_cast<int>(std::max<qint64>(0, wanted - now())), Qt::PreciseTimer, this);
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
