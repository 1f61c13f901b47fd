#pragma once

#include <vector>

namespace core {

/// Counts in a row, with their running starts: which count an index falls into and how many lie in front of a count,
/// each in logarithmic time. A Fenwick tree over the counts. Not thread-safe.
class RunningCounts
{
public:
    struct Place
    {
        int ordinal; ///< of the count
        int offset;  ///< within it
    };

    int total() const { return sum; }
    /// The sum of the counts in front of `ordinal`.
    int start(int ordinal) const;
    /// Where an index from 0 to total() - 1 falls.
    Place find(int index) const;
    void add(int ordinal, int delta);

    /// Linear in the number of counts, like remove() and assign().
    void insert(int ordinal, int count);
    void remove(int ordinal);
    void assign(std::vector<int> newCounts);

private:
    void rebuild();

    std::vector<int> counts;
    std::vector<int> tree;
    int topStep = 1; ///< the largest power of two that is no larger than the number of counts
    int sum = 0;
};

} // namespace core
