#include "grid/gridcolumns.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace ZB {

bool operator==(const GridColumn &a, const GridColumn &b)
{
    return a.width == b.width && a.visible == b.visible && a.numeric == b.numeric && a.bold == b.bold &&
           a.filterable == b.filterable && a.filtered == b.filtered && a.alignment == b.alignment &&
           a.statisticsBold == b.statisticsBold && a.statisticsAlignment == b.statisticsAlignment &&
           a.statisticsColor == b.statisticsColor && a.unitSample == b.unitSample;
}

GridColumns::GridColumns() = default;

void GridColumns::reset(int count)
{
    columns.clear();
    sequence.clear();
    resize(count);
}

void GridColumns::resize(int count)
{
    const int before = this->count();
    columns.resize(static_cast<size_t>(std::max(0, count)));
    sequence.erase(std::remove_if(sequence.begin(), sequence.end(), [&](int column) { return column >= count; }),
                   sequence.end());
    for (int column = before; column < count; ++column)
        sequence.push_back(column);
    layOut();
}

const GridColumn &GridColumns::at(int column) const
{
    static const GridColumn none;
    return column >= 0 && column < count() ? columns[static_cast<size_t>(column)] : none;
}

bool GridColumns::set(int column, const GridColumn &look)
{
    if (column < 0 || column >= count())
        return false;
    GridColumn bounded = look;
    bounded.width = std::clamp(look.width, minimumWidth, maximumWidth);
    if (bounded == columns[static_cast<size_t>(column)])
        return false;
    columns[static_cast<size_t>(column)] = bounded;
    layOut();
    return true;
}

void GridColumns::setOrder(const std::vector<int> &order)
{
    std::vector<bool> taken(columns.size(), false);
    std::vector<int> result;
    result.reserve(columns.size());
    const auto take = [&](int column) {
        if (column < 0 || column >= count() || taken[static_cast<size_t>(column)])
            return;
        taken[static_cast<size_t>(column)] = true;
        result.push_back(column);
    };
    std::for_each(order.begin(), order.end(), take);
    std::for_each(sequence.begin(), sequence.end(), take);
    sequence = result;
    layOut();
}

bool GridColumns::move(int column, int place)
{
    const int from = placeOf(column);
    const auto size = static_cast<int>(places.size());
    place = std::clamp(place, 0, size);
    if (from < 0 || place == from || place == from + 1)
        return false;
    std::vector<int> order = sequence;
    order.erase(std::find(order.begin(), order.end(), column));
    if (place < size) {
        const int next = places[static_cast<size_t>(place)].column;
        order.insert(std::find(order.begin(), order.end(), next), column);
    } else {
        const int last = places.back().column;
        order.insert(std::find(order.begin(), order.end(), last) + 1, column);
    }
    setOrder(order);
    return true;
}

void GridColumns::setPixelRatio(double ratio)
{
    pixelRatio = ratio;
    layOut();
}

void GridColumns::setFrozen(int count)
{
    wishedFrozen = std::max(0, count);
}

int GridColumns::frozen() const
{
    return std::min(wishedFrozen, static_cast<int>(places.size()));
}

int GridColumns::placeOf(int column) const
{
    return column >= 0 && column < count() ? placeOfColumn[static_cast<size_t>(column)] : -1;
}

int GridColumns::frozenWidth() const
{
    if (frozen() == 0)
        return 0;
    const GridPlacedColumn &last = places[static_cast<size_t>(frozen() - 1)];
    return last.left + last.width;
}

void GridColumns::layOut()
{
    places.clear();
    placeOfColumn.assign(columns.size(), -1);
    total = 0;
    for (const int column : sequence) {
        const GridColumn &look = at(column);
        if (!look.visible)
            continue;
        const int width = std::max(1, static_cast<int>(std::lround(look.width * pixelRatio)));
        placeOfColumn[static_cast<size_t>(column)] = static_cast<int>(places.size());
        places.push_back({column, total, width});
        total += width;
    }
}

} // namespace ZB
