#pragma once

#include <functional>

namespace core {

/// Runs work on a thread of Qt's global pool, in the order of the calls as far as the pool has threads for it. Any
/// thread. The work, and what it carries, crosses under a lock of ours and is let go on the pool's thread.
/// QThreadPool::waitForDone() waits for it; QThreadPool::clear() may not be used beside it.
void runInPool(std::function<void()> work);

} // namespace core
