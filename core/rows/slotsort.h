#pragma once

#include <QtCore/QString>
#include <QtCore/qglobal.h>
#include <algorithm>
#include <atomic>
#include <functional>
#include <vector>

namespace core {

/// Stable sorts of slot lists. Each can be called off at any time: it then returns false soon after `cancelled` has
/// become true, with the slots in some order. Sorting by several columns is sorting by one after the other, the
/// weightiest last.
namespace SlotSort {

using CancelFlag = std::atomic<bool>;

struct KeyedSlot
{
    quint64 key;
    quint32 slot;
};

/// By key; about 30 ms for a million. `buffer` is as long as `items`. A radix sort that passes over the digits which
/// all keys have in common.
bool sortItems(KeyedSlot *items, KeyedSlot *buffer, std::size_t count, const CancelFlag &cancelled);

template <typename KeyOf>
bool byKey(std::vector<quint32> &slots, KeyOf keyOf, const CancelFlag &cancelled)
{
    std::vector<KeyedSlot> items;
    items.reserve(slots.size());
    for (const quint32 slot : slots)
        items.push_back({keyOf(slot), slot});
    std::vector<KeyedSlot> buffer(items.size());
    const bool finished = sortItems(items.data(), buffer.data(), items.size(), cancelled);
    std::transform(items.begin(), items.end(), slots.begin(), [](const KeyedSlot &item) { return item.slot; });
    return finished;
}

/// By the texts' code units. textOf(slot) must stay the same while the sort runs.
bool byText(std::vector<quint32> &slots, const std::function<const QString &(quint32)> &textOf, bool descending,
            const CancelFlag &cancelled);

/// Below 0 when the first slot goes in front of the second.
using Compare = std::function<int(quint32, quint32)>;

/// By a comparison that may contradict itself (records change while it reads them): the result then is in some order,
/// nothing worse. n log n comparisons.
bool byCompare(std::vector<quint32> &slots, const Compare &compare, const CancelFlag &cancelled);

/// Puts k slots into n that are in order: k log n comparisons and a copy. Equal ones go behind those that are there.
bool mergeByCompare(std::vector<quint32> &slots, std::vector<quint32> moved, const Compare &compare,
                    const CancelFlag &cancelled);

} // namespace SlotSort
} // namespace core
