#pragma once

#include "pagemodel/pagesortkeys.h"

namespace KV {

/// The order of a paged model's lists: by one column, missing values last in both directions, ties among orders and
/// among deals broken by the host's sequence of entry and then by the key. Works on the values that were captured when
/// the records were handed in. Not thread-safe.
class PageComparator
{
public:
    static constexpr int NoColumn = -1;

    explicit PageComparator(const PageSortKeys &sortKeys) : keys(sortKeys) {}

    void set(int column, int sortOrder)
    {
        columnId = column;
        order = sortOrder;
    }
    int column() const { return columnId; }

    /// Below 0 when `a` goes in front of `b`. 0 without a column, for one and the same host record, and when a record
    /// does not have the column's field. Doubles are equal within 1e-05, so that equality is not transitive.
    int compare(quint32 a, quint32 b) const;
    /// Whether the values of two are not equal, ties apart.
    bool differ(quint32 a, quint32 b) const { return compareValues(a, b) != 0; }

private:
    int compareValues(quint32 a, quint32 b) const;
    int compareTies(quint32 a, quint32 b) const;
    /// The sign that puts an empty value last once the order is applied.
    int emptyLast(bool emptyA, bool emptyB) const;

    const PageSortKeys &keys;
    int order = 0;
    int columnId = NoColumn;
};

} // namespace KV
