#include "table/hpfmodelstate.h"

#include <algorithm>

#include "kdservice/keyhash.h"

namespace ZB {

namespace {

constexpr std::size_t rowsPerPiece = 2048; ///< copied under one lock

} // namespace

HpfModelState::HpfModelState(IBaseHpfTableModel &owner, bool appendSeq)
    : model(owner), handle(std::make_shared<Handle>()), append(appendSeq)
{
    // The model is not complete yet and cannot be asked for columns; an empty wish needs none.
    plan = std::make_shared<const HpfModelPlan>(model, HpfModelWish(), nullptr);
    content = std::make_unique<HpfModelContent>(plan->arrangement(), 0);
    handle->state = this;
}

HpfModelState::~HpfModelState()
{
    {
        const std::lock_guard<std::mutex> guard(handle->mutex);
        handle->state = nullptr;
    }
    Lock lock(mutex);
    stopWork(lock);
}

void HpfModelState::setAppendSeq(bool appendSeq)
{
    const std::lock_guard<std::mutex> lock(mutex);
    append = appendSeq;
}

bool HpfModelState::appendSeq() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return append;
}

HpfModelStatus HpfModelState::status() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return {orderEpoch, dataEpoch, arrivals, content->view->shownCount(), content->slots.size(), pending(), marks};
}

HpfModelState::Row HpfModelState::rowOfKey(const std::string &key) const
{
    const quint64 hash = kdservice::hashOfKey(key);
    const std::lock_guard<std::mutex> lock(mutex);
    const quint32 slot = content->slots.find(key, hash);
    return slot == HpfModelContent::Slots::noSlot ? Row() : content->slots.row(slot);
}

quint64 HpfModelState::idOfKey(const std::string &key) const
{
    const quint64 hash = kdservice::hashOfKey(key);
    const std::lock_guard<std::mutex> lock(mutex);
    const quint32 slot = content->slots.find(key, hash);
    return slot == HpfModelContent::Slots::noSlot ? 0 : content->slots.idOf(slot);
}

int HpfModelState::shownIndexOfKey(const std::string &key) const
{
    const quint64 hash = kdservice::hashOfKey(key);
    const std::lock_guard<std::mutex> lock(mutex);
    const quint32 slot = content->slots.find(key, hash);
    return slot == HpfModelContent::Slots::noSlot ? -1 : content->view->rows().markedIndexOf(slot);
}

HpfModelState::Row HpfModelState::rowOfId(quint64 id) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    const quint32 slot = content->slots.slotOf(id);
    return slot == HpfModelContent::Slots::noSlot ? Row() : content->slots.row(slot);
}

void HpfModelState::shownIndexes(const quint64 *ids, int count, int *indexes) const
{
    const auto end = static_cast<std::size_t>(count);
    for (std::size_t first = 0; first < end; first += rowsPerPiece) {
        const std::lock_guard<std::mutex> lock(mutex);
        for (std::size_t i = first; i < std::min(end, first + rowsPerPiece); ++i) {
            const quint32 slot = content->slots.slotOf(ids[i]);
            indexes[i] = slot == HpfModelContent::Slots::noSlot ? -1 : content->view->rows().markedIndexOf(slot);
        }
    }
}

HpfShownRow HpfModelState::shownRow(quint32 slot) const
{
    return {content->slots.idOf(slot), content->slots.version(slot), content->slots.row(slot)};
}

void HpfModelState::fetch(int first, int count, std::vector<HpfShownRow> &rows) const
{
    rows.clear();
    if (first < 0 || count <= 0)
        return;
    if (count <= static_cast<int>(rowsPerPiece)) {
        const std::lock_guard<std::mutex> lock(mutex);
        content->view->rows().forEachMarked(
            first, count, [&](const core::ChunkedSequence::Entry &entry) { rows.push_back(shownRow(entry.slot)); });
        return;
    }
    std::vector<quint32> slots;
    slots.reserve(static_cast<std::size_t>(std::min(count, status().shown)));
    quint32 lastGeneration;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        copyShownSlots(first, count, slots);
        lastGeneration = content->slots.lastGeneration();
    }
    rows.reserve(slots.size());
    visitSlots(slots, lastGeneration, [&rows](const HpfShownRow &row) { rows.push_back(row); });
}

