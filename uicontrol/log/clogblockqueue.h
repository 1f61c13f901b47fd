#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

#include "log/logblock.h"

namespace KV {

/// Blocks of log text on their way to their sinks, and the one thread that delivers them, in the order of the calls. A
/// queued block keeps its sink alive.
///
/// Bound: while less than `bound` bytes of text are queued, add() returns at once. Past it other threads wait for room;
/// the GUI thread never waits: instead, queued lines that could no longer survive in any list are dropped.
class UICONTROL_API CLogBlockQueue
{
public:
    /// stopRoutine: called when the application ends, to stop the queue while there still are fonts; may be null.
    explicit CLogBlockQueue(qint64 bound, void (*stopRoutine)() = nullptr);
    ~CLogBlockQueue();

    CLogBlockQueue(const CLogBlockQueue &) = delete;
    CLogBlockQueue &operator=(const CLogBlockQueue &) = delete;

    /// The queue of all logs of the process; its bound is 64 MiB.
    static CLogBlockQueue &instance();

    /// Any thread but the worker. The worker is started with the first block.
    void add(LogBlock block);
    /// Drops what is queued and waits for the block at work. A later block starts the queue again.
    void stop();

    qint64 queuedBytes() const;

private:
    void run();
    bool waitForBlock(std::unique_lock<std::mutex> &lock);
    void dropHopeless();

    const qint64 bound;
    void (*const stopRoutine)();
    mutable std::mutex mutex; ///< guards everything below
    std::condition_variable work;
    std::condition_variable room;
    std::deque<LogBlock> blocks;
    std::vector<QString> dropped; ///< texts that the worker frees, since there may be hundreds of thousands
    qint64 bytes = 0;
    qint64 dropAt;       ///< bytes at which the GUI thread looks for hopeless lines again
    bool asleep = false; ///< the worker needs a wake-up call
    bool stopping = false;
    std::thread worker;
};

} // namespace KV
