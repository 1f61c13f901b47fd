#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtCore/QVector>
#include <atomic>
#include <boost/shared_ptr.hpp>
#include <boost/thread/mutex.hpp>
#include <functional>
#include <memory>
#include <vector>

#include "model/cextracolumninfo.h"
#include "uicontrolexport.h"

class QColor;

namespace ZB {
class IBaseHpfTableData;
}

namespace KV {

/// Values of columns that are no fields of the records: computed by the caller and pushed in, by row key and column,
/// each with a text colour. A column that has a description here covers the record column of the same number.
///
/// Sums: a column with statistics sums the values that are pushed in from then on, until reCalcStatOnFilter() says
/// which rows count. Sums are exact; absent values (the largest of their type) and texts that are no number do not
/// count.
///
/// Threading: every operation from any thread, under one lock. Nothing is called out while it is held.
class UICONTROL_API CHpfExtraDataModel
{
public:
    CHpfExtraDataModel();
    ~CHpfExtraDataModel();
    CHpfExtraDataModel(const CHpfExtraDataModel &) = delete;
    CHpfExtraDataModel &operator=(const CHpfExtraDataModel &) = delete;

    /// Adds a column, or replaces its description.
    void addColumn(int column, const CExtraColumnInfo &info);
    /// Takes a column's description and statistics away; its values stay until the column is added again.
    void removeColumn(int column);
    bool exist(int column) const;
    bool getColumnInfo(int column, CExtraColumnInfo &out) const;

    /// Stores a value, also for a column that has no description yet and for a row that there is not. color: of the
    /// resource service, or null for the default text colour. A value that looks like an empty cell of its column (same
    /// text, and the colour of "clr_text_default" itself, not null) empties the cell.
    void addData(const QString &key, int column, const QVariant &value, const QColor *color);
    /// False, and `out` untouched, for an empty cell.
    bool getData(const QString &key, int column, QVariant &out) const;
    /// These three: 0 for an empty cell.
    int getInt(const QString &key, int column) const;
    qint64 getLonglong(const QString &key, int column) const;
    double getDouble(const QString &key, int column) const;
    /// The cell's text: numbers as the column's description says (64-bit integers by their low 32 bits), everything
    /// else as it is, the column's text for an empty cell.
    QString getString(const QString &key, int column) const;
    /// Never null.
    const QColor *getColor(const QString &key, int column) const;
    /// Forgets all values of a row.
    void removeData(const QString &key);
    /// Ends the statistics of all columns. Descriptions and values stay.
    void clear();
    /// Forgets descriptions, values and statistics.
    void clearColumn();

    /// On: the column starts a sum of its own at 0. Off: it has none.
    void setColumnStatEnable(int column, bool enable);
    bool columnStatEnable(int column) const;
    /// Whether any column has statistics. Without the lock.
    bool hasStatistics() const { return summed.load(std::memory_order_relaxed) != 0; }
    /// The sum, rounded once; the largest double for a column without statistics.
    double getStatData(int column) const;
    /// Sums the values of these rows only, from now on; rows without a value count for nothing. Costs about 0.3 us per
    /// row, the lock being let go in between; the former sums are told until it is through.
    void reCalcStatOnFilter(const QList<boost::shared_ptr<ZB::IBaseHpfTableData>> &rows);
    /// The rows that have values, in no order.
    QStringList keys() const;
    int keyCount() const;

    /// Called without the lock, on the thread of the change, when what cells or sums show has changed. Set before the
    /// model is shared.
    void setChangeListener(std::function<void()> listener);

private:
    struct Cell;
    struct Accumulator;
    using Cells = std::vector<Cell>;

    const Cell *findCell(const QString &key, int column) const;
    bool looksEmpty(int column, const QVariant &value, const QColor *color) const;
    void storeCell(const QString &key, int column, const QVariant &value, const QColor *color);
    void eraseCell(const QString &key, int column);
    void count(Cell &cell);
    bool isMember(const Cell &cell) const;
    bool isLeftOut(const Cell &cell) const;
    void discount(const Cell &cell);
    bool isBeingCounted(int column) const;
    unsigned beginRecount();
    bool countSome(unsigned run, const QVector<QString> &keys, int first);
    void endRecount(unsigned run);
    void publishColumns();
    void publishStatistics();
    void notify() const;

    mutable boost::mutex mutex; ///< guards everything below but the atomics
    QMap<int, CExtraColumnInfo> columns;
    QHash<QString, Cells> values;
    QMap<int, std::shared_ptr<Accumulator>> statistics;
    unsigned generation = 0;               ///< of the newest sum
    unsigned recounts = 0;                 ///< begun so far
    const QColor *defaultColor;            ///< of "clr_text_default"
    std::atomic<quint64> describedColumns; ///< bit n: column n; the highest bit: any column from 63 on
    std::atomic<int> summed;               ///< columns with statistics
    std::function<void()> changeListener;
};

} // namespace KV
