#pragma once

#include <QtCore/QtGlobal>
#include <vector>

namespace terminal {

/// Counts the frames that a window painted and how long each took. The newest `capacity` times are kept for the
/// percentiles, so memory stays bounded.
class FrameMeter
{
public:
    static constexpr int capacity = 4096;

    FrameMeter();

    void add(double milliseconds);
    void clear();

    qint64 count() const { return total; }
    double worst() const { return worstTime; }
    /// The time that this share (0 to 1) of the kept frames did not exceed; 0 without frames. Costs a partial sort.
    double percentile(double share) const;
    /// The same over the newest `frames` only.
    double percentileOfNewest(double share, int frames) const;

private:
    std::vector<float> times; ///< a ring once it is full
    qint64 total = 0;
    double worstTime = 0;
};

} // namespace terminal
