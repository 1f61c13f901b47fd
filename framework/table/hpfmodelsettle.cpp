#include <algorithm>
#include <chrono>
#include <utility>

#include "table/hpfmodelstate.h"
#include "table/hpfmodelworker.h"

namespace ZB {

namespace {

/// Whose wishes this thread is carrying out. Rows and comparisons that it calls then see the order that there is;
/// waiting for the new one would be waiting for themselves.
thread_local const HpfModelState *workedFor = nullptr;

class WorkFor
{
public:
    explicit WorkFor(const HpfModelState *state) : before(std::exchange(workedFor, state)) {}
    ~WorkFor() { workedFor = before; }

    WorkFor(const WorkFor &) = delete;
    WorkFor &operator=(const WorkFor &) = delete;

private:
    const HpfModelState *const before;
};

} // namespace

void HpfModelState::changeWish(const std::function<void(HpfModelWish &)> &change)
{
    const std::lock_guard<std::mutex> lock(mutex);
    HpfModelWish next = wished;
    change(next);
    if (next.sort == wished.sort && next.filters == wished.filters && next.sums == wished.sums)
        return;
    wished = next;
    wishAnew();
}

void HpfModelState::wishAnew()
{
    wished.revision = ++lastRevision;
    if (job)
        job->cancel(); // it makes what is not wanted any more
}

void HpfModelState::columnsChanged()
{
    const std::lock_guard<std::mutex> lock(mutex);
    wishAnew();
}

void HpfModelState::setSort(const QVector<QPair<int, int>> &columns)
{
    QVector<QPair<int, int>> distinct;
    std::set<int> seen;
    for (const QPair<int, int> &column : columns) {
        if (seen.insert(column.first).second)
            distinct.append(column);
    }
    changeWish([&distinct](HpfModelWish &wish) { wish.sort = distinct; });
}

void HpfModelState::setFilter(int column, const HpfModelWish::Condition &condition)
{
    changeWish([&](HpfModelWish &wish) {
        if (condition.second.isEmpty())
            wish.filters.remove(column);
        else
            wish.filters[column] = {condition};
    });
}

void HpfModelState::narrowFilter(int column, const HpfModelWish::Condition &condition)
{
    if (condition.second.isEmpty())
        return;
    changeWish([&](HpfModelWish &wish) {
        QVector<HpfModelWish::Condition> &conditions = wish.filters[column];
        if (!conditions.contains(condition))
            conditions.append(condition);
    });
}

void HpfModelState::clearFilters()
{
    changeWish([](HpfModelWish &wish) { wish.filters.clear(); });
}

void HpfModelState::setSum(int column, bool enable)
{
    changeWish([=](HpfModelWish &wish) {
        if (enable)
            wish.sums.insert(column);
        else
            wish.sums.erase(column);
    });
}

HpfModelWish HpfModelState::wish() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return wished;
}

bool HpfModelState::pending() const
{
    return content->slots.size() > 0 && (unmet() || !content->view->misplacedSlots().empty());
}

bool HpfModelState::isPending() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return pending();
}

void HpfModelState::endTurn()
{
    working = false;
    ++endedTurns;
    turnEnded.notify_all();
}

void HpfModelState::settle()
{
    if (workedFor == this)
        return;
    Lock lock(mutex);
    // Rows that a custom order has not placed are placed by any turn that begins from now on; more of them may come all
    // the time.
    const quint64 enough = endedTurns + (working ? 2 : 1);
    while (pending() && (unmet() || endedTurns < enough)) {
        if (working || stopRequests > 0) {
            turnEnded.wait(lock);
            continue;
        }
        working = true;
        lock.unlock();
        arrangeOnce();
        lock.lock();
        endTurn();
    }
}

bool HpfModelState::settleInBackground(int waitMilliseconds)
{
    Lock lock(mutex);
    if (!pending())
        return true;
    if (!working && !scheduled) {
        scheduled = true;
        HpfModelWorker::arranging().post([tied = handle] {
            Lock tie(tied->mutex);
            HpfModelState *const state = tied->state;
            if (!state)
                return;
            {
                const std::lock_guard<std::mutex> guard(state->mutex);
                state->scheduled = false;
                if (state->working || state->stopRequests > 0 || !state->pending())
                    return;
                state->working = true;
            }
            tie.unlock(); // whoever has its turn is waited for
            state->runScheduledTurn();
        });
    }
    if (waitMilliseconds > 0) {
        const quint64 before = endedTurns;
        turnEnded.wait_for(lock, std::chrono::milliseconds(waitMilliseconds),
                           [this, before] { return !pending() || endedTurns != before; });
    }
    return !pending();
}

