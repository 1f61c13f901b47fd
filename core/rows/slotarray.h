#pragma once

#include <QtCore/qglobal.h>
#include <algorithm>
#include <memory>
#include <vector>

namespace core {

/// An array by slot number that grows without ever copying what it holds: pages are added at the end. Growing therefore
/// costs the same at a million slots as at none, and pointers into it stay valid. An element is a block of `stride`
/// values, value-initialised. Not thread-safe.
template <typename T>
class SlotArray
{
public:
    explicit SlotArray(int valueCount = 1) : stride(static_cast<std::size_t>(valueCount)) {}

    /// The number of slots that can be asked for.
    quint32 size() const { return static_cast<quint32>(pages.size() * slotsPerPage); }

    /// Makes the slot accessible, and every one below it.
    void ensure(quint32 slot)
    {
        while (slot >= size())
            pages.push_back(std::make_unique<T[]>(slotsPerPage * stride));
    }

    T &operator[](quint32 slot) { return *block(slot); }
    const T &operator[](quint32 slot) const { return *block(slot); }
    /// The values of one slot.
    T *block(quint32 slot) { return pages[slot / slotsPerPage].get() + (slot % slotsPerPage) * stride; }
    const T *block(quint32 slot) const { return pages[slot / slotsPerPage].get() + (slot % slotsPerPage) * stride; }

    /// Copies the values of `count` accessible slots from `first` on.
    void copy(quint32 first, quint32 count, std::vector<T> &values) const
    {
        values.clear();
        for (quint32 slot = first; slot < first + count;) {
            const auto inPage = static_cast<quint32>(slotsPerPage - slot % slotsPerPage);
            const quint32 taken = std::min(inPage, first + count - slot);
            values.insert(values.end(), block(slot), block(slot) + taken * stride);
            slot += taken;
        }
    }

    std::size_t valuesPerSlot() const { return stride; }

private:
    static constexpr std::size_t slotsPerPage = 1024;

    std::size_t stride;
    std::vector<std::unique_ptr<T[]>> pages;
};

} // namespace core
