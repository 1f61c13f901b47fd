#include "rows/rowview.h"

#include <algorithm>

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
    adopt(slot, arrival, values);
    insert(slot);
    return values.passes ? Effect::Order : Effect::None;
}

RowView::Effect RowView::change(quint32 slot, const RowValues &values)
{
    const bool passed = passes(slot);
    const bool moves = !custom && !sameOrder(slot, values);
    const quint64 *const kept = words.block(slot) + sumsFrom;
    const bool sameSums = passed == values.passes && (states[slot] & counted) == (passed ? counted : 0) &&
                          std::equal(values.sums.begin(), values.sums.end(), kept);
    if (!sameSums)
        countOut(slot);
    if (moves)
        sequence.erase(slot);
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
    sequence.erase(slot);
    states[slot] = 0;
    std::fill_n(texts.block(slot), textCount, QString());
    return shown ? Effect::Order : Effect::None;
}

void RowView::adopt(quint32 slot, qint64 arrival, const RowValues &values)
{
    words.ensure(slot);
    texts.ensure(slot);
    states.ensure(slot);
    states[slot] = 0;
    words.block(slot)[arrivalAt] = SortKey::ofInteger(arrival, false);
    keep(slot, values);
    countIn(slot);
}

void RowView::keep(quint32 slot, const RowValues &values)
{
    quint64 *const block = words.block(slot);
    std::copy(values.sortKeys.begin(), values.sortKeys.end(), block);
    std::copy(values.sums.begin(), values.sums.end(), block + sumsFrom);
    std::copy(values.texts.begin(), values.texts.end(), texts.block(slot));
    const quint8 others = states[slot] & static_cast<quint8>(~passing);
    states[slot] = static_cast<quint8>(others | (values.passes ? passing : 0));
}

RowValues RowView::valuesOf(quint32 slot) const
{
    RowValues values;
    const quint64 *const block = words.block(slot);
    values.sortKeys.append(block, arrivalAt);
    values.sums.append(block + sumsFrom, static_cast<int>(sums.size()));
    values.texts.append(texts.block(slot), textCount);
    values.passes = passes(slot);
    return values;
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
        sequence.insertSorted(entry, [this, slot](quint32 other) { return isBefore(other, slot); });
    }
}

void RowView::countIn(quint32 slot)
{
    if (!passes(slot))
        return;
    const quint64 *const values = words.block(slot) + sumsFrom;
    for (std::size_t i = 0; i < sums.size(); ++i)
        sums[i].add(values[i]);
    states[slot] |= counted;
}

void RowView::countOut(quint32 slot)
{
    if ((states[slot] & counted) == 0)
        return;
    const quint64 *const values = words.block(slot) + sumsFrom;
    for (std::size_t i = 0; i < sums.size(); ++i)
        sums[i].subtract(values[i]);
    states[slot] &= static_cast<quint8>(~counted);
}

void RowView::uncountAll()
{
    for (quint32 slot = 0; slot < states.size(); ++slot)
        states[slot] &= static_cast<quint8>(~counted);
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
    if ((states[slot] & outOfPlace) != 0)
        return;
    states[slot] |= outOfPlace;
    misplaced.push_back(slot);
}

void RowView::place(const std::vector<quint32> &slots)
{
    sequence.assign(static_cast<int>(slots.size()), [&](int index) {
        const quint32 slot = slots[static_cast<std::size_t>(index)];
        return ChunkedSequence::Entry{leadingWord(slot), slot, passes(slot)};
    });
}

} // namespace core
