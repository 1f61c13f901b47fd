#include <algorithm>

#include "rows/rowview.h"

namespace core {

namespace {

int compareKeys(quint64 a, quint64 b)
{
    return a == b ? 0 : (a < b ? -1 : 1);
}

} // namespace

bool RowView::sameOrder(quint32 slot, const RowValues &values) const
{
    return std::equal(values.sortKeys.begin(), values.sortKeys.end(), words.block(slot)) &&
           std::equal(values.texts.begin(), values.texts.end(), texts.block(slot));
}

int RowView::compareField(std::size_t field, quint32 slot, quint32 other) const
{
    const int byKey = compareKeys(words.block(slot)[field], words.block(other)[field]);
    const int text = textFields[field];
    if (byKey != 0 || text < 0)
        return byKey;
    const int byText = texts.block(slot)[text].compare(texts.block(other)[text]);
    return plan.sort[field].descending ? -byText : byText;
}

bool RowView::arrivedBefore(quint32 slot, quint32 other) const
{
    return slotsFollowArrival ? slot < other : words.block(slot)[arrivalAt] < words.block(other)[arrivalAt];
}

bool RowView::isBefore(quint32 slot, quint32 other) const
{
    for (std::size_t field = 0; field < plan.sort.size(); ++field) {
        const int compared = compareField(field, slot, other);
        if (compared != 0)
            return compared < 0;
    }
    return arrivedBefore(slot, other);
}

/// The same for rows of the same leading word.
bool RowView::isBeforeBesides(quint32 slot, quint32 other) const
{
    return plan.sort.size() == 1 && textCount == 0 ? arrivedBefore(slot, other) : isBefore(slot, other);
}

int RowView::compareByAll(quint32 slot, quint32 other, const Compare &customCompare) const
{
    for (std::size_t field = 0; field < plan.sort.size(); ++field) {
        int compared;
        if (plan.sort[field].kind == ValueKind::Custom) {
            compared = customCompare(slot, other);
            compared = plan.sort[field].descending ? (compared < 0) - (compared > 0) : compared;
        } else {
            compared = compareField(field, slot, other);
        }
        if (compared != 0)
            return compared;
    }
    return compareKeys(words.block(slot)[arrivalAt], words.block(other)[arrivalAt]);
}

bool RowView::order(std::vector<quint32> &slots, const Compare &customCompare,
                    const SlotSort::CancelFlag &cancelled) const
{
    if (custom) {
        return SlotSort::byCompare(
            slots, [&](quint32 a, quint32 b) { return compareByAll(a, b, customCompare); }, cancelled);
    }
    const auto sortByWord = [&](int word) {
        return SlotSort::byKey(
            slots, [this, word](quint32 slot) { return words.block(slot)[word]; }, cancelled);
    };
    bool finished = sortByWord(arrivalAt);
    for (std::size_t field = plan.sort.size(); field-- > 0 && finished;) {
        const int text = textFields[field];
        if (text < 0) {
            finished = sortByWord(static_cast<int>(field));
            continue;
        }
        const auto textOf = [this, text](quint32 slot) -> const QString & { return texts.block(slot)[text]; };
        finished = SlotSort::byText(slots, textOf, plan.sort[field].descending, cancelled);
    }
    return finished;
}

bool RowView::mergeMisplaced(std::vector<quint32> &slots, const std::vector<quint32> &misplacedSlotList,
                             const Compare &customCompare, const SlotSort::CancelFlag &cancelled) const
{
    std::vector<bool> moves(states.size());
    for (const quint32 slot : misplacedSlotList) {
        if (slot < states.size())
            moves[slot] = true;
    }
    std::vector<quint32> moved;
    const auto stays = std::remove_if(slots.begin(), slots.end(), [&](quint32 slot) {
        if (moves[slot])
            moved.push_back(slot);
        return moves[slot];
    });
    slots.erase(stays, slots.end());
    return SlotSort::mergeByCompare(
        slots, std::move(moved), [&](quint32 a, quint32 b) { return compareByAll(a, b, customCompare); }, cancelled);
}

bool RowView::checkConsistency() const
{
    if (!sequence.checkConsistency())
        return false;
    std::vector<ColumnSum> recount;
    for (const ValueKind kind : plan.sums)
        recount.emplace_back(kind == ValueKind::Integer);
    bool consistent = true;
    quint32 previous = 0;
    bool first = true;
    sequence.forEach(0, sequence.size(), [&](const ChunkedSequence::Entry &entry) {
        const bool inOrder = custom || first || isBefore(previous, entry.slot);
        consistent =
            consistent && inOrder && entry.marked == passes(entry.slot) && entry.value == leadingWord(entry.slot);
        for (std::size_t i = 0; i < recount.size() && hasState(entry.slot, KeptRows::counted); ++i)
            recount[i].add(words.block(entry.slot)[sumsFrom + static_cast<int>(i)]);
        previous = entry.slot;
        first = false;
    });
    for (std::size_t i = 0; i < recount.size(); ++i) {
        consistent = consistent && ColumnSum::bitsOf(recount[i].toDouble()) == ColumnSum::bitsOf(sums[i].toDouble()) &&
                     recount[i].toInteger() == sums[i].toInteger();
    }
    return consistent;
}

} // namespace core
