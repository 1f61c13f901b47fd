#include "feed/playclock.h"

#include <algorithm>
#include <cmath>

namespace feed {

PlayClock::PlayClock(double givenFactor, qint64 gap) : longestGap(gap), factor(std::max(0.0, givenFactor)) {}

double PlayClock::marketTime(Time now) const
{
    if (factor == 0.0)
        return anchorMarket;
    // At infinite speed market time is where the last event was.
    if (std::isinf(factor))
        return double(lastPlayed);
    return anchorMarket + std::chrono::duration<double, std::milli>(now - anchor).count() * factor;
}

void PlayClock::setSpeed(double givenFactor, Time now)
{
    if (started) {
        anchorMarket = marketTime(now);
        anchor = now;
    }
    factor = std::max(0.0, givenFactor);
}

bool PlayClock::isDue(qint64 next, Time now)
{
    if (!started || (next - lastPlayed > longestGap && factor > 0.0)) {
        started = true;
        anchor = now;
        anchorMarket = double(next);
        lastPlayed = next;
    }
    const bool isDue = std::isinf(factor) || double(next) <= marketTime(now);
    if (isDue)
        lastPlayed = next;
    return isDue;
}

std::optional<PlayClock::Time> PlayClock::due(qint64 next, Time now) const
{
    if (factor == 0.0)
        return std::nullopt;
    if (std::isinf(factor))
        return now;
    const double wait = std::clamp((double(next) - marketTime(now)) / factor, 0.0, 3600e3);
    return now + std::chrono::microseconds(std::llround(wait * 1000));
}

} // namespace feed
