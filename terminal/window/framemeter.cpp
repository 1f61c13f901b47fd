#include "window/framemeter.h"

#include <algorithm>
#include <cmath>

namespace terminal {

FrameMeter::FrameMeter()
{
    times.reserve(capacity);
}

void FrameMeter::add(double milliseconds)
{
    const auto time = static_cast<float>(milliseconds);
    if (times.size() < capacity)
        times.push_back(time);
    else
        times[static_cast<size_t>(total % capacity)] = time;
    ++total;
    worstTime = std::max(worstTime, milliseconds);
}

void FrameMeter::clear()
{
    times.clear();
    total = 0;
    worstTime = 0;
}

double FrameMeter::percentile(double share) const
{
    return percentileOfNewest(share, capacity);
}

double FrameMeter::percentileOfNewest(double share, int frames) const
{
    const auto wanted = std::min<qint64>({frames, total, capacity});
    if (wanted <= 0)
        return 0;
    std::vector<float> newest;
    newest.reserve(static_cast<size_t>(wanted));
    for (qint64 i = total - wanted; i < total; ++i)
        newest.push_back(times[static_cast<size_t>(i % capacity)]);
    const auto rank =
        std::clamp<qint64>(static_cast<qint64>(std::ceil(share * static_cast<double>(wanted))), 1, wanted);
    const auto at = newest.begin() + (rank - 1);
    std::nth_element(newest.begin(), at, newest.end());
    return static_cast<double>(*at);
}

} // namespace terminal
