#include "table/filterconditions.h"

#include <algorithm>

#include "filter/valuefilter.h"

namespace ZB {

namespace {

static_assert(core::ValueFilter::exactType == FilterExact && core::ValueFilter::containsType == FilterContains &&
                  core::ValueFilter::exceptType == FilterExcept,
              "the matcher and the host number the types alike");

bool passesNothing(const FilterCondition &condition)
{
    if (condition.first == FilterContains)
        return std::all_of(condition.second.begin(), condition.second.end(),
                           [](const QString &text) { return text.isEmpty(); });
    return !isFilterType(condition.first) || (condition.first == FilterExact && condition.second.isEmpty());
}

/// The texts of an exact condition that meet the others too.
FilterConditions narrowed(const FilterCondition &exact, const FilterConditions &conditions)
{
    core::ValueFilter all;
    for (const FilterCondition &condition : conditions)
        all.narrow(condition.first, condition.second);
    FilterCondition left(FilterExact, {});
    for (const QString &text : exact.second)
        if (all.passes(text))
            left.second.insert(text);
    return {left};
}

} // namespace

FilterConditions plainConditions(const FilterConditions &conditions)
{
    if (std::any_of(conditions.begin(), conditions.end(), passesNothing))
        return {{FilterExact, {}}};
    if (conditions.size() < 2)
        return conditions;
    FilterConditions plain;
    QSet<QString> leftOut;
    for (const FilterCondition &condition : conditions) {
        if (condition.first == FilterExact)
            return narrowed(condition, conditions);
        if (condition.first == FilterExcept)
            leftOut += condition.second;
        else if (!plain.contains(condition))
            plain.append(condition);
    }
    if (!leftOut.isEmpty())
        plain.append({FilterExcept, leftOut});
    return plain;
}

FilterCondition filterToTake(const FilterConditions &conditions)
{
    if (conditions.isEmpty())
        return {FilterExact, {}};
    const FilterCondition &first = conditions.first();
    return first.second.isEmpty() ? FilterCondition(FilterContains, {QString()}) : first;
}

} // namespace ZB
