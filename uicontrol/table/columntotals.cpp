#include "table/columntotals.h"

#include <utility>

#include "model/fieldvalue.h"
#include "rows/prefetch.h"

namespace KV {

ColumnTotal::ColumnTotal(std::vector<double> all) : values(std::move(all))
{
    for (const double value : values)
        if (!isAbsent(value))
            total.add(value);
}

void ColumnTotal::change(std::size_t place, double value)
{
    const double before = std::exchange(values[place], value);
    if (!isAbsent(before))
        total.subtract(before);
    if (!isAbsent(value))
        total.add(value);
}

void ColumnTotal::prefetch(std::size_t place) const
{
    if (place < values.size())
        core::prefetch(values.data() + place);
}

const ColumnTotal &ColumnTotals::count(int field, std::vector<double> values)
{
    return totals.insert_or_assign(field, ColumnTotal(std::move(values))).first->second;
}

ColumnTotal *ColumnTotals::find(int field)
{
    const auto found = totals.find(field);
    return found == totals.end() ? nullptr : &found->second;
}

void ColumnTotals::clear()
{
    totals.clear();
}

} // namespace KV
