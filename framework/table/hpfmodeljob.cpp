#include "table/hpfmodeljob.h"

#include <algorithm>

namespace ZB {

namespace {

constexpr int gatheredShare = 800; ///< of a thousand: what reading rows takes of the time
constexpr int arrangedShare = 950;
constexpr int changesPerPiece = 256;

bool contains(const std::vector<HpfModelPlan::FilterPtr> &filters, const HpfModelPlan::FilterPtr &filter)
{
    return std::find(filters.begin(), filters.end(), filter) != filters.end();
}

} // namespace

HpfModelJob::HpfModelJob(std::shared_ptr<const HpfModelPlan> formerPlan, std::shared_ptr<const HpfModelPlan> newPlan)
    : presentPlan(std::move(formerPlan)), targetPlan(std::move(newPlan)), reader(targetPlan),
      view(std::make_unique<core::RowView>(targetPlan->arrangement()))
{
    findSources();
    sameOrder = presentPlan->sortFields() == targetPlan->sortFields();
}

HpfModelJob::~HpfModelJob() = default;

void HpfModelJob::findSources()
{
    const auto &present = presentPlan->sortFields();
    for (const HpfModelPlan::SortField &field : targetPlan->sortFields()) {
        SortSource source;
        int text = 0;
        for (std::size_t i = 0; i < present.size() && source.field < 0; ++i) {
            const bool isText = !present[i].custom && present[i].column.kind() == core::ValueKind::Text;
            if (present[i].sameValues(field))
                source = {static_cast<int>(i), isText ? text : -1, present[i].descending != field.descending};
            text += isText ? 1 : 0;
        }
        sortSources.push_back(source);
        rowsNeeded = rowsNeeded || source.field < 0 || field.custom;
    }
    const auto &presentSums = presentPlan->sums();
    for (const HpfModelColumn &column : targetPlan->sums()) {
        const auto found = std::find(presentSums.begin(), presentSums.end(), column);
        sumSources.push_back(found == presentSums.end() ? -1 : static_cast<int>(found - presentSums.begin()));
        rowsNeeded = rowsNeeded || sumSources.back() < 0;
    }
    const auto &former = presentPlan->filters();
    for (const HpfModelPlan::FilterPtr &filter : targetPlan->filters())
        knownFilters.push_back(contains(former, filter));
    narrower = std::all_of(former.begin(), former.end(), [this](const HpfModelPlan::FilterPtr &filter) {
        return contains(targetPlan->filters(), filter);
    });
    sameFilters = former == targetPlan->filters();
    rowsNeeded = rowsNeeded || (!sameFilters && !targetPlan->filters().empty());
}

void HpfModelJob::begin(const HpfModelContent &content)
{
    limit = content.slots.limit();
    if (sameOrder) {
        content.view->rows().copySlots(order);
        misplaced = content.view->misplacedSlots();
    }
}

void HpfModelJob::gather(const HpfModelContent &content, quint32 firstSlot, Batch &batch) const
{
    const quint32 end = std::min(limit, firstSlot + slotsPerBatch);
    for (quint32 slot = firstSlot; slot < end; ++slot) {
        if (!content.slots.isLive(slot))
            continue;
        batch.items.push_back({slot, content.view->arrivalOf(slot), content.view->valuesOf(slot),
                               rowsNeeded ? content.rows[slot] : Row()});
    }
}

void HpfModelJob::adopt(const Batch &batch)
{
    adopted.resize(limit);
    if (view->hasCustomField())
        rows.resize(limit);
    for (const Batch::Item &item : batch.items) {
        if (cancelled)
            return;
        view->adopt(item.slot, item.arrival, valuesOf(item));
        adopted[item.slot] = true;
        if (!sameOrder)
            order.push_back(item.slot);
        if (view->hasCustomField())
            rows[item.slot] = item.row;
        done = static_cast<int>(gatheredShare * static_cast<qint64>(item.slot) / limit);
    }
}

core::RowValues HpfModelJob::valuesOf(const Batch::Item &item)
{
    core::RowValues values;
    for (std::size_t field = 0; field < sortSources.size(); ++field) {
        const SortSource &source = sortSources[field];
        if (source.field < 0) {
            reader.readSortField(*item.row, field, values);
            continue;
        }
        const quint64 key = item.kept.sortKeys[source.field];
        const auto kind = view->arrangement().sort[field].kind;
        values.sortKeys.append(source.reversed && kind != core::ValueKind::Custom ? core::SortKey::reversed(key, kind)
                                                                                  : key);
        if (source.text >= 0)
            values.texts.append(item.kept.texts[source.text]);
    }
    for (std::size_t i = 0; i < sumSources.size(); ++i) {
        const int source = sumSources[i];
        values.sums.append(source < 0 ? targetPlan->sums()[i].number(*item.row) : item.kept.sums[source]);
    }
    values.passes = passes(item);
    return values;
}

bool HpfModelJob::passes(const Batch::Item &item)
{
    if (sameFilters)
        return item.kept.passes;
    if (narrower && !item.kept.passes)
        return false;
    for (std::size_t filter = 0; filter < knownFilters.size(); ++filter) {
        const bool passedBefore = item.kept.passes && knownFilters[filter];
        if (!passedBefore && !reader.passesFilter(*item.row, filter))
            return false;
    }
    return true;
}

bool HpfModelJob::arrange(const std::vector<quint32> &changedSlots, const IBaseHpfTableModel &model)
{
    done = gatheredShare;
    adopted.resize(limit);
    for (const quint32 slot : changedSlots) {
        if (slot < limit && adopted[slot]) {
            view->remove(slot);
            adopted[slot] = false;
        }
    }
    const auto gone = [this](quint32 slot) { return !adopted[slot]; };
    order.erase(std::remove_if(order.begin(), order.end(), gone), order.end());

    const auto compare = [&](quint32 a, quint32 b) { return model.customSort(rows[a], rows[b]); };
    bool finished = !cancelled;
    if (finished && !sameOrder)
        finished = view->order(order, compare, cancelled);
    else if (finished && view->hasCustomField())
        finished = view->mergeMisplaced(order, misplaced, compare, cancelled);
    rows.clear();
    done = arrangedShare;
    return finished;
}

void HpfModelJob::place()
{
    view->place(order);
}

bool HpfModelJob::applyNoted()
{
    changes.follow(*view);
    return changes.applySome(changesPerPiece);
}

std::unique_ptr<core::RowView> HpfModelJob::takeView()
{
    return std::move(view);
}

} // namespace ZB
