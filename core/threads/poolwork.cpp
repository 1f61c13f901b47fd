#include "threads/poolwork.h"

#include <QtCore/QRunnable>
#include <QtCore/QThreadPool>
#include <deque>
#include <mutex>
#include <utility>

namespace core {

namespace {

/// What the pool has been asked for and has not begun. Each of its turns takes one.
class WaitingWork
{
public:
    void put(std::function<void()> work)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        waiting.push_back(std::move(work));
    }

    std::function<void()> take()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        std::function<void()> first = std::move(waiting.front());
        waiting.pop_front();
        return first;
    }

private:
    std::mutex mutex; ///< guards the list
    std::deque<std::function<void()>> waiting;
};

WaitingWork &waitingWork()
{
    static auto *work = new WaitingWork; // never destroyed: the pool may outlive this library's statics
    return *work;
}

} // namespace

void runInPool(std::function<void()> work)
{
    waitingWork().put(std::move(work));
    // Carries nothing, since the pool's own locks cannot be watched by the thread sanitizer.
    QThreadPool::globalInstance()->start(QRunnable::create([] { waitingWork().take()(); }));
}

} // namespace core
