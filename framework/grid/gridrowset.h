#pragma once

#include <QtCore/QHash>
#include <vector>

#include "frameworkexport.h"
#include "grid/gridsource.h"

namespace ZB {

/// A set of row ids. Ids are given out one after the other, so they are kept as bits: a selection of a million rows
/// takes well under a megabyte and is made in milliseconds.
class FRAMEWORK_API GridRowSet
{
public:
    bool contains(GridRowId id) const { return (words.value(id >> 6) >> (id & 63)) & 1; }
    /// True when the id was new.
    bool insert(GridRowId id);
    /// True when the id was there.
    bool remove(GridRowId id);
    void clear();

    qint64 size() const { return count; }
    bool isEmpty() const { return count == 0; }
    /// In ascending order of the ids.
    std::vector<GridRowId> ids() const;

private:
    QHash<quint64, quint64> words;
    qint64 count = 0;
};

} // namespace ZB
