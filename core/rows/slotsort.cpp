#include "rows/slotsort.h"

#include <array>

namespace core {
namespace SlotSort {

namespace {

constexpr std::size_t digitValues = 256;
constexpr std::size_t digits = 8;
constexpr std::size_t radixFrom = 512; ///< below, a comparison sort is faster
constexpr std::size_t itemsPerCheck = 65536;

using Histogram = std::array<std::size_t, digitValues>;

std::size_t digitOf(quint64 key, std::size_t digit)
{
    return static_cast<std::size_t>(key >> (8 * digit)) & (digitValues - 1);
}

bool keyBefore(const KeyedSlot &a, const KeyedSlot &b)
{
    return a.key < b.key;
}

/// Moves every item to its place by one digit.
bool scatter(const KeyedSlot *from, KeyedSlot *to, std::size_t count, std::size_t digit, const Histogram &histogram,
             const CancelFlag &cancelled)
{
    Histogram next;
    std::size_t start = 0;
    for (std::size_t value = 0; value < digitValues; ++value) {
        next[value] = start;
        start += histogram[value];
    }
    for (std::size_t first = 0; first < count; first += itemsPerCheck) {
        if (cancelled)
            return false;
        const std::size_t end = std::min(count, first + itemsPerCheck);
        for (std::size_t i = first; i < end; ++i)
            to[next[digitOf(from[i].key, digit)]++] = from[i];
    }
    return true;
}

} // namespace

bool sortItems(KeyedSlot *items, KeyedSlot *buffer, std::size_t count, const CancelFlag &cancelled)
{
    if (std::is_sorted(items, items + count, keyBefore))
        return !cancelled;
    if (count < radixFrom) {
        std::stable_sort(items, items + count, keyBefore);
        return !cancelled;
    }
    std::array<Histogram, digits> histograms{};
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t digit = 0; digit < digits; ++digit)
            ++histograms[digit][digitOf(items[i].key, digit)];
    }
    KeyedSlot *from = items;
    KeyedSlot *to = buffer;
    bool finished = true;
    for (std::size_t digit = 0; digit < digits && finished; ++digit) {
        if (histograms[digit][digitOf(items[0].key, digit)] == count)
            continue;
        finished = scatter(from, to, count, digit, histograms[digit], cancelled);
        if (finished)
            std::swap(from, to);
    }
    if (from != items)
        std::copy(from, from + count, items);
    return finished;
}

bool byCompare(std::vector<quint32> &slots, const Compare &compare, const CancelFlag &cancelled)
{
    const std::size_t count = slots.size();
    std::vector<quint32> buffer(count);
    for (std::size_t width = 1; width < count; width *= 2) {
        for (std::size_t first = 0; first < count; first += 2 * width) {
            const std::size_t middle = std::min(first + width, count);
            const std::size_t end = std::min(first + 2 * width, count);
            std::size_t left = first;
            std::size_t right = middle;
            for (std::size_t out = first; out < end; ++out) {
                if (cancelled)
                    return false;
                const bool takeLeft = right == end || (left < middle && compare(slots[left], slots[right]) <= 0);
                buffer[out] = slots[takeLeft ? left++ : right++];
            }
        }
        slots.swap(buffer);
    }
    return !cancelled;
}

bool mergeByCompare(std::vector<quint32> &slots, std::vector<quint32> moved, const Compare &compare,
                    const CancelFlag &cancelled)
{
    if (!byCompare(moved, compare, cancelled))
        return false;
    std::vector<quint32> result;
    result.reserve(slots.size() + moved.size());
    auto rest = slots.cbegin();
    for (const quint32 slot : moved) {
        if (cancelled)
            return false;
        const auto place =
            std::partition_point(rest, slots.cend(), [&](quint32 present) { return compare(present, slot) <= 0; });
        result.insert(result.end(), rest, place);
        result.push_back(slot);
        rest = place;
    }
    result.insert(result.end(), rest, slots.cend());
    slots = std::move(result);
    return true;
}

} // namespace SlotSort
} // namespace core
