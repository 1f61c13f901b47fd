#include "table/hpfmodelfilter.h"

namespace ZB {

HpfModelFilter::HpfModelFilter(const HpfModelColumn &filteredColumn, int newContext, const core::ValueFilter &filter)
    : column(filteredColumn), context(newContext), conditions(filter)
{
}

bool HpfModelFilter::passes(IBaseHpfTableData &row, Answers &answers) const
{
    if (context < 0)
        return conditions.passes(row.getFilterQString(column.number()));
    if (const bool *known = answers.find(column, row))
        return *known;
    const bool answer = conditions.passes(row.getFilterQString(column.number()));
    answers.remember(answer);
    return answer;
}

} // namespace ZB
