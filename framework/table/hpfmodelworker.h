#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace ZB {

/// A thread in the background that carries out tasks one after the other, started with the first of them. Tasks may be
/// posted on any thread. When the application object goes, the thread finishes what it has and ends.
class HpfModelWorker
{
public:
    /// Carries out long sorts and filters that nobody waits for.
    static HpfModelWorker &arranging();
    /// Helps to read rows.
    static HpfModelWorker &reading();
    /// Destroys what many rows have left behind.
    static HpfModelWorker &releasing();

    HpfModelWorker();
    ~HpfModelWorker();

    HpfModelWorker(const HpfModelWorker &) = delete;
    HpfModelWorker &operator=(const HpfModelWorker &) = delete;

    void post(std::function<void()> task);
    /// Runs a task on the calling thread and, when this one is free in time, here as well. Returns when both have
    /// ended.
    void help(const std::function<void()> &task);
    /// Returns when all is done and the thread has ended; the next task starts another one.
    void finish();

private:
    void run();

    std::mutex mutex; ///< guards everything below
    std::condition_variable changed;
    std::deque<std::function<void()>> tasks;
    std::thread thread;
    bool active = false; ///< the thread has not come to its end
    bool ending = false;
};

} // namespace ZB
