#include "table/hpfmodelplan.h"

#include <algorithm>

namespace ZB {

namespace {

HpfModelColumn columnOf(const IBaseHpfTableModel &model, int number)
{
    return {number, model.columnType(number)};
}

bool isSummable(const HpfModelColumn &column)
{
    return column.kind() != core::ValueKind::Text;
}

core::ValueFilter conditionsOf(const QVector<HpfModelWish::Condition> &conditions)
{
    core::ValueFilter filter;
    for (const HpfModelWish::Condition &condition : conditions)
        filter.narrow(condition.first, condition.second);
    return filter;
}

} // namespace

HpfModelPlan::HpfModelPlan(const IBaseHpfTableModel &model, const HpfModelWish &newWish, const HpfModelPlan *former)
    : madeOf(newWish)
{
    for (const auto &[column, order] : madeOf.sort) {
        const bool custom = column == IBaseHpfTableModel::SortCustom;
        sort.push_back(
            {custom ? HpfModelColumn(column, QVariant::Invalid) : columnOf(model, column), order != 0, custom});
    }
    for (auto it = madeOf.filters.cbegin(); it != madeOf.filters.cend(); ++it) {
        const HpfModelColumn column = columnOf(model, it.key());
        const int context = model.textContext(it.key());
        const auto shared = [&]() -> FilterPtr {
            if (!former || former->madeOf.filters.value(it.key()) != it.value())
                return nullptr;
            const auto same =
                std::find_if(former->columnFilters.begin(), former->columnFilters.end(), [&](const FilterPtr &filter) {
                    return filter->source() == column && filter->textContext() == context;
                });
            return same == former->columnFilters.end() ? nullptr : *same;
        }();
        columnFilters.push_back(
            shared ? shared : std::make_shared<const HpfModelFilter>(column, context, conditionsOf(it.value())));
    }
    for (const int column : madeOf.sums) {
        const HpfModelColumn read = columnOf(model, column);
        if (isSummable(read))
            summed.push_back(read);
    }
}

HpfModelPlan::HpfModelPlan(const HpfModelPlan &other, const HpfModelWish &newWish)
    : madeOf(newWish), sort(other.sort), columnFilters(other.columnFilters), summed(other.summed)
{
}

HpfModelPlan::~HpfModelPlan() = default;

core::Arrangement HpfModelPlan::arrangement() const
{
    core::Arrangement arrangement;
    for (const SortField &field : sort)
        arrangement.sort.push_back({field.custom ? core::ValueKind::Custom : field.column.kind(), field.descending});
    for (const HpfModelColumn &column : summed)
        arrangement.sums.push_back(column.kind());
    return arrangement;
}

bool HpfModelPlan::fits(const IBaseHpfTableModel &model) const
{
    const auto unchanged = [&model](const HpfModelColumn &column) {
        return columnOf(model, column.number()) == column;
    };
    return std::all_of(sort.begin(), sort.end(),
                       [&](const SortField &field) { return field.custom || unchanged(field.column); }) &&
           std::all_of(columnFilters.begin(), columnFilters.end(),
                       [&](const FilterPtr &filter) {
                           return unchanged(filter->source()) &&
                                  model.textContext(filter->source().number()) == filter->textContext();
                       }) &&
           std::all_of(madeOf.sums.begin(), madeOf.sums.end(), [&](int column) {
               const HpfModelColumn present = columnOf(model, column);
               const HpfModelColumn *const known = sumOf(column);
               return known ? *known == present : !isSummable(present);
           });
}

bool HpfModelPlan::covers(const HpfModelPlan &other) const
{
    return sort == other.sort && columnFilters == other.columnFilters &&
           std::all_of(other.madeOf.sums.begin(), other.madeOf.sums.end(), [&](int column) {
               const HpfModelColumn *const known = sumOf(column);
               const HpfModelColumn *const wanted = other.sumOf(column);
               return known && wanted ? *known == *wanted : known == wanted;
           });
}

const HpfModelColumn *HpfModelPlan::sumOf(int column) const
{
    const auto found = std::find_if(summed.begin(), summed.end(),
                                    [column](const HpfModelColumn &sum) { return sum.number() == column; });
    return found == summed.end() ? nullptr : &*found;
}

int HpfModelPlan::sumIndex(int column) const
{
    const HpfModelColumn *const found = sumOf(column);
    return found ? static_cast<int>(found - summed.data()) : -1;
}

HpfModelPlan::Reader::Reader(const std::shared_ptr<const HpfModelPlan> &readPlan) : source(readPlan)
{
    const std::lock_guard<std::mutex> lock(source->mutex);
    if (source->spareAnswers.empty()) {
        answers.resize(source->columnFilters.size());
    } else {
        answers = std::move(source->spareAnswers.back());
        source->spareAnswers.pop_back();
    }
}

HpfModelPlan::Reader::~Reader()
{
    const std::lock_guard<std::mutex> lock(source->mutex);
    source->spareAnswers.push_back(std::move(answers));
}

void HpfModelPlan::Reader::read(IBaseHpfTableData &row, core::RowValues &values)
{
    if (!values.sortKeys.isEmpty() || !values.sums.isEmpty())
        values = core::RowValues();
    values.passes = true;
    for (std::size_t field = 0; field < source->sort.size(); ++field) {
        QString text;
        values.sortKeys.append(sortKey(row, field, text));
        if (!source->sort[field].custom && source->sort[field].column.kind() == core::ValueKind::Text)
            values.texts.append(text);
    }
    for (const HpfModelColumn &column : source->summed)
        values.sums.append(column.number(row));
    for (std::size_t filter = 0; filter < source->columnFilters.size() && values.passes; ++filter)
        values.passes = passesFilter(row, filter);
}

/// What puts the row in its place by one sort field; a text field gives its text too.
quint64 HpfModelPlan::Reader::sortKey(IBaseHpfTableData &row, std::size_t field, QString &text) const
{
    const SortField &sortField = source->sort[field];
    return sortField.custom ? 0 : sortField.column.sortKey(row, sortField.descending, text);
}

bool HpfModelPlan::Reader::passesFilter(IBaseHpfTableData &row, std::size_t filter)
{
    return source->columnFilters[filter]->passes(row, answers[filter]);
}

} // namespace ZB
