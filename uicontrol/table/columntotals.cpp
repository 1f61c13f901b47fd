#include "table/columntotals.h"

#include <utility>

#include "model/fieldvalue.h"
#include "rows/prefetch.h"

namespace KV {

void ColumnTotals::count(int field, std::vector<double> values)
{
    Total &total = totals[field];
    total.sum.clear();
    total.values = std::move(values);
    for (const double value : total.values)
        if (!isAbsent(value))
            total.sum.add(value);
}

void ColumnTotals::change(int field, std::size_t place, double value)
{
    const auto found = totals.find(field);
    if (found == totals.end())
        return;
    Total &total = found->second;
    const double before = std::exchange(total.values[place], value);
    if (!isAbsent(before))
        total.sum.subtract(before);
    if (!isAbsent(value))
        total.sum.add(value);
}

void ColumnTotals::prefetch(int field, std::size_t place) const
{
    const auto found = totals.find(field);
    if (found != totals.end() && place < found->second.values.size())
        core::prefetch(found->second.values.data() + place);
}

const core::ExactSum *ColumnTotals::sum(int field) const
{
    const auto found = totals.find(field);
    return found == totals.end() ? nullptr : &found->second.sum;
}

void ColumnTotals::clear()
{
    totals.clear();
}

} // namespace KV
