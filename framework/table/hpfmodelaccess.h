#pragma once

#include <memory>
#include <string>
#include <vector>

#include "frameworkexport.h"
#include "popups/distincttexts.h"
#include "zb/ibasehpftablemodel.h"

namespace ZB {

/// One shown row, as a view draws it and remembers it.
struct HpfShownRow
{
    quint64 id = 0;      ///< stays with the key through every change of order, filter and record; 0 is no row
    quint32 version = 0; ///< another one after the row was handed in again
    IBaseHpfTableModel::Row row;
};

/// What a view compares once per frame to learn what it has to draw again. The counters only grow, also through
/// clear().
struct HpfModelStatus
{
    quint64 orderEpoch = 0; ///< a shown row entered, left or moved: indexes are others
    quint64 dataEpoch = 0;  ///< a row changed in any way; also grows with orderEpoch
    quint64 arrivals = 0;   ///< rows that ever entered under a new key
    int shown = 0;          ///< rows that pass the filters
    int all = 0;
    bool pending = false; ///< a sort, a filter or a sum was asked for and is not carried out yet
    quint64 marks = 0;    ///< how often the model was marked as updated
};

/// How the tables of this folder read a model while others change it.
///
/// Every call may come on any thread, takes one lock for a time that does not grow with the number of rows, and sees
/// the last finished order: a sort or a filter that is not carried out yet shows in status().pending only, while single
/// changes of rows are in place at once (under SortCustom new rows stand at the end until the next settling).
class FRAMEWORK_API HpfModelAccess
{
public:
    using Row = IBaseHpfTableModel::Row;

    static HpfModelStatus status(const IBaseHpfTableModel &model);
    static int rowCount(const IBaseHpfTableModel &model);

    /// Replaces `rows` by the shown rows from index `first` on, at most `count`; fewer at the end, none outside.
    /// Returns how many there are.
    static int fetch(const IBaseHpfTableModel &model, int first, int count, std::vector<HpfShownRow> &rows);

    /// Appends the ids of the shown rows from `first` on, at most `count`. A million take a few milliseconds under one
    /// lock, since no row is touched.
    static void ids(const IBaseHpfTableModel &model, int first, int count, std::vector<quint64> &ids);
    /// The shown index of a row, -1 when it is gone or filtered out.
    static int indexOf(const IBaseHpfTableModel &model, quint64 id);
    /// The same for many under one lock (released after every few thousand); result[i] belongs to ids[i].
    static std::vector<int> indexesOf(const IBaseHpfTableModel &model, const std::vector<quint64> &ids);
    /// The row as it was handed in last, shown or not; empty when it is gone.
    static Row rowOf(const IBaseHpfTableModel &model, quint64 id);
    /// The id of a shown index, and of a key (shown or not); 0 for none.
    static quint64 idAt(const IBaseHpfTableModel &model, int index);
    static quint64 idOfKey(const IBaseHpfTableModel &model, const std::string &key);

    /// Carries out what is pending, on a thread in the background, and waits for it at most `milliseconds` (0 only
    /// starts it). True when nothing is pending. The change listener is called when it is finished.
    static bool step(const IBaseHpfTableModel &model, int milliseconds);
    /// How far the pending work is, in thousandths; 1000 when nothing is pending.
    static int progress(const IBaseHpfTableModel &model);
    /// Takes the pending sort and filters back: the model says and shows those that were carried out last. False when
    /// nothing was pending. Waits for the background thread, less than a millisecond as a rule.
    static bool cancel(IBaseHpfTableModel &model);

private:
    friend class HpfDistinctTexts;
    static class HpfModelState &stateOf(const IBaseHpfTableModel &model);
};

/// The different filter texts of one column and how often each occurs, for the filter box of a column. Counts the rows
/// that pass the filters of all other columns, so that a value which can be chosen leaves something to see.
///
/// Works in slices on the thread that calls step(); text is formatted once for every distinct raw value. Deleting it is
/// the way to cancel. The model must outlive it; changes of the model meanwhile are seen or not.
class FRAMEWORK_API HpfDistinctTexts : public DistinctTexts
{
public:
    HpfDistinctTexts(const IBaseHpfTableModel &model, int column);
    ~HpfDistinctTexts() override;

    bool step(int milliseconds) override;
    int progress() const override;
    /// Once finished: in ascending order of the values (numbers as numbers, no value last), each text once. More than
    /// `maximumValues` different texts are not collected: isTruncated() then says so, and the rest is missing.
    const std::vector<Value> &values() const override;
    bool isTruncated() const override;

    static constexpr int maximumValues = 100000;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace ZB
