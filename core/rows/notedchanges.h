#pragma once

#include <QtCore/qglobal.h>
#include <unordered_map>
#include <vector>

#include "rows/rowview.h"

namespace core {

/// Changes of rows that come while a new view of the rows is made aside. They are only noted at first; once the view
/// stands they are brought in piece by piece, and further changes then go straight to it unless an older one of the
/// same row still waits. So the end is reached however fast changes come. Not thread-safe.
class NotedChanges
{
public:
    void noteChange(quint32 slot, qint64 arrival, const RowValues &values) { note(slot, {true, arrival, values}); }
    void noteRemoval(quint32 slot) { note(slot, {false, 0, RowValues()}); }
    /// The slots that a change is noted for, in any order.
    std::vector<quint32> slots() const;

    /// From now on noted changes may be brought into the view.
    void follow(RowView &newView) { view = &newView; }
    /// Brings in as many noted changes at most; true when none is left.
    bool applySome(int most);

private:
    struct Change
    {
        bool present;
        qint64 arrival;
        RowValues values;
    };
    void note(quint32 slot, const Change &change);
    void apply(quint32 slot, const Change &change);

    std::unordered_map<quint32, Change> waiting;
    RowView *view = nullptr;
};

} // namespace core
