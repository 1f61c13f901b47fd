#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "rows/rowview.h"
#include "table/hpfmodelcolumn.h"
#include "table/hpfmodelfilter.h"
#include "table/hpfmodelwish.h"

namespace ZB {

/// A wish, made out against the columns that the model has: what has to be read of every row, and how. Immutable; rows
/// are read on any thread, each through a Reader of its own.
class HpfModelPlan
{
public:
    struct SortField
    {
        HpfModelColumn column;
        bool descending;
        bool custom; ///< IBaseHpfTableModel::customSort instead of the column's values

        bool operator==(const SortField &other) const { return sameValues(other) && descending == other.descending; }
        bool sameValues(const SortField &other) const { return column == other.column && custom == other.custom; }
    };
    using FilterPtr = std::shared_ptr<const HpfModelFilter>;

    /// Asks the model for column types, so no lock may be held. Filters that `former` has too are shared with it.
    HpfModelPlan(const IBaseHpfTableModel &model, const HpfModelWish &newWish, const HpfModelPlan *former);
    /// The same plan for a wish that it covers.
    HpfModelPlan(const HpfModelPlan &other, const HpfModelWish &newWish);
    ~HpfModelPlan();

    const HpfModelWish &wish() const { return madeOf; }
    const std::vector<SortField> &sortFields() const { return sort; }
    const std::vector<FilterPtr> &filters() const { return columnFilters; }
    const std::vector<HpfModelColumn> &sums() const { return summed; }
    core::Arrangement arrangement() const;

    /// Whether the model's columns still have the types that the plan was made for, those also that had no sum because
    /// of theirs, and filtered ones their text context. Asks the model.
    bool fits(const IBaseHpfTableModel &model) const;
    /// Whether rows arranged by this plan are all that the other one asks for; it may keep more sums.
    bool covers(const HpfModelPlan &other) const;
    /// The place of a column among the sums, -1 for none.
    int sumIndex(int column) const;

    /// Reads rows by a plan, on one thread. What filters answered is kept for the next reader.
    class Reader
    {
    public:
        explicit Reader(const std::shared_ptr<const HpfModelPlan> &readPlan);
        ~Reader();

        Reader(const Reader &) = delete;
        Reader &operator=(const Reader &) = delete;

        const std::shared_ptr<const HpfModelPlan> &plan() const { return source; }
        void read(IBaseHpfTableData &row, core::RowValues &values);
        quint64 sortKey(IBaseHpfTableData &row, std::size_t field, QString &text) const;
        bool passesFilter(IBaseHpfTableData &row, std::size_t filter);

    private:
        std::shared_ptr<const HpfModelPlan> source;
        std::vector<HpfModelFilter::Answers> answers; ///< of each filter
    };

private:
    /// Null for a column that is not summed.
    const HpfModelColumn *sumOf(int column) const;

    using AnswerList = std::vector<HpfModelFilter::Answers>;

    HpfModelWish madeOf;
    std::vector<SortField> sort;
    std::vector<FilterPtr> columnFilters;
    std::vector<HpfModelColumn> summed;

    mutable std::mutex mutex;
    mutable std::vector<AnswerList> spareAnswers; ///< guarded by the mutex
};

} // namespace ZB
