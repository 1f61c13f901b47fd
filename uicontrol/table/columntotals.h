#pragma once

#include <map>
#include <vector>

#include "stats/exactsum.h"

namespace KV {

/// The exact sum of one column over the rows of a table, with what each row counts for: one value that becomes another
/// costs some nanoseconds, whatever the number of rows. Rows are named by their places. GUI thread.
class ColumnTotal
{
public:
    /// values: by place; the largest double counts for nothing.
    explicit ColumnTotal(std::vector<double> values);
    void change(std::size_t place, double value);
    /// Has the processor fetch what a change at this place reads.
    void prefetch(std::size_t place) const;
    double sum() const { return total.value(); }

private:
    core::ExactSum total;
    std::vector<double> values;
};

/// Those of a table's columns that are counted.
class ColumnTotals
{
public:
    const ColumnTotal &count(int field, std::vector<double> values);
    /// Null for a field that is not counted; valid until clear().
    ColumnTotal *find(int field);
    /// No field is counted any more.
    void clear();

private:
    std::map<int, ColumnTotal> totals; ///< by field
};

} // namespace KV
