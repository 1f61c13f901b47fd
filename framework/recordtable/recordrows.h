#pragma once

#include <QtCore/QPair>
#include <QtCore/QVector>
#include <functional>
#include <vector>

#include "frameworkexport.h"
#include "recordtable/recordrow.h"
#include "rows/pointerindex.h"

namespace ZB {

/// The rows of a table that keeps them itself: ids, and the order on the screen. Ids count up from 0 and mean the same
/// row for as long as it exists; clear() starts again. GUI thread.
///
/// Changes are noted, and carried out together when the order is read next: k changed of n rows cost O(k log k + n),
/// and nothing when no row has to move. The memory of rows that clear() took away is kept for those that come next: a
/// filter takes all rows away, and gives most of them back.
class FRAMEWORK_API RecordRows
{
public:
    /// The key of a row under a sort column; descending reverses it.
    using KeyOf = std::function<RecordSortKey(const RecordRow &row, int column, bool descending)>;
    using Sorts = QVector<QPair<int, int>>; ///< columns in falling weight, with their order (0 ascending)

    explicit RecordRows(KeyOf keyOf);

    /// identity: what the row is known by on the screen across clear(); 0, or one that another row has, for none. Null
    /// when the ids are used up.
    RecordRow *add(quint64 identity);
    bool remove(int id);
    void clear();
    int count() const;
    /// Null for an id without a row.
    RecordRow *find(int id);
    /// The same for who does not look at its cells.
    RecordRow *peek(int id) const;
    RecordRow *findOnScreen(GridRowId id);
    /// Whether somebody may have filled cells of the row, who found it or saw it. What happens in the other ones is of
    /// no interest, and most rows of a large table are never seen; answers without touching the row.
    bool isKnown(int id) const
    {
        return id >= 0 && static_cast<std::size_t>(id) < known.size() && known[static_cast<std::size_t>(id)];
    }
    /// The row is on the screen.
    void noteKnown(const RecordRow &row) { known[static_cast<std::size_t>(row.id)] = true; }
    /// A version that no row has had before under the same identity.
    quint32 nextVersion() { return ++lastVersion; }
    int lastId() const { return nextId - 1; }

    void setSorts(const Sorts &sorts);
    const Sorts &sorts() const { return sortColumns; }
    bool sortsBy(int column) const { return !sortColumns.isEmpty() && isAmongSorts(column); }
    /// Values of the row that count for the order may have changed.
    void touch(RecordRow &row);
    void touchAll();

    /// The rows as they stand on the screen. Valid until the next change.
    const std::vector<RecordRow *> &shown();
    /// -1 for a row that has gone.
    int placeOf(GridRowId id);

private:
    void dropGone();
    void sortAll();
    void moveTouched();
    void takeKeys(RecordRow &row) const;
    bool goesBefore(const RecordRow &a, const RecordRow &b) const;
    RecordRowPtr freshRow();
    bool isAmongSorts(int column) const;
    RecordRow *rowOnScreen(GridRowId id) const { return rowOfScreenId.likely(id); }
    GridRowId takeScreenId(quint64 identity, RecordRow *row);

    const KeyOf keyOf;
    Sorts sortColumns;
    std::vector<RecordRowPtr> arrival; ///< by id
    std::vector<RecordRow *> order;
    std::vector<RecordRow *> touchedRows;        ///< new ones too
    std::vector<bool> known;                     ///< by id; in bits, which stay in the near caches
    core::PointerIndex<RecordRow> rowOfScreenId; ///< each id is its own hash
    std::vector<RecordRowPtr> spare;             ///< rows that have gone; given again once nobody holds them
    int nextId = 0;
    int goneCount = 0;
    quint64 lastSerial = 0;
    quint32 lastVersion = 0;
    bool allStale = false;
    bool placesStale = false;
};

} // namespace ZB
