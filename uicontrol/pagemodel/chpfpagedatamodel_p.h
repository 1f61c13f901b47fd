// How the operations of a paged model get at its insides: under the lock, and without it when they call out.

#pragma once

#include <boost/thread/locks.hpp>
#include <string>
#include <utility>
#include <vector>

#include "pagemodel/chpfpagedatamodel.h"
#include "pagemodel/pagemodelcore.h"

namespace KV {

/// Runs a change under the exclusive lock. Its messages are written, and the records that it let go of are destroyed,
/// when the lock is gone.
template <typename Change>
auto CHpfPageDataModel::change(Change work) const
{
    const bool logging = logDetail && PageModelCore::detailsWanted();
    boost::unique_lock<boost::shared_mutex> lock(mutex);
    core->logging = logging;
    const auto finish = [&] {
        if (std::exchange(core->countChanged, false))
            countChanged = true;
        const PageModelCore::Remains remains = core->takeRemains();
        const std::vector<std::string> messages = core->takeMessages();
        lock.unlock();
        PageModelCore::writeDetails(messages);
    };
    if constexpr (std::is_void_v<decltype(work(*core))>) {
        work(*core);
        finish();
    } else {
        auto result = work(*core);
        finish();
        return result;
    }
}

/// A change that sorts and filters which are under way would not notice: those are finished first, piece by piece.
template <typename Change>
void CHpfPageDataModel::settledChange(Change work)
{
    const auto tryNow = [&](PageModelCore &c) {
        if (c.hasWork())
            return false;
        work(c);
        return true;
    };
    while (!change(tryNow))
        finishWork();
}

/// Asks for a sort or a filter.
template <typename Ask>
void CHpfPageDataModel::ask(Ask work)
{
    change([&](PageModelCore &c) {
        work(c);
        startWork(c);
    });
}

/// Reads the lists as they are.
template <typename Read>
auto CHpfPageDataModel::shownRead(Read work) const
{
    const boost::shared_lock<boost::shared_mutex> lock(mutex);
    return work(const_cast<const PageModelCore &>(*core));
}

/// Reads the lists as they were asked for.
template <typename Read>
auto CHpfPageDataModel::read(Read work) const
{
    for (;;) {
        {
            const boost::shared_lock<boost::shared_mutex> lock(mutex);
            if (!core->hasWork())
                return work(const_cast<const PageModelCore &>(*core));
        }
        finishWork();
    }
}

} // namespace KV
