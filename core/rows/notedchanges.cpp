#include "rows/notedchanges.h"

namespace core {

void NotedChanges::note(quint32 slot, const Change &change)
{
    if (view && waiting.count(slot) == 0)
        apply(slot, change);
    else
        waiting[slot] = change;
}

std::vector<quint32> NotedChanges::slots() const
{
    std::vector<quint32> result;
    result.reserve(waiting.size());
    for (const auto &entry : waiting)
        result.push_back(entry.first);
    return result;
}

bool NotedChanges::applySome(int most)
{
    for (int i = 0; i < most && !waiting.empty(); ++i) {
        const auto first = waiting.begin();
        apply(first->first, first->second);
        waiting.erase(first);
    }
    return waiting.empty();
}

void NotedChanges::apply(quint32 slot, const Change &change)
{
    // A slot with another arrival has been given to another row.
    const bool known = view->contains(slot);
    if (known && change.present && view->arrivalOf(slot) == change.arrival) {
        view->change(slot, change.values);
        return;
    }
    if (known)
        view->remove(slot);
    if (change.present)
        view->add(slot, change.arrival, change.values);
}

} // namespace core
