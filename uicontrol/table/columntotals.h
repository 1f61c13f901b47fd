#pragma once

#include <map>
#include <vector>

#include "stats/exactsum.h"

namespace KV {

/// Exact sums of columns over the rows of a table, with what each row counts for: one value that becomes another costs
/// some nanoseconds, whatever the number of rows. Rows are named by their places. GUI thread.
class ColumnTotals
{
public:
    /// values: by place; the largest double counts for nothing.
    void count(int field, std::vector<double> values);
    /// Nothing for a field that is not counted.
    void change(int field, std::size_t place, double value);
    /// Has the processor fetch what a change at this place reads.
    void prefetch(int field, std::size_t place) const;
    /// Null for a field that is not counted.
    const core::ExactSum *sum(int field) const;
    /// No field is counted any more.
    void clear();

private:
    struct Total
    {
        core::ExactSum sum;
        std::vector<double> values;
    };
    std::map<int, Total> totals; ///< by field
};

} // namespace KV
