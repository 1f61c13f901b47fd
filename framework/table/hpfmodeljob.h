#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include "rows/keptrows.h"
#include "rows/notedchanges.h"
#include "rows/rowview.h"
#include "table/hpfmodelcontent.h"
#include "table/hpfmodelplan.h"

namespace ZB {

/// A new arrangement of a model's rows in the making.
///
/// One thread drives it: begin() and gather() under the model's lock, the rest without; another one may help to read
/// rows. Changes of rows in the meantime are noted under the lock and overrule what was gathered. When the order
/// stands, applyNoted() brings them in piece by piece; from then on further ones go straight to the new view. So the
/// end comes however fast rows change.
class HpfModelJob
{
public:
    using Row = HpfModelContent::Row;

    /// A run of slots on its way into the new view.
    struct Batch
    {
        quint32 firstSlot = 0;
        int count = 0;
        core::KeptRows kept;                   ///< under the present plan
        std::vector<IBaseHpfTableData *> rows; ///< by slot of the run, when rows are needed; they stay until the end
        std::vector<Row> sharedRows;           ///< the same for a custom order
        std::vector<quint64> words;            ///< under the new plan, when they are others; what was read fills these
        std::vector<QString> texts;
        std::vector<bool> passed;
    };

    HpfModelJob(std::shared_ptr<const HpfModelPlan> presentPlan, std::shared_ptr<const HpfModelPlan> targetPlan);
    ~HpfModelJob();

    const std::shared_ptr<const HpfModelPlan> &target() const { return targetPlan; }

    /// Makes room for as many rows, so that begin() need not.
    void reserve(int rowCount) { order.reserve(static_cast<std::size_t>(rowCount)); }
    /// Takes note of the present order.
    void begin(const HpfModelContent &content);
    quint32 slotLimit() const { return limit; }
    /// Whether rows have to be asked, so that help is worth while.
    bool needsRows() const { return rowsNeeded; }
    static constexpr quint32 slotsPerBatch = 1024;
    /// The rows of a run of slots: some ten microseconds.
    void gather(const HpfModelContent &content, quint32 firstSlot, Batch &batch) const;
    /// Makes out what the new view keeps of them. Any thread, several batches at once; stops early when cancelled.
    void read(Batch &batch, HpfModelPlan::Reader &reader) const;
    /// Takes them into the new view. One batch at a time, in any order.
    void adopt(Batch &batch);
    /// Puts the adopted rows in order but for those that have changed since; false when cancelled.
    bool arrange(const std::vector<quint32> &changedSlots, const IBaseHpfTableModel &model);
    /// The arranged rows become the view; false when cancelled. Call it once, before applyNoted().
    bool place();

    /// @name Under the model's lock
    /// @{
    core::NotedChanges &noted() { return changes; }
    /// Keeps a row that was replaced or removed, since it may just be read.
    void retire(Row row) { retired.push_back(std::move(row)); }
    /// Brings some of the noted changes in; true when none is left.
    bool applyNoted();
    std::unique_ptr<core::RowView> takeView();
    /// @}

    /// Lets go of what was kept, once the model does not know this job any more; without the lock.
    void finish();

    void cancel() { cancelled = true; }
    bool isCancelled() const { return cancelled; }
    /// In thousandths.
    int progress() const { return done; }

private:
    /// Where a word or a text of the new view comes from in what the present one keeps; -1: from the row.
    struct Source
    {
        int index = -1;
        bool reversed = false;
    };

    void findSortSources();
    void findSumSources();
    void findFilters();
    void readWords(Batch &batch, int index, HpfModelPlan::Reader &reader) const;
    bool passes(const Batch &batch, int index, HpfModelPlan::Reader &reader) const;

    const std::shared_ptr<const HpfModelPlan> presentPlan;
    const std::shared_ptr<const HpfModelPlan> targetPlan;
    core::Arrangement arrangement;
    std::vector<Source> wordSources; ///< of the new view's words
    std::vector<int> textSources;    ///< of its texts
    bool sameWords = false;          ///< the present view's words and texts are those of the new one
    std::vector<bool> knownFilters;  ///< for each filter whether the present plan has it too
    bool sameFilters = false;
    bool narrower = false; ///< the filters of the present plan are among the new ones
    bool sameOrder = false;
    bool rowsNeeded = false;

    std::unique_ptr<core::RowView> view;
    quint32 limit = 0;
    std::vector<quint32> order;
    std::vector<quint32> misplaced;
    std::vector<bool> adopted;
    quint32 adoptedSlots = 0;
    std::vector<Row> rows; ///< by slot, for a custom order

    core::NotedChanges changes; ///< guarded by the model's lock, like the next one
    std::vector<Row> retired;
    std::atomic<bool> cancelled{false};
    std::atomic<int> done{0};
};

} // namespace ZB
