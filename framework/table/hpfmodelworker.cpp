#include "table/hpfmodelworker.h"

#include <QtCore/QCoreApplication>
#include <memory>

namespace ZB {

HpfModelWorker &HpfModelWorker::arranging()
{
    static HpfModelWorker worker;
    return worker;
}

HpfModelWorker &HpfModelWorker::reading()
{
    static HpfModelWorker worker;
    return worker;
}

HpfModelWorker &HpfModelWorker::releasing()
{
    static HpfModelWorker worker;
    return worker;
}

HpfModelWorker::HpfModelWorker()
{
    // While everything that tasks may touch is still there.
    static std::once_flag registered;
    std::call_once(registered, [] {
        qAddPostRoutine([] {
            arranging().finish();
            reading().finish();
            releasing().finish();
        });
    });
}

HpfModelWorker::~HpfModelWorker()
{
    finish();
}

void HpfModelWorker::post(std::function<void()> task)
{
    const std::lock_guard<std::mutex> lock(mutex);
    tasks.push_back(std::move(task));
    if (!active) {
        if (thread.joinable())
            thread.join();
        thread = std::thread([this] { run(); });
        active = true;
    }
    changed.notify_one();
}

void HpfModelWorker::help(const std::function<void()> &task)
{
    struct Shared
    {
        std::mutex mutex; ///< guards both
        std::condition_variable ended;
        enum State
        {
            Waiting,
            Running,
            Over
        } state = Waiting;
    };
    const auto shared = std::make_shared<Shared>();
    post([shared, &task] {
        std::unique_lock<std::mutex> lock(shared->mutex);
        if (shared->state == Shared::Over)
            return; // too late: the task may be gone
        shared->state = Shared::Running;
        lock.unlock();
        task();
        lock.lock();
        shared->state = Shared::Over;
        shared->ended.notify_all();
    });
    task();
    std::unique_lock<std::mutex> lock(shared->mutex);
    shared->ended.wait(lock, [&] { return shared->state != Shared::Running; });
    shared->state = Shared::Over;
}

void HpfModelWorker::run()
{
    std::unique_lock<std::mutex> lock(mutex);
    for (;;) {
        changed.wait(lock, [this] { return ending || !tasks.empty(); });
        if (tasks.empty()) {
            active = false;
            return;
        }
        std::function<void()> task = std::move(tasks.front());
        tasks.pop_front();
        lock.unlock();
        task();
        task = nullptr; // what it holds goes without the lock
        lock.lock();
    }
}

void HpfModelWorker::finish()
{
    std::thread ended;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        ending = true;
        ended.swap(thread);
        changed.notify_one();
    }
    if (ended.joinable())
        ended.join();
    const std::lock_guard<std::mutex> lock(mutex);
    ending = false;
}

} // namespace ZB
