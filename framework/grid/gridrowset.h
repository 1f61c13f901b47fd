#pragma once

#include <vector>

#include "frameworkexport.h"
#include "grid/gridsource.h"

namespace ZB {

/// A set of row ids, which may be any numbers but NoGridRow: an open table of them, at most half full. A million rows
/// take 16 MB and go in within some 20 ms.
class FRAMEWORK_API GridRowSet
{
public:
    bool contains(GridRowId id) const { return count > 0 && id != NoGridRow && table[placeOf(id)] == id; }
    /// True when the id was new; NoGridRow never is.
    bool insert(GridRowId id);
    /// True when the id was there.
    bool remove(GridRowId id);
    void clear();
    /// Makes room for so many at once.
    void reserve(qint64 size);

    qint64 size() const { return count; }
    bool isEmpty() const { return count == 0; }
    /// In ascending order of the ids.
    std::vector<GridRowId> ids() const;

private:
    /// Where the id belongs when nothing is in its way. Ids that follow one another are spread evenly (Knuth, "The Art
    /// of Computer Programming" 6.4, Fibonacci hashing).
    size_t homeOf(GridRowId id) const { return static_cast<size_t>((id * 0x9E3779B97F4A7C15u) >> shift); }
    /// Where the id is, or the free place that it would take.
    size_t placeOf(GridRowId id) const;

    std::vector<GridRowId> table; ///< empty or a power of two; NoGridRow in free places
    int shift = 64;
    qint64 count = 0;
};

} // namespace ZB
