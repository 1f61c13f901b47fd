#pragma once

#include <array>
#include <utility>
#include <vector>

#include "rows/slotsort.h"

namespace core {

/// A radix sort of slots by 64-bit keys that can stop after every digit and go on later: a few milliseconds for each
/// of the digits in which a million keys differ. Equal keys keep their order. Not thread-safe.
class SteppedKeySort
{
public:
    using Item = SlotSort::KeyedSlot;

    SteppedKeySort() = default;
    explicit SteppedKeySort(std::vector<Item> unsorted) : items(std::move(unsorted)), buffer(items.size()) {}

    /// Carries on until isDue() says to stop; true when the items are sorted.
    template <typename IsDue>
    bool step(IsDue isDue)
    {
        while (digit < digits) {
            sortByDigit();
            ++digit;
            if (isDue())
                break;
        }
        return digit == digits;
    }
    /// The items, once they are sorted.
    std::vector<Item> take() { return std::move(items); }

private:
    static constexpr unsigned digits = 8;

    std::size_t digitOf(const Item &item) const { return static_cast<std::size_t>(item.key >> (8 * digit)) & 0xff; }
    void sortByDigit()
    {
        std::array<std::size_t, 256> starts{};
        for (const Item &item : items)
            ++starts[digitOf(item)];
        if (items.empty() || starts[digitOf(items.front())] == items.size())
            return;
        std::size_t start = 0;
        for (std::size_t &each : starts)
            start += std::exchange(each, start);
        for (const Item &item : items)
            buffer[starts[digitOf(item)]++] = item;
        items.swap(buffer);
    }

    std::vector<Item> items;
    std::vector<Item> buffer;
    unsigned digit = 0;
};

} // namespace core
