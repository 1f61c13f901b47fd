#pragma once

#include <QtCore/QObject>
#include <deque>
#include <functional>
#include <mutex>

namespace core {

/// Calls that any thread hands to the thread in which this queue was made, where the event loop runs them one by one in
/// the order of post(), each in an event of its own, so that a call may run a loop of its own and see the later ones
/// done. What the calls carry crosses under the queue's lock; the events that wake the loop carry nothing.
///
/// The owner destroys the queue after the last thread that posts has ended. Calls that have not run by then are let go
/// with what they carry; a call may destroy the queue.
class CallQueue : public QObject
{
public:
    CallQueue();
    ~CallQueue() override;

    /// Any thread.
    void post(std::function<void()> call);

protected:
    bool event(QEvent *event) override;

private:
    std::mutex mutex; ///< guards the calls, and is not held while one runs
    std::deque<std::function<void()>> calls;
};

/// Hands a call to the thread of the application, whose event loop runs it. False without an application, and the call
/// is let go: nobody is left to hear it. Any thread.
bool postToApplication(std::function<void()> call);

} // namespace core
