#include "grid/gridsource.h"

#include <cmath>

namespace ZB {

GridFlash flashOfChange(double change, QVariant::Type type)
{
    const double greatest = type == QVariant::Int ? 1.0e9 : 4.0e18; // less than half of the greatest whole number
    if (change == 0.0 || !(std::abs(change) < greatest))
        return GridFlash::Equal;
    return change > 0 ? GridFlash::Rise : GridFlash::Fall;
}

GridSource::GridSource() = default;

GridSource::~GridSource() = default;

void GridSource::rowsOf(const std::vector<GridRowId> &ids, std::vector<qint64> &rows) const
{
    rows.clear();
    rows.reserve(ids.size());
    for (const auto id : ids)
        rows.push_back(rowOf(id));
}

bool GridSource::isSettling() const
{
    return false;
}

GridFlash GridSource::flash(int, int)
{
    return GridFlash::None;
}

QString GridSource::cellText(qint64, int) const
{
    return QString();
}

QString GridSource::tip(int, int) const
{
    return QString();
}

QString GridSource::statisticsText(int) const
{
    return QString();
}

} // namespace ZB
