#include <algorithm>
#include <array>

#include "kdservice/keyhash.h"
#include "rows/prefetch.h"
#include "table/hpfmodelstate.h"

namespace ZB {

namespace {

constexpr std::size_t changesPerPiece = 256; ///< applied under one lock: less than half a millisecond
constexpr std::size_t changesAhead = 64;     ///< what so many read still fits into the processor's cache

} // namespace

HpfModelState::PutResult HpfModelState::put(const Row &row)
{
    Change change;
    if (row)
        change.key = row->key();
    if (change.key.empty())
        return PutResult::Refused;
    change.row = row;
    change.hash = kdservice::hashOfKey(change.key);
    applyAll(&change, 1);
    return change.result;
}

void HpfModelState::putAll(const QVector<Row> &rows, const std::function<void(const Row &, PutResult)> &told,
                           const std::function<bool(int)> &goOn)
{
    std::vector<Change> changes;
    changes.reserve(std::min(changesPerPiece, static_cast<std::size_t>(rows.size())));
    int through = 0;
    const auto applyPiece = [&] {
        applyAll(changes.data(), changes.size());
        for (const Change &change : changes)
            told(change.row, change.result);
        changes.clear();
        return !goOn || goOn(through);
    };
    for (const Row &row : rows) {
        ++through;
        std::string key = row ? row->key() : std::string();
        if (key.empty())
            continue;
        Change &change = changes.emplace_back();
        change.row = row;
        change.key = std::move(key);
        change.hash = kdservice::hashOfKey(change.key);
        if (changes.size() == changesPerPiece && !applyPiece())
            return;
    }
    applyPiece();
}

/// While there are no rows a plan costs nothing, and the columns may have become others: it is made anew.
void HpfModelState::refreshEmptyPlan()
{
    Lock lock(mutex);
    if (content->slots.size() != 0)
        return;
    const HpfModelWish wanted = wished;
    const std::shared_ptr<const HpfModelPlan> former = plan;
    lock.unlock();
    const auto fresh = std::make_shared<const HpfModelPlan>(model, wanted, former.get());
    lock.lock();
    if (content->slots.size() != 0 || job || wished.revision != wanted.revision || plan != former)
        return;
    plan = fresh;
    content->view = std::make_unique<core::RowView>(plan->arrangement());
}

HpfModelState::Reading HpfModelState::reading(const Change *changes, std::size_t count)
{
    refreshEmptyPlan();
    const std::lock_guard<std::mutex> lock(mutex);
    Reading reading;
    reading.present = std::make_unique<HpfModelPlan::Reader>(plan);
    reading.job = job;
    if (job)
        reading.next = std::make_unique<HpfModelPlan::Reader>(job->target());
    if (count == 1)
        warmUp(changes, 1); // comes in while the row is read
    return reading;
}

void HpfModelState::readChange(Change &change, Reading &reading) const
{
    reading.present->read(*change.row, change.values);
    if (!reading.next)
        return;
    change.nextValues = std::make_unique<core::RowValues>();
    reading.next->read(*change.row, *change.nextValues);
}

/// What was made for columns of other types is wished for once more; not while that is being made already, or a stream
/// of changes would have it begun again and again.
void HpfModelState::checkColumns(const Reading &read)
{
    const std::shared_ptr<const HpfModelPlan> &newest = read.next ? read.next->plan() : read.present->plan();
    if (newest->fits(model))
        return;
    const std::lock_guard<std::mutex> lock(mutex);
    if (job != read.job || (job ? job->isCancelled() : unmet()))
        return;
    wishAnew();
}

void HpfModelState::applyAll(Change *changes, std::size_t count)
{
    for (;;) {
        Reading read = reading(changes, count);
        checkColumns(read);
        std::for_each(changes, changes + count, [&](Change &change) { readChange(change, read); });
        const std::lock_guard<std::mutex> lock(mutex);
        if (plan != read.present->plan() || job != read.job)
            continue;
        for (std::size_t first = 0; first < count; first += changesAhead) {
            const std::size_t some = std::min(changesAhead, count - first);
            if (some > 1)
                warmUp(changes + first, some);
            std::for_each(changes + first, changes + first + some, [this](Change &change) { apply(change); });
        }
        return;
    }
}

/// The rows of a batch lie anywhere in memory: fetching what their changes read ahead of time, all at once, saves most
/// of the waiting. Each step fetches what the next one looks at.
void HpfModelState::warmUp(const Change *changes, std::size_t count) const
{
    std::array<quint32, changesAhead> slots;
    for (std::size_t i = 0; i < count; ++i)
        content->slots.prefetch(changes[i].hash);
    for (std::size_t i = 0; i < count; ++i) {
        slots[i] = content->slots.likely(changes[i].hash);
        if (slots[i] == HpfModelContent::Slots::noSlot)
            continue;
        content->slots.prefetchRow(slots[i]);
        content->view->prefetch(slots[i]);
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (slots[i] == HpfModelContent::Slots::noSlot)
            continue;
        content->view->prefetchPlace(slots[i]);
        core::prefetchObject(content->slots.row(slots[i]).get()); // it is let go when the batch is through
    }
}

void HpfModelState::apply(Change &change)
{
    core::RowView &view = *content->view;
    quint32 slot = content->slots.find(change.key, change.hash);
    const bool known = slot != HpfModelContent::Slots::noSlot;
    core::RowView::Effect effect;
    if (known) {
        content->slots.touch(slot);
        effect = view.change(slot, change.values);
    } else {
        slot = content->slots.add(change.key, change.hash);
        effect = view.add(slot, append ? ++newestArrival : --oldestArrival, change.values);
        ++arrivals;
    }
    change.replaced = std::exchange(content->slots.row(slot), change.row);
    change.result = known ? PutResult::Replaced : PutResult::Added;
    if (job) {
        job->noted().noteChange(slot, view.arrivalOf(slot), *change.nextValues);
        job->retire(std::move(change.replaced));
    }
    ++dataEpoch;
    if (effect == core::RowView::Effect::Order)
        ++orderEpoch;
}

int HpfModelState::remove(const std::string *keys, int count)
{
    int removedCount = 0;
    const auto end = static_cast<std::size_t>(count);
    std::vector<Row> removed; // let go without the lock
    for (std::size_t first = 0; first < end; first += changesPerPiece) {
        removed.clear();
        const std::lock_guard<std::mutex> lock(mutex);
        for (std::size_t i = first; i < std::min(end, first + changesPerPiece); ++i) {
            const quint32 slot = content->slots.find(keys[i], kdservice::hashOfKey(keys[i]));
            if (slot == HpfModelContent::Slots::noSlot)
                continue;
            removed.push_back(removeSlot(slot));
            ++removedCount;
        }
    }
    return removedCount;
}

HpfModelState::Row HpfModelState::removeSlot(quint32 slot)
{
    const core::RowView::Effect effect = content->view->remove(slot);
    content->slots.remove(slot);
    Row removed = std::move(content->slots.row(slot));
    if (job) {
        job->noted().noteRemoval(slot);
        job->retire(std::move(removed));
    }
    ++dataEpoch;
    if (effect == core::RowView::Effect::Order)
        ++orderEpoch;
    return removed;
}

void HpfModelState::clear()
{
    std::unique_ptr<HpfModelContent> old;
    {
        Lock lock(mutex);
        stopWork(lock);
        old = std::make_unique<HpfModelContent>(plan->arrangement(), content->slots.lastGeneration());
        old.swap(content);
        ++orderEpoch;
        ++dataEpoch;
    }
    HpfModelContent::release(std::move(old));
}

void HpfModelState::uncountAll()
{
    for (;;) {
        settle();
        const std::lock_guard<std::mutex> lock(mutex);
        if (job)
            continue;
        content->view->uncountAll();
        ++dataEpoch;
        return;
    }
}

void HpfModelState::count(const Row &row)
{
    if (!row)
        return;
    const std::string key = row->key();
    const quint64 hash = kdservice::hashOfKey(key);
    for (;;) {
        const std::shared_ptr<const HpfModelPlan> read = presentPlan();
        QVarLengthArray<quint64, 4> values;
        for (const HpfModelColumn &column : read->sums())
            values.append(column.number(*row));
        {
            const std::lock_guard<std::mutex> lock(mutex);
            if (plan == read && !job) {
                const quint32 slot = content->slots.find(key, hash);
                if (slot != HpfModelContent::Slots::noSlot)
                    content->view->count(slot, values);
                ++dataEpoch;
                return;
            }
        }
        settle();
    }
}

} // namespace ZB
