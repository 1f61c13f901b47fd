#include "threads/callqueue.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <utility>

namespace core {

CallQueue::CallQueue() = default;

CallQueue::~CallQueue() = default;

void CallQueue::post(std::function<void()> call)
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        calls.push_back(std::move(call));
    }
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

bool CallQueue::event(QEvent *event)
{
    if (event->type() != QEvent::User)
        return QObject::event(event);
    std::function<void()> call;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        call = std::move(calls.front());
        calls.pop_front();
    }
    call();
    return true;
}

bool postToApplication(std::function<void()> call)
{
    const QCoreApplication *application = QCoreApplication::instance();
    if (!application)
        return false;
    // Never destroyed: threads may still post while the program ends.
    static auto *queue = [application] {
        auto *made = new CallQueue;
        made->moveToThread(application->thread());
        return made;
    }();
    queue->post(std::move(call));
    return true;
}

} // namespace core
