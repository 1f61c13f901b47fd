#include "table/hpfmodeljob.h"

#include <algorithm>

#include "rows/prefetch.h"

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
    : presentPlan(std::move(formerPlan)), targetPlan(std::move(newPlan)), arrangement(targetPlan->arrangement()),
      view(std::make_unique<core::RowView>(arrangement))
{
    findSortSources();
    // The arrival stands behind the sort keys.
    wordSources.push_back({static_cast<int>(presentPlan->sortFields().size()), false});
    findSumSources();
    sameOrder = presentPlan->sortFields() == targetPlan->sortFields();
    sameWords = sameOrder && presentPlan->sums() == targetPlan->sums();
    findFilters();
}

HpfModelJob::~HpfModelJob() = default;

void HpfModelJob::findSortSources()
{
    const auto &present = presentPlan->sortFields();
    for (const HpfModelPlan::SortField &field : targetPlan->sortFields()) {
        Source source;
        int textSource = -1;
        int text = 0;
        for (std::size_t i = 0; i < present.size() && source.index < 0; ++i) {
            const bool isText = !present[i].custom && present[i].column.kind() == core::ValueKind::Text;
            if (present[i].sameValues(field)) {
                source = {static_cast<int>(i), !field.custom && present[i].descending != field.descending};
                textSource = text;
            }
            text += isText ? 1 : 0;
        }
        wordSources.push_back(source);
        if (!field.custom && field.column.kind() == core::ValueKind::Text)
            textSources.push_back(textSource);
        rowsNeeded = rowsNeeded || source.index < 0 || field.custom;
    }
}

void HpfModelJob::findSumSources()
{
    const auto &present = presentPlan->sums();
    const auto firstSum = static_cast<std::ptrdiff_t>(presentPlan->sortFields().size()) + 1;
    for (const HpfModelColumn &column : targetPlan->sums()) {
        const auto found = std::find(present.begin(), present.end(), column);
        const bool kept = found != present.end();
        wordSources.push_back({kept ? static_cast<int>(firstSum + (found - present.begin())) : -1, false});
        rowsNeeded = rowsNeeded || !kept;
    }
}

void HpfModelJob::findFilters()
{
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
    adopted.resize(limit);
    if (view->hasCustomField())
        rows.resize(limit);
    if (sameOrder) {
        content.view->rows().copySlots(order);
        misplaced = content.view->misplacedSlots();
    }
}

void HpfModelJob::gather(const HpfModelContent &content, quint32 firstSlot, Batch &batch) const
{
    batch.firstSlot = firstSlot;
    batch.count = static_cast<int>(std::min(limit - firstSlot, slotsPerBatch));
    const auto count = static_cast<quint32>(batch.count);
    content.view->copyKept(firstSlot, count, batch.kept);
    batch.sharedRows.clear();
    if (view->hasCustomField())
        for (quint32 slot = firstSlot; slot < firstSlot + count; ++slot)
            batch.sharedRows.push_back(content.slots.row(slot));
    batch.rows.clear();
    for (quint32 slot = firstSlot; rowsNeeded && slot < firstSlot + count; ++slot)
        batch.rows.push_back(content.slots.row(slot).get());
}

void HpfModelJob::read(Batch &batch, HpfModelPlan::Reader &reader) const
{
    constexpr int ahead = 16;
    const auto count = static_cast<std::size_t>(batch.count);
    batch.passed.assign(count, false);
    if (!sameWords) {
        batch.words.resize(count * wordSources.size());
        batch.texts.resize(count * textSources.size());
    }
    for (int i = 0; i < batch.count && !cancelled; ++i) {
        if (rowsNeeded && i + ahead < batch.count)
            core::prefetch(batch.rows[static_cast<std::size_t>(i + ahead)]);
        if (!batch.kept.contains(i))
            continue;
        if (!sameWords)
            readWords(batch, i, reader);
        batch.passed[static_cast<std::size_t>(i)] = passes(batch, i, reader);
    }
}

