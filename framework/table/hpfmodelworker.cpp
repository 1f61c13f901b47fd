#include "table/hpfmodelworker.h"

#include <QtCore/QCoreApplication>

namespace ZB {

HpfModelWorker &HpfModelWorker::arranging()
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
