#include "filter/valuefilter.h"

#include <algorithm>

namespace core {

void ValueFilter::narrow(int type, const QSet<QString> &values)
{
    if (values.isEmpty())
        return;
    Condition condition{type, values, {}};
    if (type == containsType) {
        for (const QString &value : values) {
            if (!value.isEmpty())
                condition.needles.append(value);
        }
    }
    conditions.push_back(condition);
}

bool ValueFilter::passes(const QString &text) const
{
    return std::all_of(conditions.begin(), conditions.end(),
                       [&text](const Condition &condition) { return meets(condition, text); });
}

bool ValueFilter::meets(const Condition &condition, const QString &text)
{
    switch (condition.type) {
    case exactType:
        return condition.values.contains(text);
    case containsType:
        return std::any_of(condition.needles.begin(), condition.needles.end(),
                           [&text](const QString &needle) { return text.contains(needle, Qt::CaseInsensitive); });
    case exceptType:
        return !condition.values.contains(text);
    default:
        return false;
    }
}

} // namespace core
