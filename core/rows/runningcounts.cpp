#include "rows/runningcounts.h"

#include <numeric>

namespace core {

void RunningCounts::assign(std::vector<int> newCounts)
{
    counts = std::move(newCounts);
    rebuild();
}

void RunningCounts::insert(int ordinal, int count)
{
    counts.insert(counts.begin() + ordinal, count);
    rebuild();
}

void RunningCounts::remove(int ordinal)
{
    counts.erase(counts.begin() + ordinal);
    rebuild();
}

void RunningCounts::rebuild()
{
    tree = counts;
    sum = std::accumulate(counts.begin(), counts.end(), 0);
    const std::size_t size = tree.size();
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t parent = i | (i + 1);
        if (parent < size)
            tree[parent] += tree[i];
    }
    topStep = 1;
    while (static_cast<std::size_t>(topStep) * 2 <= size)
        topStep *= 2;
}

void RunningCounts::add(int ordinal, int delta)
{
    sum += delta;
    counts[static_cast<std::size_t>(ordinal)] += delta;
    for (auto i = static_cast<std::size_t>(ordinal); i < tree.size(); i |= i + 1)
        tree[i] += delta;
}

int RunningCounts::start(int ordinal) const
{
    int result = 0;
    for (int i = ordinal; i > 0; i &= i - 1)
        result += tree[static_cast<std::size_t>(i) - 1];
    return result;
}

RunningCounts::Place RunningCounts::find(int index) const
{
    int ordinal = 0;
    for (int step = topStep; step > 0; step /= 2) {
        const auto next = static_cast<std::size_t>(ordinal + step);
        if (next <= tree.size() && tree[next - 1] <= index) {
            ordinal += step;
            index -= tree[next - 1];
        }
    }
    return {ordinal, index};
}

} // namespace core