void HpfModelState::runScheduledTurn()
{
    for (;;) {
        arrangeOnce();
        const std::lock_guard<std::mutex> lock(mutex);
        if (stopRequests > 0 || !unmet() || !pending()) {
            endTurn(); // this object may be gone as soon as the lock is released
            return;
        }
    }
}

bool HpfModelState::cancel()
{
    const bool fits = presentPlan()->fits(model);
    {
        Lock lock(mutex);
        const HpfModelWish &present = plan->wish();
        if (!pending() || (wished.sort == present.sort && wished.filters == present.filters))
            return false;
        wished.sort = present.sort;
        wished.filters = present.filters;
        wished.revision = fits && wished.sums == present.sums ? present.revision : ++lastRevision;
        stopWork(lock);
    }
    return true;
}

/// Waits until nobody has a turn any more.
void HpfModelState::stopWork(Lock &lock)
{
    ++stopRequests;
    while (working) {
        if (job)
            job->cancel();
        turnEnded.wait(lock);
    }
    --stopRequests;
    turnEnded.notify_all();
}

int HpfModelState::progress() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (!pending())
        return 1000;
    return job ? job->progress() : 0;
}

void HpfModelState::arrangeOnce()
{
    const WorkFor work(this);
    std::shared_ptr<const HpfModelPlan> former;
    HpfModelWish wanted;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        former = plan;
        wanted = wished;
    }
    const auto target = std::make_shared<const HpfModelPlan>(model, wanted, former.get());
    const std::shared_ptr<HpfModelJob> started = startJob(former, target);
    if (!started)
        return;
    const bool finished = collect(*started) && place(*started) && catchUp(*started);
    if (!finished) {
        const std::lock_guard<std::mutex> lock(mutex);
        job.reset();
    }
    started->finish();
    if (finished)
        setUpdated(true);
}

std::shared_ptr<HpfModelJob> HpfModelState::startJob(const std::shared_ptr<const HpfModelPlan> &former,
                                                     const std::shared_ptr<const HpfModelPlan> &target)
{
    const bool covered = former->covers(*target);
    const auto renamed = covered ? std::make_shared<const HpfModelPlan>(*former, target->wish()) : nullptr;
    const auto candidate = std::make_shared<HpfModelJob>(former, target);
    candidate->reserve(status().all);

    const std::lock_guard<std::mutex> lock(mutex);
    if (stopRequests > 0 || plan != former || wished.revision != target->wish().revision)
        return nullptr;
    if (covered && content->view->misplacedSlots().empty()) {
        plan = renamed;
        return nullptr;
    }
    candidate->begin(*content);
    job = candidate;
    return candidate;
}

/// Reading rows takes most of the time of a job, so a second thread helps when there are many.
bool HpfModelState::collect(HpfModelJob &started)
{
    constexpr quint32 worthHelp = 20000;
    std::atomic<quint32> nextSlot{0};
    std::mutex adopting;
    const auto collectSome = [&] {
        const WorkFor work(this);
        HpfModelPlan::Reader reader(started.target());
        HpfModelJob::Batch batch;
        while (!started.isCancelled()) {
            const quint32 slot = nextSlot.fetch_add(HpfModelJob::slotsPerBatch);
            if (slot >= started.slotLimit())
                return;
            {
                const std::lock_guard<std::mutex> lock(mutex);
                started.gather(*content, slot, batch);
            }
            started.read(batch, reader);
            const std::lock_guard<std::mutex> lock(adopting);
            started.adopt(batch);
        }
    };
    if (started.needsRows() && started.slotLimit() >= worthHelp)
        HpfModelWorker::reading().help(collectSome);
    else
        collectSome();
    return !started.isCancelled();
}

bool HpfModelState::place(HpfModelJob &started)
{
    std::vector<quint32> changed;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        changed = started.noted().slots();
    }
    return started.arrange(changed, model) && started.place();
}

/// Changes keep coming in between the pieces; the last piece makes the new view the present one.
bool HpfModelState::catchUp(HpfModelJob &started)
{
    std::unique_ptr<core::RowView> old;
    while (!old) {
        const std::lock_guard<std::mutex> lock(mutex);
        if (started.isCancelled())
            return false;
        if (!started.applyNoted())
            continue;
        old = std::exchange(content->view, started.takeView());
        plan = started.target();
        job.reset();
        ++orderEpoch;
        ++dataEpoch;
    }
    HpfModelContent::release(std::move(old));
    return true;
}

} // namespace ZB
