#include "table/modelwakeup.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

namespace ZB {

ModelWakeUp::ModelWakeUp() : shared(std::make_shared<Shared>())
{
    shared->receiver = this;
}

ModelWakeUp::~ModelWakeUp()
{
    const std::lock_guard<std::mutex> lock(shared->mutex);
    shared->receiver = nullptr;
}

std::function<void()> ModelWakeUp::listener() const
{
    return [state = shared] {
        if (state->posted.exchange(true))
            return;
        const std::lock_guard<std::mutex> lock(state->mutex);
        if (state->receiver)
            QCoreApplication::postEvent(state->receiver, new QEvent(QEvent::User));
    };
}

bool ModelWakeUp::event(QEvent *event)
{
    if (event->type() != QEvent::User)
        return QObject::event(event);
    shared->posted = false;
    Q_EMIT woken();
    return true;
}

} // namespace ZB
