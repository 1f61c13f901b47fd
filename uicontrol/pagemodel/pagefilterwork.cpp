#include "pagemodel/pagefilterwork.h"

#include <unordered_map>
#include <utility>

#include "pagemodel/pagemodelcore.h"

namespace KV {

PageFilterWork::PageFilterWork(PageModelCore &modelCore, const PageFilter &wanted, Mode filterMode)
    : PageWork(modelCore), filter(wanted), mode(filterMode), statistics(modelCore.statistics.emptied())
{
}

PageFilterWork::PageFilterWork(PageModelCore &modelCore, const PageFilterWork &other)
    : PageFilterWork(modelCore, other.filter, other.mode)
{
}

bool PageFilterWork::isSorted() const
{
    return mode == Mode::Passing && core.sortColumn >= 0;
}

bool PageFilterWork::prepare(const PageDeadline &deadline)
{
    if (!std::exchange(listed, true))
        order = core.all.slotsInOrder();
    if (!testSome(deadline))
        return false;
    if (!std::exchange(placed, true) && !isSorted()) {
        dropNoted(passing);
        visible.assign(passing);
    }
    return true;
}

bool PageFilterWork::testSome(const PageDeadline &deadline)
{
    while (next < order.size()) {
        const quint32 slot = order[next];
        if (!isNoted(slot))
            test(slot);
        if (++next % slotsPerPiece == 0 && deadline.isDue())
            return false;
    }
    return true;
}

void PageFilterWork::test(quint32 slot)
{
    if (!passes(slot))
        return;
    int index = 0;
    if (isSorted())
        visible.insert(index = placeOf(slot), slot);
    else
        passing.push_back(slot);
    take(slot, index);
}

/// Out of the list at once: its place there rests on values that are about to change.
void PageFilterWork::noted(quint32 slot, bool)
{
    visible.erase(slot);
    statistics.remove(slot);
}

void PageFilterWork::settle(quint32 slot)
{
    noted(slot, false);
    if (!core.all.contains(slot) || !passes(slot))
        return;
    const int index = placeOf(slot);
    visible.insert(index, slot);
    take(slot, index);
}

bool PageFilterWork::passes(quint32 slot)
{
    if (mode == Mode::Everything || filter.isPassAllFilter(core.rows[slot], memory))
        return true;
    keepOutcome({slot, Outcome::NotPassed, 0});
    return false;
}

void PageFilterWork::take(quint32 slot, int index)
{
    statistics.add(slot, core.rows, core.columns);
    keepOutcome({slot, index, visible.size()});
}

void PageFilterWork::keepOutcome(const Outcome &outcome)
{
    if (core.logging && mode == Mode::Passing)
        outcomes.push_back(outcome);
}

/// Only the last outcome of a slot is true: what was tested before may have changed, or gone, since.
void PageFilterWork::logOutcomes() const
{
    std::unordered_map<quint32, std::size_t> last;
    for (std::size_t i = 0; i < outcomes.size(); ++i)
        last[outcomes[i].slot] = i;
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        const Outcome &outcome = outcomes[i];
        if (last.at(outcome.slot) != i || !core.all.contains(outcome.slot))
            continue;
        if (outcome.index == Outcome::NotPassed)
            core.logNotPassed(outcome.slot);
        else if (isSorted())
            core.logInsert(outcome.slot, outcome.index, outcome.size);
        else
            core.logUnsorted(outcome.slot, /* append */ true);
    }
}

/// Where the sort puts the slot, or the order of the all list.
int PageFilterWork::placeOf(quint32 slot) const
{
    if (isSorted())
        return visible.insertIndex(slot, core.visibleOrder());
    const int index = core.all.indexOf(slot);
    int low = 0;
    for (int high = visible.size(); low < high;) {
        const int middle = low + (high - low) / 2;
        if (core.all.indexOf(visible.at(middle)) < index)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

void PageFilterWork::publish()
{
    logOutcomes();
    std::swap(core.visible, visible);
    std::swap(core.statistics, statistics);
    core.takeFilter(filter);
}

int PageFilterWork::progress() const
{
    return listed ? static_cast<int>(1000 * next / std::max<std::size_t>(1, order.size())) : 0;
}

} // namespace KV
