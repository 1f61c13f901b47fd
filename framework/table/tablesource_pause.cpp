#include "table/rowrelease.h"
#include "table/tablesource.h"

namespace ZB {

void TableSource::pause()
{
    if (paused || !model)
        return;
    const HpfModelStatus status = HpfModelAccess::status(*model);
    HpfModelAccess::fetch(*model, 0, status.shown, pausedRows);
    pausedArrivals = status.arrivals;
    pausedData = lastData;
    paused = true;
}

void TableSource::resume()
{
    if (!paused)
        return;
    paused = false;
    releasePausedRows();
}

bool TableSource::isPaused() const
{
    return paused;
}

qint64 TableSource::arrivalsSincePause() const
{
    return paused && model ? qint64(HpfModelAccess::status(*model).arrivals - pausedArrivals) : 0;
}

void TableSource::releasePausedRows()
{
    pausedIndex.clear();
    releaseRows(std::exchange(pausedRows, {}));
}

} // namespace ZB
