#pragma once

#include "pagemodel/pagerows.h"

namespace KV {

class PageColumns;

/// The order of a paged model's lists: by one column, missing values last in both directions, ties among orders and
/// among deals broken by the host's sequence of entry and then by the key. Not thread-safe.
class PageComparator
{
public:
    static constexpr int NoColumn = -1;

    PageComparator(const PageColumns &pageColumns, const PageRows &pageRows) : columns(pageColumns), rows(pageRows) {}

    void set(int column, int sortOrder)
    {
        columnId = column;
        order = sortOrder;
    }
    int column() const { return columnId; }
    int sortOrder() const { return order; }

    /// Below 0 when `a` goes in front of `b`. 0 without a column, for one and the same host record, and when a record
    /// does not have the column's field. Doubles are equal within 1e-05, so that equality is not transitive.
    int compare(quint32 a, quint32 b) const;

    /// Takes a record's value of the column into its slot. `codeColumn` is a column under which orders compare by their
    /// code, -1 for none.
    static void capture(PageRows &rows, quint32 slot, const PageColumns &columns, int column, int codeColumn);

private:
    int compareValues(const PageRow &a, const PageRow &b, quint32 slotA, quint32 slotB, bool &decided) const;
    int compareTies(const PageRow &a, const PageRow &b, quint32 slotA, quint32 slotB) const;
    int emptyLast(bool emptyA, bool emptyB) const;

    const PageColumns &columns;
    const PageRows &rows;
    int order = 0;
    int columnId = NoColumn;
};

} // namespace KV
