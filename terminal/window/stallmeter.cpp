#include "window/stallmeter.h"

#include <QtCore/QTimerEvent>
#include <algorithm>

namespace terminal {

namespace {
constexpr int intervalMs = 4;
}

StallMeter::StallMeter(QObject *parent) : QObject(parent) {}

StallMeter::~StallMeter() = default;

void StallMeter::restart()
{
    worstSoFar = 0;
    recentWorst = 0;
    timer.start(intervalMs, Qt::PreciseTimer, this);
    sinceTick.start();
}

void StallMeter::stop()
{
    worstSoFar = worst();
    timer.stop();
}

double StallMeter::worst() const
{
    return std::max(worstSoFar, lateness());
}

double StallMeter::takeRecentWorst()
{
    const double result = std::max(recentWorst, lateness());
    recentWorst = 0;
    return result;
}

void StallMeter::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != timer.timerId())
        return;
    worstSoFar = worst();
    recentWorst = std::max(recentWorst, lateness());
    sinceTick.start();
}

double StallMeter::lateness() const
{
    if (!timer.isActive())
        return 0;
    return std::max(0.0, static_cast<double>(sinceTick.nsecsElapsed()) / 1e6 - intervalMs);
}

} // namespace terminal
