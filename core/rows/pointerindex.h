#pragma once

#include <QtCore/qglobal.h>
#include <algorithm>
#include <utility>
#include <vector>

#include "rows/prefetch.h"

namespace core {

/// Objects by a 64-bit hash, for objects that the caller keeps at one place: a search reads the hashes themselves, side
/// by side, and follows a pointer only where one agrees. An open table; 24 to 48 bytes for each object. Several may
/// have one hash. Not thread-safe.
template <typename T>
class PointerIndex
{
public:
    int size() const { return count; }
    /// The object of this hash that matches(object) accepts; null when there is none.
    template <typename Matches>
    T *find(quint64 hash, Matches matches) const
    {
        for (std::size_t i = homeOf(hash); count > 0 && cells[i].object; i = next(i))
            if (cells[i].hash == hash && matches(*cells[i].object))
                return cells[i].object;
        return nullptr;
    }
    /// Has the processor fetch where a search of this hash begins; fetched, likely() answers without waiting.
    void prefetch(quint64 hash) const
    {
        if (count > 0)
            core::prefetch(&cells[homeOf(hash)]);
    }
    /// The first object of this hash, which is the one that is looked for unless others have the same; null when there
    /// is none.
    T *likely(quint64 hash) const
    {
        return find(hash, [](const T &) { return true; });
    }
    void insert(quint64 hash, T *object)
    {
        if ((static_cast<std::size_t>(count) + 1) * 3 > cells.size() * 2)
            grow();
        place({hash, object});
        ++count;
    }
    /// The object must be there under this hash.
    void remove(quint64 hash, const T *object);
    /// Keeps its memory.
    void clear()
    {
        std::fill(cells.begin(), cells.end(), Cell());
        count = 0;
    }

private:
    struct Cell
    {
        quint64 hash = 0;
        T *object = nullptr;
    };

    std::size_t homeOf(quint64 hash) const { return (hash ^ hash >> 32) & (cells.size() - 1); }
    std::size_t next(std::size_t i) const { return (i + 1) & (cells.size() - 1); }
    void place(const Cell &cell)
    {
        std::size_t i = homeOf(cell.hash);
        while (cells[i].object)
            i = next(i);
        cells[i] = cell;
    }
    void grow();

    std::vector<Cell> cells; ///< a power of two of them, at most two thirds in use
    int count = 0;
};

template <typename T>
void PointerIndex<T>::grow()
{
    constexpr std::size_t firstSize = 16;
    const std::vector<Cell> old = std::exchange(cells, {});
    cells.resize(old.empty() ? firstSize : old.size() * 2);
    for (const Cell &cell : old)
        if (cell.object)
            place(cell);
}

template <typename T>
void PointerIndex<T>::remove(quint64 hash, const T *object)
{
    std::size_t hole = homeOf(hash);
    while (cells[hole].object != object)
        hole = next(hole);
    // Cells behind the hole move up unless that would put them in front of their home.
    const std::size_t mask = cells.size() - 1;
    for (std::size_t i = next(hole); cells[i].object; i = next(i)) {
        if (((i - homeOf(cells[i].hash)) & mask) >= ((i - hole) & mask)) {
            cells[hole] = cells[i];
            hole = i;
        }
    }
    cells[hole] = Cell();
    --count;
}

} // namespace core
