#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "table/hpfmodelaccess.h"
#include "table/hpfmodelcontent.h"
#include "table/hpfmodeljob.h"
#include "table/hpfmodelplan.h"
#include "table/hpfmodelwish.h"

namespace ZB {

/// What a table model keeps behind its interface: the rows with their present order, what it was asked to show, and the
/// work that leads from the one to the other.
///
/// A change of a row is in place when the call returns. A change of the sort, the filters or the sums is a wish: it is
/// carried out by settle(), which everybody who reads an order or a sum calls first, or in the background. The new
/// order is made aside, from what the present one keeps and from the rows where that is not enough; changes in the
/// meantime go to both. One mutex guards all; it is held for short pieces only, and never while rows, the model or
/// listeners are called.
class HpfModelState
{
public:
    using Row = IBaseHpfTableModel::Row;

    HpfModelState(IBaseHpfTableModel &owner, bool appendSeq);
    ~HpfModelState();

    HpfModelState(const HpfModelState &) = delete;
    HpfModelState &operator=(const HpfModelState &) = delete;

    /// @name Rows
    /// @{
    enum class PutResult
    {
        Refused,
        Added,
        Replaced
    };
    PutResult put(const Row &row);
    /// `told` is called for every row with what became of it, without the lock. `goOn`, where there is one, is asked
    /// after every piece and told how many of the rows are through; when it says no, the rest is left out.
    void putAll(const QVector<Row> &rows, const std::function<void(const Row &, PutResult)> &told,
                const std::function<bool(int)> &goOn);
    /// How many there were.
    int remove(const std::string *keys, int count);
    void clear();
    void setAppendSeq(bool append);
    bool appendSeq() const;
    /// @}

    /// @name Wishes
    /// @{
    void setSort(const QVector<QPair<int, int>> &columns);
    void setFilter(int column, const HpfModelWish::Condition &condition);
    void narrowFilter(int column, const HpfModelWish::Condition &condition);
    void clearFilters();
    /// Columns may have another type than what is there, or under way, was made for.
    void columnsChanged();
    void setSum(int column, bool enable);
    HpfModelWish wish() const;
    /// Whether something is wished for that is not carried out yet.
    bool isPending() const;
    /// Carries out what is wished for when it is called; waits when another thread is at it. Does nothing on the thread
    /// that is at it already.
    void settle();
    /// Has it carried out in the background; true when nothing is pending.
    bool settleInBackground(int waitMilliseconds);
    bool cancel();
    int progress() const;
    /// @}

    /// @name Reading; the last finished order
    /// @{
    HpfModelStatus status() const;
    Row rowOfKey(const std::string &key) const;
    int shownIndexOfKey(const std::string &key) const;
    quint64 idOfKey(const std::string &key) const;
    void fetch(int first, int count, std::vector<HpfShownRow> &rows) const;
    /// Appends the ids of a stretch; touches no row.
    void fetchIds(int first, int count, std::vector<quint64> &ids) const;
    void shownIndexes(const quint64 *ids, int count, int *indexes) const;
    Row rowOfId(quint64 id) const;
    /// Calls visit(row) for every row, or every shown one, as it was at one moment and as far as it is still there; the
    /// lock is not held during the calls.
    void forEachRow(bool shownOnly, const std::function<void(const HpfShownRow &)> &visit) const;
    /// The rows of some slots, wherever they stand in the order; the number of slots bounds the loop.
    quint32 rowsOfSlots(quint32 first, quint32 count, std::vector<Row> &rows) const;
    std::shared_ptr<const HpfModelPlan> presentPlan() const;
    /// `none` for a column that is not summed.
    template <typename Value>
    Value sum(int column, Value none, Value (core::ColumnSum::*read)() const) const;
    /// Takes all rows out of the sums; count() takes one in, with the values that it has now.
    void uncountAll();
    void count(const Row &row);
    /// @}

