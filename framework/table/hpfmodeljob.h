#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include "rows/notedchanges.h"
#include "rows/rowview.h"
#include "table/hpfmodelcontent.h"
#include "table/hpfmodelplan.h"

namespace ZB {

/// A new arrangement of a model's rows in the making.
///
/// One thread drives it: begin() and gather() under the model's lock, adopt(), arrange() without. Changes of rows in
/// the meantime are noted under the lock and overrule what was gathered. When the order stands, applyNoted() brings
/// them in piece by piece; from then on further ones go straight to the new view. So the end comes however fast rows
/// change.
class HpfModelJob
{
public:
    using Row = HpfModelContent::Row;

    /// A number of rows on their way into the new view.
    struct Batch
    {
        struct Item
        {
            quint32 slot;
            qint64 arrival;
            core::RowValues kept; ///< under the present plan
            Row row;              ///< only when needsRows()
        };
        std::vector<Item> items;
    };

    HpfModelJob(std::shared_ptr<const HpfModelPlan> presentPlan, std::shared_ptr<const HpfModelPlan> targetPlan);
    ~HpfModelJob();

    const std::shared_ptr<const HpfModelPlan> &target() const { return targetPlan; }

    /// Makes room for as many rows, so that begin() need not.
    void reserve(int rowCount) { order.reserve(static_cast<std::size_t>(rowCount)); }
    /// Takes note of the present order.
    void begin(const HpfModelContent &content);
    quint32 slotLimit() const { return limit; }
    static constexpr quint32 slotsPerBatch = 1024;
    /// The rows of some slots.
    void gather(const HpfModelContent &content, quint32 firstSlot, Batch &batch) const;
    void adopt(const Batch &batch);
    /// Puts the adopted rows in order but for those that have changed since; false when cancelled.
    bool arrange(const std::vector<quint32> &changedSlots, const IBaseHpfTableModel &model);
    /// The arranged rows become the view. Call it once, before applyNoted().
    void place();

    /// @name Under the model's lock
    /// @{
    core::NotedChanges &noted() { return changes; }
    /// Brings some of the noted changes in; true when none is left.
    bool applyNoted();
    std::unique_ptr<core::RowView> takeView();
    /// @}

    void cancel() { cancelled = true; }
    bool isCancelled() const { return cancelled; }
    /// In thousandths.
    int progress() const { return done; }

private:
    /// Where a value of the new view comes from in what the present one keeps; -1: from the row.
    struct SortSource
    {
        int field = -1;
        int text = -1;
        bool reversed = false;
    };
    bool needsRows() const { return rowsNeeded; }
    void findSources();
    core::RowValues valuesOf(const Batch::Item &item);
    bool passes(const Batch::Item &item);

    const std::shared_ptr<const HpfModelPlan> presentPlan;
    const std::shared_ptr<const HpfModelPlan> targetPlan;
    HpfModelPlan::Reader reader;
    std::vector<SortSource> sortSources;
    std::vector<int> sumSources;
    std::vector<bool> knownFilters; ///< for each filter whether the present plan has it too
    bool sameFilters = false;
    bool narrower = false; ///< the filters of the present plan are among the new ones
    bool sameOrder = false;
    bool rowsNeeded = false;

    std::unique_ptr<core::RowView> view;
    quint32 limit = 0;
    std::vector<quint32> order;
    std::vector<quint32> misplaced;
    std::vector<bool> adopted;
    std::vector<Row> rows; ///< by slot, for a custom order

    core::NotedChanges changes; ///< guarded by the model's lock
    std::atomic<bool> cancelled{false};
    std::atomic<int> done{0};
};

} // namespace ZB
