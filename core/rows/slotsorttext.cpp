#include "rows/slotsort.h"

namespace core {
namespace SlotSort {

namespace {

constexpr std::size_t compareBelow = 64; ///< as many texts are compared one with another
constexpr int keyBits = 64;

/// Items that agree in the first `depth` units of their texts.
struct Range
{
    std::size_t first;
    std::size_t end;
    int depth;
};

/// Sorts by texts without comparing texts: leaves out what a range of them has in common, packs the next units into a
/// key, sorts by the keys and goes on within the ranges of equal ones. Eight units fit when all are below 256, else
/// four.
class TextSort
{
public:
    TextSort(std::vector<quint32> &slotList, const std::function<const QString &(quint32)> &textOfSlot,
             bool descendingOrder, const CancelFlag &cancelFlag)
        : slots(slotList), textOf(textOfSlot), descending(descendingOrder), cancelled(cancelFlag),
          items(slotList.size()), buffer(slotList.size())
    {
        std::transform(slots.begin(), slots.end(), items.begin(), [](quint32 slot) { return KeyedSlot{0, slot}; });
    }

    bool run()
    {
        std::vector<Range> open{{0, items.size(), 0}};
        while (!open.empty() && !cancelled) {
            const Range range = open.back();
            open.pop_back();
            if (range.end - range.first < compareBelow)
                sortByComparing(range);
            else
                sortByKeys(range, open);
        }
        std::transform(items.begin(), items.end(), slots.begin(), [](const KeyedSlot &item) { return item.slot; });
        return !cancelled;
    }

private:
    /// What the texts of a range are like from its depth on.
    struct Survey
    {
        int common = 0; ///< units that all have, from the start
        bool allEqual = true;
        bool narrow = true;   ///< every unit is below 256
        bool hasNull = false; ///< some unit is 0, which a key cannot tell from the end of a text
    };

    void sortByComparing(const Range &range)
    {
        std::stable_sort(at(range.first), at(range.end), [this](const KeyedSlot &a, const KeyedSlot &b) {
            const int order = textOf(a.slot).compare(textOf(b.slot));
            return descending ? order > 0 : order < 0;
        });
    }

    void sortByKeys(const Range &range, std::vector<Range> &open)
    {
        const Survey found = survey(range);
        if (found.allEqual || cancelled)
            return;
        if (found.hasNull) {
            sortByComparing(range);
            return;
        }
        const int unitBits = found.narrow ? 8 : 16;
        for (std::size_t i = range.first; i < range.end && !cancelled; ++i)
            items[i].key = keyOf(textOf(items[i].slot), found.common, unitBits);
        sortItems(items.data() + range.first, buffer.data(), range.end - range.first, cancelled);
        for (std::size_t first = range.first; first < range.end;) {
            std::size_t end = first + 1;
            while (end < range.end && items[end].key == items[first].key)
                ++end;
            if (end - first > 1)
                open.push_back({first, end, found.common + keyBits / unitBits});
            first = end;
        }
    }

    Survey survey(const Range &range) const
    {
        Survey found;
        const QString &model = textOf(items[range.first].slot);
        found.common = model.size();
        for (std::size_t i = range.first; i < range.end && !cancelled; ++i) {
            const QString &text = textOf(items[i].slot);
            const int comparable = std::min(found.common, text.size());
            int same = std::min(range.depth, comparable);
            while (same < comparable && text.at(same) == model.at(same))
                ++same;
            found.common = same;
            found.allEqual = found.allEqual && same == text.size() && same == model.size();
            for (int unit = range.depth; unit < text.size(); ++unit) {
                const ushort code = text.at(unit).unicode();
                found.narrow = found.narrow && code < 256;
                found.hasNull = found.hasNull || code == 0;
            }
        }
        return found;
    }

    quint64 keyOf(const QString &text, int depth, int unitBits) const
    {
        quint64 key = 0;
        for (int i = depth; i < depth + keyBits / unitBits; ++i)
            key = key << unitBits | (i < text.size() ? text.at(i).unicode() : 0u);
        return descending ? ~key : key;
    }

    std::vector<KeyedSlot>::iterator at(std::size_t index)
    {
        return items.begin() + static_cast<std::ptrdiff_t>(index);
    }

    std::vector<quint32> &slots;
    const std::function<const QString &(quint32)> &textOf;
    const bool descending;
    const CancelFlag &cancelled;
    std::vector<KeyedSlot> items;
    std::vector<KeyedSlot> buffer;
};

} // namespace

bool byText(std::vector<quint32> &slots, const std::function<const QString &(quint32)> &textOf, bool descending,
            const CancelFlag &cancelled)
{
    return TextSort(slots, textOf, descending, cancelled).run();
}

} // namespace SlotSort
} // namespace core
