#pragma once

#include <QtCore/QMap>
#include <QtCore/QSet>

#include "pagemodel/pagecolumns.h"
#include "pagemodel/pagerows.h"
#include "stats/exactintegersum.h"
#include "stats/exactsum.h"

namespace KV {

/// Exact sums of columns over the records that are on the visible list. A record counts with the value that it had when
/// it was counted, whatever the host does to it afterwards; no value, NaN and infinities do not count. Not thread-safe.
class PageStatistics
{
public:
    /// Starts a column's sum from nothing, or ends it. Only number columns are summed; one of another type is
    /// remembered for when it becomes one.
    void setEnabled(int column, bool on, QVariant::Type type);
    bool hasSum(int column) const { return sums.contains(column); }
    QList<int> enabledColumns() const { return enabled.values(); }

    void add(quint32 slot, const PageRows &rows, const PageColumns &columns);
    /// Counts the records of one column, which must have a sum.
    void countColumn(int column, const std::vector<quint32> &slotList, const PageRows &rows,
                     const PageColumns &columns);
    void remove(quint32 slot);
    void removeAll();
    /// Sums of the same columns over nothing.
    PageStatistics emptied() const;

    /// The sums; the largest value of the type for a column without. A 32-bit sum out of range comes as the nearest
    /// end, never as "no value".
    int sumInt(int column) const;
    qint64 sumLong(int column) const;
    double sumDouble(int column) const;

private:
    struct Counted
    {
        bool counted = false;
        union {
            qint64 integer = 0;
            double real;
        };
    };
    struct Sum
    {
        bool isReal = false;
        core::ExactSum real;
        core::ExactIntegerSum integer;
        core::SlotArray<Counted> values;
    };

    void count(Sum &sum, Counted &entry, const kdservice::IData &record, int column, const PageColumns &columns);

    QSet<int> enabled;
    QMap<int, boost::shared_ptr<Sum>> sums; ///< of the number columns among them
};

} // namespace KV