void HpfModelState::fetchIds(int first, int count, std::vector<quint64> &ids) const
{
    if (first < 0 || count <= 0)
        return;
    std::vector<quint32> slots;
    slots.reserve(static_cast<std::size_t>(std::min(count, status().shown)));
    const std::lock_guard<std::mutex> lock(mutex);
    copyShownSlots(first, count, slots);
    ids.reserve(ids.size() + slots.size());
    for (const quint32 slot : slots)
        ids.push_back(content->slots.idOf(slot));
}

void HpfModelState::copyShownSlots(int first, int count, std::vector<quint32> &slots) const
{
    const core::ChunkedSequence &order = content->view->rows();
    if (first == 0 && count >= order.markedCount()) {
        order.copyMarkedSlots(slots);
        return;
    }
    order.forEachMarked(first, count,
                        [&slots](const core::ChunkedSequence::Entry &entry) { slots.push_back(entry.slot); });
}

void HpfModelState::forEachRow(bool shownOnly, const std::function<void(const HpfShownRow &)> &visit) const
{
    std::vector<quint32> slots;
    const HpfModelStatus now = status();
    slots.reserve(static_cast<std::size_t>(shownOnly ? now.shown : now.all));
    quint32 lastGeneration;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (shownOnly)
            content->view->rows().copyMarkedSlots(slots);
        else
            content->view->rows().copySlots(slots);
        lastGeneration = content->slots.lastGeneration();
    }
    visitSlots(slots, lastGeneration, visit);
}

/// Leaves out slots that were given to another row since.
void HpfModelState::visitSlots(const std::vector<quint32> &slots, quint32 lastGeneration,
                               const std::function<void(const HpfShownRow &)> &visit) const
{
    std::vector<HpfShownRow> piece;
    piece.reserve(std::min(slots.size(), rowsPerPiece));
    for (std::size_t first = 0; first < slots.size(); first += rowsPerPiece) {
        piece.clear();
        {
            const std::lock_guard<std::mutex> lock(mutex);
            for (std::size_t i = first; i < std::min(slots.size(), first + rowsPerPiece); ++i) {
                if (!content->slots.isLive(slots[i]))
                    continue;
                const auto generation = static_cast<quint32>(content->slots.idOf(slots[i]) >> 32);
                if (static_cast<qint32>(generation - lastGeneration) <= 0)
                    piece.push_back(shownRow(slots[i]));
            }
        }
        std::for_each(piece.begin(), piece.end(), visit);
    }
}

quint32 HpfModelState::rowsOfSlots(quint32 first, quint32 count, std::vector<Row> &rows) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    const quint32 limit = content->slots.limit();
    for (quint32 slot = first; slot < std::min(limit, first + count); ++slot) {
        if (content->slots.isLive(slot))
            rows.push_back(content->slots.row(slot));
    }
    return limit;
}

std::shared_ptr<const HpfModelPlan> HpfModelState::presentPlan() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return plan;
}

void HpfModelState::setUpdated(bool updated)
{
    if (!updated) {
        updatedFlag = false;
        return;
    }
    ++marks;
    if (updatedFlag.exchange(true))
        return;
    std::vector<Listener> called;
    {
        const std::lock_guard<std::mutex> lock(listenerMutex);
        if (listeners.empty())
            return;
        for (const auto &[owner, listener] : listeners)
            called.push_back(listener);
        ++listenerCalls;
    }
    for (const Listener &listener : called)
        (*listener)();
    const std::lock_guard<std::mutex> lock(listenerMutex);
    --listenerCalls;
    listenerReturned.notify_all();
}

/// Once it returns the owner's former listener is not called any more.
void HpfModelState::setListener(std::function<void()> newListener, const void *owner)
{
    Lock lock(listenerMutex);
    if (newListener)
        listeners[owner] = std::make_shared<const std::function<void()>>(std::move(newListener));
    else
        listeners.erase(owner);
    listenerReturned.wait(lock, [this] { return listenerCalls == 0; });
}

} // namespace ZB
