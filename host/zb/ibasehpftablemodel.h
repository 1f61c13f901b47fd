#pragma once

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QPair>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/QVector>
#include <boost/shared_ptr.hpp>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "hostexport.h"
#include "utils/eformatnumberflag.h"
#include "zb/efiltertype.h"
#include "zb/ibasehpftabledata.h"

class QColor;

namespace ZB {

using utils::CFlags;
class HpfModelState;

/// A set of rows under unique keys, with columns, filters, an order and per-column sums. The host keeps rows, order,
/// filters and sums; a derived model supplies columns and texts.
///
/// Threading: rows may be added, updated, removed and read on any thread; every change is visible to the next reader,
/// whichever thread it came from. Order and filters are settled lazily, once per batch. Columns are changed on the GUI
/// thread only.
/// Ownership: held by boost::shared_ptr (rows hold their model); the last release happens on the GUI thread.
/// The order of the virtual functions is part of the contract.
///
/// Order of rows: without a sort column, the order of arrival (the newest last when appending, first otherwise); with
/// sort columns, by the values that the row had when it was handed in. Missing values (the largest of the type, NaN)
/// are last in both directions; ties keep the order of arrival.
class HOST_API IBaseHpfTableModel
{
public:
    using Row = boost::shared_ptr<IBaseHpfTableData>;
    using ColumnFilter = FilterCondition;

    /// appendSeq: new rows go to the end of the order of arrival, otherwise to the front.
    explicit IBaseHpfTableModel(bool appendSeq);
    virtual ~IBaseHpfTableModel();

    IBaseHpfTableModel(const IBaseHpfTableModel &) = delete;
    IBaseHpfTableModel &operator=(const IBaseHpfTableModel &) = delete;

    virtual int columnCount() const = 0;
    virtual QString columnHeader(int column) const = 0;
    virtual QVariant::Type columnType(int column) const = 0;
    /// The text under a column in the statistics row; empty for none.
    virtual QString getStatDispalyQString(int column) const = 0;
    /// Whether cells of a column flash when they change, where their row does not say otherwise.
    virtual bool columnFlashChange(int column) const = 0;
    /// The background of a column's cells where the row has none; null for the table's own.
    virtual const QColor *getBackgroundColor(int column) const = 0;
    /// How a column's numbers are written. Tables take from it how much room a unit needs (FormatUnit, FormatPercent).
    virtual CFlags<utils::EFormatNumberFlag> columnFlag(int column) const = 0;

    /// Does nothing for an unknown key.
    virtual void removeDataByKey(const std::string &key);
    /// Removes every row; filters, sort columns and enabled statistics stay.
    virtual void clear() = 0;
    /// Replaces the filter of one column and leaves the others; an empty set removes it.
    virtual void filterColumn(int column, QPair<EFilterType, QSet<QString>> &filter);
    /// Narrows: rows must pass this filter and every filter set before, also one on the same column.
    virtual void filterColumnCombin(int column, QPair<EFilterType, QSet<QString>> &filter);
    /// Whether the cell of a shown row flashes when it changes; the column's and the row's own answers unless
    /// overridden. The row is one of those that are shown at present; nothing that is pending is waited for.
    virtual bool isFlashChange(int row, int column) const;
    /// Below 0 when a goes in front of b, above 0 behind it, 0 when equal. The default compares the values of the sort
    /// columns. An override takes effect when the order is set to SortCustom.
    virtual int customSort(const Row &a, const Row &b) const;

protected:
    /// Called for every row that enters under a new key, and for every row that replaces one of the same key, outside
    /// every lock, on the thread of the change. The defaults do nothing.
    virtual void _addData(const Row &row);
    virtual void _updateData(const Row &row);

public:
    /// Called by the table on its timer (every 100 ms while it is visible), once a second, and when the theme or the
    /// scale changed; GUI thread. The latter two call onTimer() unless overridden.
    virtual void onTimer() = 0;
    virtual void onSecondTimer();
    virtual void onResourceChanged();

protected:
    /// Makes the columns for records of these types. For a derived model to call, in its constructor and where the
    /// types change; the host calls it nowhere.
    virtual void initColumns(const std::vector<int> &metaIds) = 0;

public:
    /// What the filter texts of a column follow from besides the raw values of its cells: a number that is another one
    /// when equal values get other texts (a setting of the user's), 0 unless overridden. Below 0 every row has a text
    /// of its own (a price with its instrument's decimals), so that filters ask all rows and not all different values.
    virtual int textContext(int column) const;

