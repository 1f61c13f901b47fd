#include "pagemodel/pagework.h"

#include <algorithm>

namespace KV {

PageWork::~PageWork() = default;

void PageWork::note(quint32 slot, bool leaves)
{
    if (!started)
        return;
    noted(slot, leaves);
    waiting.push_back(slot);
    if (slot >= marks.size())
        marks.resize(std::max<std::size_t>(slot + 1, 2 * marks.size()));
    marks[slot] = true;
}

bool PageWork::step(const PageDeadline &deadline)
{
    started = true;
    prepared = prepared || prepare(deadline);
    if (!prepared)
        return false;
    while (settled < waiting.size()) {
        settle(waiting[settled++]);
        if (settled % slotsPerPiece == 0 && deadline.isDue())
            return false;
    }
    publish();
    return true;
}

void PageWork::dropNoted(std::vector<quint32> &slotList) const
{
    if (!waiting.empty())
        slotList.erase(std::remove_if(slotList.begin(), slotList.end(), [this](quint32 slot) { return isNoted(slot); }),
                       slotList.end());
}

} // namespace KV
