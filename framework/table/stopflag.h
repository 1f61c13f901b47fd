#pragma once

#include <atomic>

#include "frameworkexport.h"

namespace ZB {

/// Between who may stop a work and who carries it out: either the work is stopped or its result counts, never both. Any
/// thread.
class FRAMEWORK_API StopFlag
{
public:
    /// True when the work is stopped, also by an earlier call; false when its result counts already.
    bool stop();
    /// By the worker right before its result takes effect: false when it has been stopped. Cannot be stopped
    /// afterwards.
    bool commit();
    bool isStopped() const { return state == State::Stopped; }

private:
    enum class State
    {
        Running,
        Stopped,
        Committed
    };
    bool settle(State wanted);

    std::atomic<State> state{State::Running};
};

} // namespace ZB