void HpfModelJob::readWords(Batch &batch, int index, HpfModelPlan::Reader &reader) const
{
    const auto at = static_cast<std::size_t>(index);
    const quint64 *const kept = batch.kept.words(index);
    quint64 *const words = batch.words.data() + at * wordSources.size();
    QString *text = batch.texts.data() + at * textSources.size();
    auto textSource = textSources.begin();
    const std::size_t sortCount = arrangement.sort.size();
    IBaseHpfTableData *const row = rowsNeeded ? batch.rows[at] : nullptr;
    for (std::size_t word = 0; word < wordSources.size(); ++word) {
        const Source &source = wordSources[word];
        const bool isText = word < sortCount && arrangement.sort[word].kind == core::ValueKind::Text;
        if (source.index >= 0) {
            const quint64 value = kept[source.index];
            words[word] = source.reversed ? core::SortKey::reversed(value, arrangement.sort[word].kind) : value;
            if (isText)
                *text = batch.kept.texts(index)[*textSource];
        } else if (word < sortCount) {
            QString unused;
            words[word] = reader.sortKey(*row, word, isText ? *text : unused);
        } else {
            words[word] = targetPlan->sums()[word - sortCount - 1].number(*row);
        }
        if (isText) {
            ++text;
            ++textSource;
        }
    }
}

bool HpfModelJob::passes(const Batch &batch, int index, HpfModelPlan::Reader &reader) const
{
    const bool passed = batch.kept.passes(index);
    if (sameFilters)
        return passed;
    if (narrower && !passed)
        return false;
    for (std::size_t filter = 0; filter < knownFilters.size(); ++filter) {
        const bool known = passed && knownFilters[filter];
        if (!known && !reader.passesFilter(*batch.rows[static_cast<std::size_t>(index)], filter))
            return false;
    }
    return true;
}

void HpfModelJob::adopt(Batch &batch)
{
    for (int i = 0; i < batch.count && !cancelled; ++i) {
        if (!batch.kept.contains(i))
            continue;
        const auto at = static_cast<std::size_t>(i);
        const quint32 slot = batch.firstSlot + static_cast<quint32>(i);
        const quint64 *const words = sameWords ? batch.kept.words(i) : batch.words.data() + at * wordSources.size();
        const QString *const texts = sameWords ? batch.kept.texts(i) : batch.texts.data() + at * textSources.size();
        view->adopt(slot, words, texts, batch.passed[at]);
        adopted[slot] = true;
        if (view->hasCustomField())
            rows[slot] = std::move(batch.sharedRows[at]);
    }
    adoptedSlots += static_cast<quint32>(batch.count);
    done = static_cast<int>(gatheredShare * static_cast<qint64>(adoptedSlots) / limit);
}

bool HpfModelJob::arrange(const std::vector<quint32> &changedSlots, const IBaseHpfTableModel &model)
{
    done = gatheredShare;
    for (const quint32 slot : changedSlots) {
        if (slot < limit && adopted[slot]) {
            view->remove(slot);
            adopted[slot] = false;
        }
    }
    if (sameOrder) {
        const auto gone = [this](quint32 slot) { return !adopted[slot]; };
        order.erase(std::remove_if(order.begin(), order.end(), gone), order.end());
    } else {
        for (quint32 slot = 0; slot < limit; ++slot) {
            if (adopted[slot])
                order.push_back(slot);
        }
    }

    const auto compare = [&](quint32 a, quint32 b) { return model.customSort(rows[a], rows[b]); };
    bool finished = !cancelled;
    if (finished && !sameOrder)
        finished = view->order(order, compare, cancelled);
    else if (finished && view->hasCustomField())
        finished = view->mergeMisplaced(order, misplaced, compare, cancelled);
    done = arrangedShare;
    return finished;
}

bool HpfModelJob::place()
{
    return view->place(order, &cancelled);
}

bool HpfModelJob::applyNoted()
{
    changes.follow(*view);
    return changes.applySome(changesPerPiece);
}

void HpfModelJob::finish()
{
    rows.clear();
    retired.clear();
}

std::unique_ptr<core::RowView> HpfModelJob::takeView()
{
    return std::move(view);
}

} // namespace ZB
