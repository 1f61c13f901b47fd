#pragma once

#include <QtCore/qglobal.h>
#include <algorithm>
#include <utility>
#include <vector>

namespace core {

/// A merge sort of slots that can stop anywhere and go on later. Equal slots keep their order, and a comparison that
/// contradicts itself leaves them in some order, nothing worse. n log n comparisons, room for n more slots. Not
/// thread-safe.
class SteppedSort
{
public:
    SteppedSort() = default;
    explicit SteppedSort(std::vector<quint32> unsorted) : from(std::move(unsorted)), to(from.size()) { startPass(1); }

    /// Carries on until isDue() says to stop, which is asked now and then; true when the slots are sorted.
    /// compare(a, b): below 0 when `a` goes in front of `b`; the same throughout.
    template <typename Compare, typename IsDue>
    bool step(Compare compare, IsDue isDue);
    /// In thousandths.
    int progress() const;
    /// The slots, once they are sorted.
    std::vector<quint32> take() { return std::move(from); }

private:
    static constexpr std::size_t slotsPerPiece = 1024; ///< between two looks at the clock

    void startPass(std::size_t runLength)
    {
        width = runLength;
        startPair(0);
    }
    void startPair(std::size_t first)
    {
        out = left = first;
        right = middle = std::min(first + width, from.size());
        end = std::min(first + 2 * width, from.size());
    }

    std::vector<quint32> from;
    std::vector<quint32> to;
    std::size_t width = 1; ///< length of the sorted runs in `from`
    /// The two runs that are being merged: [.., middle) and [middle, end), read at left and right, written at out.
    std::size_t left = 0;
    std::size_t right = 0;
    std::size_t middle = 0;
    std::size_t end = 0;
    std::size_t out = 0;
};

template <typename Compare, typename IsDue>
bool SteppedSort::step(Compare compare, IsDue isDue)
{
    while (width < from.size()) {
        while (out < from.size()) {
            const std::size_t pieceEnd = std::min(end, out + slotsPerPiece);
            while (out < pieceEnd) {
                const bool takeLeft = left < middle && (right >= end || compare(from[right], from[left]) >= 0);
                to[out++] = takeLeft ? from[left++] : from[right++];
            }
            if (out == end && end < from.size())
                startPair(end);
            if (out % slotsPerPiece == 0 && isDue())
                return false;
        }
        from.swap(to);
        startPass(2 * width);
    }
    return true;
}

inline int SteppedSort::progress() const
{
    std::size_t passes = 0;
    std::size_t passed = 0;
    for (std::size_t length = 1; length < from.size(); length *= 2) {
        ++passes;
        passed += length < width ? 1 : 0;
    }
    if (passed == passes)
        return 1000;
    const double ofPass = static_cast<double>(out) / static_cast<double>(from.size());
    return static_cast<int>(1000 * (static_cast<double>(passed) + ofPass) / static_cast<double>(passes));
}

} // namespace core
