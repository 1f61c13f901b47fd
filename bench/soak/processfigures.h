#pragma once

#include <QtCore/QString>
#include <vector>

namespace soak {

/// What a process holds at one moment, and how long its window was held up since the moment before.
struct Figures
{
    double seconds = 0; ///< since the start
    double megabytes = 0;
    int threads = 0;
    int descriptors = 0;
    double worstStall = 0; ///< milliseconds
    double waited = 0;     ///< for a core that others had, since the moment before, in milliseconds
};

/// Memory, threads and descriptors of this process, from /proc.
Figures presentFigures();

/// How long this thread has waited for a core that others had, in milliseconds since it began; 0 where the system does
/// not tell.
double waitedForCore();

/// Compares the last third of a run with the one before it; the first third is for warming up. Returns what has grown,
/// in words; empty when nothing has. Growth is: memory by more than 5 per cent and 16 MB between the medians, a thread
/// or a descriptor more at the least (an export holds one for a moment), stalls twice as long in the median and over a
/// frame of 1/60 second. A single stall of more than two seconds counts as well, whatever was before, but for the time
/// that the window's thread waited for a core.
QString growth(const std::vector<Figures> &samples);

} // namespace soak
