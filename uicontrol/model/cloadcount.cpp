#include "model/cloadcount.h"

#include <algorithm>
#include <boost/thread/lock_guard.hpp>

namespace KV {

namespace {

using Lock = boost::lock_guard<boost::mutex>;

constexpr int whole = 1000;

} // namespace

CLoadCount::CLoadCount() = default;

CLoadCount::~CLoadCount() = default;

CLoadCount::Ticket CLoadCount::enter(qint64 steps)
{
    const Lock lock(mutex);
    ++batches;
    stepsInAll += steps;
    return presentLoad;
}

bool CLoadCount::advance(Ticket ticket, qint64 steps)
{
    if (ticket == uncounted)
        return true;
    const Lock lock(mutex);
    if (ticket != presentLoad)
        return false;
    stepsDone += steps;
    return true;
}

void CLoadCount::leave(Ticket ticket)
{
    const Lock lock(mutex);
    if (ticket == presentLoad && --batches == 0)
        endLoad();
}

bool CLoadCount::cancel()
{
    const Lock lock(mutex);
    if (batches == 0)
        return false;
    endLoad();
    return true;
}

void CLoadCount::dismiss()
{
    const Lock lock(mutex);
    lastDismissed = presentLoad;
    endLoad();
}

bool CLoadCount::isDismissed(Ticket ticket) const
{
    const Lock lock(mutex);
    return ticket != uncounted && ticket <= lastDismissed;
}

void CLoadCount::endLoad()
{
    ++presentLoad;
    batches = 0;
    stepsInAll = 0;
    stepsDone = 0;
}

int CLoadCount::progress() const
{
    const Lock lock(mutex);
    if (batches == 0)
        return whole;
    return stepsInAll == 0 ? 0 : static_cast<int>(std::min<qint64>(whole - 1, stepsDone * whole / stepsInAll));
}

quint64 CLoadCount::number() const
{
    const Lock lock(mutex);
    return presentLoad;
}

} // namespace KV
