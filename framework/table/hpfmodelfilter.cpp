#include "table/hpfmodelfilter.h"

namespace ZB {

HpfModelFilter::HpfModelFilter(const HpfModelColumn &filteredColumn, const core::ValueFilter &filter)
    : column(filteredColumn), conditions(filter)
{
}

bool HpfModelFilter::passes(IBaseHpfTableData &row, Answers &answers) const
{
    if (const bool *known = answers.find(column, row))
        return *known;
    const bool answer = conditions.passes(row.getFilterQString(column.number()));
    answers.remember(answer);
    return answer;
}

} // namespace ZB