    /// @name Telling others
    /// @{
    void setUpdated(bool updated);
    bool updated() const { return updatedFlag; }
    void setListener(std::function<void()> newListener, const void *owner);
    /// @}

private:
    /// What changes are read with, outside the lock. Out of date when the plan or the job is another one.
    struct Reading
    {
        std::shared_ptr<HpfModelJob> job;
        std::unique_ptr<HpfModelPlan::Reader> present;
        std::unique_ptr<HpfModelPlan::Reader> next; ///< for the job; none without one
    };
    struct Change
    {
        Row row;
        Row replaced; ///< let go without the lock
        std::string key;
        quint64 hash = 0;
        core::RowValues values;
        std::unique_ptr<core::RowValues> nextValues; ///< while a job is at it
        PutResult result = PutResult::Refused;
    };
    /// Ties tasks in the background to this object, which may be gone when they begin.
    struct Handle
    {
        std::mutex mutex;
        HpfModelState *state = nullptr; ///< guarded by the mutex
    };
    using Lock = std::unique_lock<std::mutex>;

    Reading reading(const Change *changes, std::size_t count);
    void readChange(Change &change, Reading &reading) const;
    void refreshEmptyPlan();
    void checkColumns(const Reading &read);
    void applyAll(Change *changes, std::size_t count);
    void warmUp(const Change *changes, std::size_t count) const;
    void apply(Change &change);
    Row removeSlot(quint32 slot);

    void changeWish(const std::function<void(HpfModelWish &)> &change);
    void wishAnew();
    bool unmet() const { return wished.revision != plan->wish().revision; }
    bool pending() const;
    void endTurn();
    void stopWork(Lock &lock);
    void arrangeOnce();
    std::shared_ptr<HpfModelJob> startJob(const std::shared_ptr<const HpfModelPlan> &former,
                                          const std::shared_ptr<const HpfModelPlan> &target);
    bool collect(HpfModelJob &started);
    bool place(HpfModelJob &started);
    bool catchUp(HpfModelJob &started);
    void runScheduledTurn();
    void copyShownSlots(int first, int count, std::vector<quint32> &slots) const;
    void visitSlots(const std::vector<quint32> &slots, quint32 lastGeneration,
                    const std::function<void(const HpfShownRow &)> &visit) const;
    HpfShownRow shownRow(quint32 slot) const;

    IBaseHpfTableModel &model;
    const std::shared_ptr<Handle> handle;

    mutable std::mutex mutex; ///< guards everything down to the next remark
    std::condition_variable turnEnded;
    std::unique_ptr<HpfModelContent> content;
    std::shared_ptr<const HpfModelPlan> plan; ///< what the content is arranged by
    std::shared_ptr<HpfModelJob> job;         ///< the new arrangement in the making
    HpfModelWish wished;
    quint64 lastRevision = 0;
    quint64 endedTurns = 0;
    int stopRequests = 0;   ///< while above 0 no work begins
    bool working = false;   ///< some thread has its turn at carrying out wishes
    bool scheduled = false; ///< a task in the background is to take a turn
    bool append;
    qint64 newestArrival = 0;
    qint64 oldestArrival = 0;
    quint64 orderEpoch = 0;
    quint64 dataEpoch = 0;
    quint64 arrivals = 0;

    std::atomic<bool> updatedFlag{false};
    std::atomic<quint64> marks{0}; ///< how often it was set

    using Listener = std::shared_ptr<const std::function<void()>>;
    std::mutex listenerMutex; ///< guards the listeners and the number of their calls
    std::condition_variable listenerReturned;
    std::map<const void *, Listener> listeners; ///< by owner
    int listenerCalls = 0;
};

template <typename Value>
Value HpfModelState::sum(int column, Value none, Value (core::ColumnSum::*read)() const) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (wished.sums.count(column) == 0)
        return none;
    const int index = plan->sumIndex(column);
    return index < 0 ? Value() : (content->view->sum(index).*read)();
}

} // namespace ZB
