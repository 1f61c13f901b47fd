#include "rows/rowview.h"

#include <algorithm>

#include "rows/prefetch.h"

namespace core {

RowView::RowView(const Arrangement &arrangement)
    : plan(arrangement), arrivalAt(static_cast<int>(plan.sort.size())), sumsFrom(arrivalAt + 1),
      words(sumsFrom + static_cast<int>(plan.sums.size())),
      texts(static_cast<int>(std::count_if(plan.sort.begin(), plan.sort.end(), [](const Arrangement::SortField &field) {
          return field.kind == ValueKind::Text;
      })))
{
    for (const auto &field : plan.sort) {
        textFields.push_back(field.kind == ValueKind::Text ? textCount++ : -1);
        custom = custom || field.kind == ValueKind::Custom;
    }
    for (const ValueKind kind : plan.sums)
        sums.emplace_back(kind == ValueKind::Integer);
}

RowView::~RowView() = default;

RowView::Effect RowView::add(quint32 slot, qint64 arrival, const RowValues &values)
{
    ensure(slot);
    states[slot] = KeptRows::present;
    words.block(slot)[arrivalAt] = SortKey::ofInteger(arrival, false);
    keep(slot, values);
    noteArrival(slot);
    insert(slot);
    countIn(slot);
    return values.passes ? Effect::Order : Effect::None;
}

RowView::Effect RowView::change(quint32 slot, const RowValues &values)
{
    const bool passed = passes(slot);
    const bool moves = !custom && !sameOrder(slot, values);
    const quint64 *const kept = words.block(slot) + sumsFrom;
    const bool sameSums = passed == values.passes && hasState(slot, KeptRows::counted) == passed &&
                          std::equal(values.sums.begin(), values.sums.end(), kept);
    if (!sameSums)
        countOut(slot);
    if (moves)
        sequence.eraseSorted(slot, leadingWord(slot));
    keep(slot, values);
    if (moves)
        insert(slot);
    else if (passed != values.passes)
        sequence.setMarked(slot, values.passes);
    if (!sameSums)
        countIn(slot);
    if (custom)
        markMisplaced(slot);
    const bool shownMoved = moves && values.passes;
    return shownMoved || passed != values.passes ? Effect::Order : Effect::None;
}

RowView::Effect RowView::remove(quint32 slot)
{
    const bool shown = passes(slot);
    countOut(slot);
    if (custom)
        sequence.erase(slot);
    else
        sequence.eraseSorted(slot, leadingWord(slot));
    states[slot] = 0;
    std::fill_n(texts.block(slot), textCount, QString());
    return shown ? Effect::Order : Effect::None;
}

void RowView::prefetch(quint32 slot) const
{
    core::prefetch(words.block(slot));
    core::prefetch(words.block(slot) + words.valuesPerSlot() - 1); // often in the next line of the cache
    core::prefetch(&states[slot]);
    sequence.prefetch(slot);
}

void RowView::adopt(quint32 slot, const quint64 *keptWords, const QString *keptTexts, bool rowPasses)
{
    ensure(slot);
    std::copy_n(keptWords, words.valuesPerSlot(), words.block(slot));
    std::copy_n(keptTexts, textCount, texts.block(slot));
    states[slot] = KeptRows::present;
    setState(slot, KeptRows::passing, rowPasses);
    countIn(slot);
}

void RowView::copyKept(quint32 first, quint32 count, KeptRows &kept) const
{
    const quint32 usable = std::min(count, states.size() - std::min(states.size(), first));
    kept.wordsPerRow = words.valuesPerSlot();
    kept.textsPerRow = texts.valuesPerSlot();
    words.copy(first, usable, kept.wordList);
    texts.copy(first, usable, kept.textList);
    states.copy(first, usable, kept.states);
    kept.states.resize(count, 0);
}

void RowView::ensure(quint32 slot)
{
    words.ensure(slot);
    texts.ensure(slot);
    states.ensure(slot);
}

void RowView::setState(quint32 slot, State state, bool on)
{
    const quint8 others = states[slot] & static_cast<quint8>(~state);
    states[slot] = static_cast<quint8>(others | (on ? state : 0));
}

void RowView::keep(quint32 slot, const RowValues &values)
{
    quint64 *const block = words.block(slot);
    std::copy(values.sortKeys.begin(), values.sortKeys.end(), block);
    std::copy(values.sums.begin(), values.sums.end(), block + sumsFrom);
    std::copy(values.texts.begin(), values.texts.end(), texts.block(slot));
    setState(slot, KeptRows::passing, values.passes);
}

qint64 RowView::arrivalOf(quint32 slot) const
{
    // The key of an arrival is its own inverse.
    return static_cast<qint64>(SortKey::ofInteger(static_cast<qint64>(words.block(slot)[arrivalAt]), false));
}

void RowView::insert(quint32 slot)
{
    const ChunkedSequence::Entry entry{leadingWord(slot), slot, passes(slot)};
    if (custom) {
        sequence.append(entry);
        markMisplaced(slot);
    } else {
        sequence.insertSorted(entry, [this, slot](quint32 other) { return isBeforeBesides(other, slot); });
    }
}

void RowView::countIn(quint32 slot)
{
    if (!passes(slot))
        return;
    const quint64 *const values = words.block(slot) + sumsFrom;
    for (std::size_t i = 0; i < sums.size(); ++i)
        sums[i].add(values[i]);
    setState(slot, KeptRows::counted, true);
}

void RowView::countOut(quint32 slot)
{
    if (!hasState(slot, KeptRows::counted))
        return;
    const quint64 *const values = words.block(slot) + sumsFrom;
    for (std::size_t i = 0; i < sums.size(); ++i)
        sums[i].subtract(values[i]);
    setState(slot, KeptRows::counted, false);
}

void RowView::uncountAll()
{
    for (quint32 slot = 0; slot < states.size(); ++slot)
        setState(slot, KeptRows::counted, false);
    for (ColumnSum &sum : sums)
        sum.clear();
}

void RowView::count(quint32 slot, const QVarLengthArray<quint64, 4> &values)
{
    countOut(slot);
    std::copy(values.begin(), values.end(), words.block(slot) + sumsFrom);
    countIn(slot);
}

void RowView::markMisplaced(quint32 slot)
{
    if (hasState(slot, KeptRows::outOfPlace))
        return;
    setState(slot, KeptRows::outOfPlace, true);
    misplaced.push_back(slot);
}

void RowView::noteArrival(quint32 slot)
{
    const quint64 arrival = words.block(slot)[arrivalAt];
    if (lastArrival != 0 && (slot <= lastSlot || arrival <= lastArrival))
        slotsFollowArrival = false;
    lastSlot = slot;
    lastArrival = arrival;
}

bool RowView::place(const std::vector<quint32> &slots, const SlotSort::CancelFlag *cancelled)
{
    constexpr std::size_t ahead = 16;
    const auto entryAt = [&](int index) {
        const auto at = static_cast<std::size_t>(index);
        if (at + ahead < slots.size())
            prefetch(slots[at + ahead]);
        return ChunkedSequence::Entry{leadingWord(slots[at]), slots[at], passes(slots[at])};
    };
    if (!sequence.assign(static_cast<int>(slots.size()), entryAt, cancelled))
        return false;
    for (quint32 slot = 0; slot < states.size(); ++slot) {
        if (hasState(slot, KeptRows::present))
            noteArrival(slot);
    }
    return true;
}

} // namespace core
