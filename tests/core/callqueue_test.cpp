#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>
#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "threads/callqueue.h"
#include "threads/poolwork.h"

namespace {

void runEvents()
{
    QCoreApplication::processEvents();
}

TEST(CallQueue, RunsTheCallsOfEveryThreadInItsOrderAndOnItsOwnThread)
{
    constexpr int threads = 3;
    constexpr int callsOfEach = 2000;
    core::CallQueue queue;
    std::vector<std::vector<std::string>> seen(threads);
    const QThread *const here = QThread::currentThread();
    std::atomic<int> ended{0};
    std::vector<std::thread> posting;
    for (int thread = 0; thread < threads; ++thread)
        posting.emplace_back([&, thread] {
            for (int i = 0; i < callsOfEach; ++i)
                queue.post([&seen, thread, here, text = std::to_string(i)] {
                    EXPECT_EQ(QThread::currentThread(), here);
                    seen[std::size_t(thread)].push_back(text);
                });
            ++ended;
        });
    while (ended < threads)
        runEvents();
    for (std::thread &thread : posting)
        thread.join();
    runEvents();
    for (const auto &ofThread : seen) {
        ASSERT_EQ(ofThread.size(), std::size_t(callsOfEach));
        for (int i = 0; i < callsOfEach; ++i)
            EXPECT_EQ(ofThread[std::size_t(i)], std::to_string(i));
    }
}

TEST(CallQueue, ACallThatWaitsInALoopOfItsOwnSeesTheLaterOnesDone)
{
    core::CallQueue queue;
    std::string order;
    queue.post([&] {
        QEventLoop loop;
        queue.post([&] {
            order += "inner ";
            loop.quit();
        });
        loop.exec();
        order += "outer";
    });
    queue.post([&] { order += "later "; });
    runEvents();
    EXPECT_EQ(order, "later inner outer");
}

TEST(CallQueue, ACallMayDestroyTheQueueAndTheLaterOnesAreLetGo)
{
    auto queue = std::make_unique<core::CallQueue>();
    const auto carried = std::make_shared<int>(1);
    int calls = 0;
    queue->post([&queue, &calls] {
        ++calls;
        queue.reset();
    });
    queue->post([&calls, carried] { ++calls; });
    runEvents();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(carried.use_count(), 1);
}

/// More work than the pool has threads: what waits reaches a thread that is already at work.
TEST(PoolWork, IsAllDoneAndItsResultsComeBack)
{
    constexpr int works = 500;
    std::vector<std::string> results(works);
    int back = 0;
    for (int i = 0; i < works; ++i)
        core::runInPool([&results, &back, i, given = std::string(100, char('a' + i % 26))] {
            auto result = given + std::to_string(i);
            EXPECT_TRUE(core::postToApplication([&results, &back, i, result] {
                results[std::size_t(i)] = result;
                ++back;
            }));
        });
    while (back < works)
        runEvents();
    QThreadPool::globalInstance()->waitForDone();
    for (int i = 0; i < works; ++i)
        EXPECT_EQ(results[std::size_t(i)], std::string(100, char('a' + i % 26)) + std::to_string(i));
}

} // namespace
