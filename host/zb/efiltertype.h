#pragma once

#include <QtCore/QPair>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QVector>

namespace ZB {

/// How a column filter compares a cell's text with its set of strings.
enum EFilterType : int
{
    FilterExact = 0,    ///< the set holds exactly the text
    FilterContains = 1, ///< the text contains at least one non-empty string of the set, ignoring case
    FilterExcept = 2    ///< the set does not hold the text
};

/// Whether a number is one of EFilterType.
constexpr bool isFilterType(int type)
{
    return type >= FilterExact && type <= FilterExcept;
}

using FilterCondition = QPair<EFilterType, QSet<QString>>;
/// What a column is filtered by: texts pass that meet every condition. An exact condition without texts lets nothing
/// pass; no condition at all is no filter.
using FilterConditions = QVector<FilterCondition>;

} // namespace ZB
