#include "trading/historyquery.h"

#include <tuple>

namespace trading {

bool HistoryQuery::isFiltered() const
{
    return !accounts.empty() || !codes.empty() || !days.empty() || !sides.empty() || !offsets.empty() ||
           !states.empty();
}

bool HistoryQuery::operator==(const HistoryQuery &other) const
{
    const auto all = [](const HistoryQuery &query) {
        return std::tie(query.kind, query.accounts, query.codes, query.days, query.sides, query.offsets, query.states,
                        query.sort, query.isDescending);
    };
    return all(*this) == all(other);
}

} // namespace trading