    static constexpr int SortCustom = -2; ///< sort column id of the order that customSort() defines

    /// Both put a row in under its key: one of an unknown key is added, one of a known key takes that row's place.
    /// False, and nothing is changed, for an empty pointer and for a row without a key.
    bool addData(const Row &row);
    bool updateData(const Row &row);
    /// Many at once, settled once; of several rows with one key the last one wins. Empty pointers are skipped.
    void updateDatas(const QVector<Row> &rows);
    /// The same for a long list that may have to end early. goOn is asked after every few hundred rows, on the calling
    /// thread and without a lock, and told how many of the list are through. Once it says no, the rest is left out;
    /// what is in stays.
    void updateDatas(const QVector<Row> &rows, const std::function<bool(int)> &goOn);
    void removeDatasByKey(const QVector<std::string> &keys);

    /// The row shown at an index of the filtered order, or an empty pointer.
    Row getData(int row) const;
    Row getDataByKey(const QString &key) const;
    /// Every row, filtered or not, in the present order. A copy of as many pointers.
    QList<Row> getAllDatas() const;
    /// Appends the rows that pass the filters, in the present order.
    void getDatas(QList<Row> &rows) const;
    bool containData(const std::string &key) const;
    /// The number of rows that pass the filters; allSize() of all rows.
    int size() const;
    int allSize() const;
    /// Whether a sort, a filter or a sum was asked for and is not carried out yet. What needs it carried out (size(),
    /// the shown rows, the sums) takes its time then; this does not.
    bool isPending() const;
    /// Grows with every change of rows, order and filters that is carried out, and waits for none.
    quint64 changeCount() const;
    /// The shown index of a key, -1 when it is unknown or filtered out.
    int indexOfKey(const std::string &key) const;

    void clearFilter();
    /// The filtered columns, each with conditions that let the same texts pass as all that were set for it: one exact
    /// condition with the texts that may still pass, where one that was set is exact or where nothing passes; otherwise
    /// those by contained text and, last, one for what is left out.
    QMap<int, FilterConditions> columnFilters() const;
    /// Where rows without a sort go, from now on: to the end (true) or to the front.
    void setAppendSeq(bool append);
    bool appendSeq() const;

    /// Sort columns in falling weight, each with order 0 (ascending) or another value (descending); empty for the order
    /// of arrival.
    void setSortColumns(const QVector<QPair<int, int>> &columns);
    QVector<QPair<int, int>> sortColumns() const;

    /// Something that the table shows has changed. Setting it from false to true calls the change listener.
    void setUpdated(bool updated);
    bool updated() const;
    /// Called on the thread of the change when updated() becomes true; the table posts itself a wake-up from it. Called
    /// without any lock; must not call back into the model. One listener of each owner; an empty function removes it.
    void setChangeListener(std::function<void()> listener, const void *owner = nullptr);

    /// Starts or stops summing a column over the rows that pass the filters.
    void setColumnStatEnable(int column, bool enable);
    bool columnStatEnable(int column) const;
    /// Exact sum, rounded once, 0 over no values; the largest value of the type when the column has no statistics.
    double getStatColumnDouble(int column) const;
    qint64 getStatColumnLongLong(int column) const;

protected:
    /// Counts a row in the sums, and takes all rows out of them: to sum anew, a derived model resets, then adds its
    /// rows. Rows that come, change and go are counted without it.
    void _addStatColumnData(const Row &row);
    void _resetStatMap();
    /// What a derived clear() calls.
    void clearRows();
    /// What a derived model calls when columns have come, gone or become of another type: what was sorted, filtered and
    /// summed by the former ones is so by the new ones. GUI thread; costs nothing where the types are the same.
    void columnsChanged();

private:
    friend class HpfModelAccess;
    std::unique_ptr<HpfModelState> state;
};

} // namespace ZB
