#include "soak/watchedapplication.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QEvent>
#include <QtCore/QMetaEnum>
#include <QtCore/QThread>
#include <ctime>
#include <utility>

namespace soak {

namespace {

constexpr double frame = 1000.0 / 60;

/// Of this thread, in milliseconds.
double processorTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

} // namespace

WatchedApplication::WatchedApplication(int &argc, char **argv) : QApplication(argc, argv) {}

WatchedApplication::~WatchedApplication() = default;

bool WatchedApplication::notify(QObject *receiver, QEvent *event)
{
    if (QThread::currentThread() != thread())
        return QApplication::notify(receiver, event);
    const int level = QThread::currentThread()->loopLevel();
    if (level <= handledLevel)
        return QApplication::notify(receiver, event);
    const char *const type = QMetaEnum::fromType<QEvent::Type>().valueToKey(event->type());
    const char *const className = receiver->metaObject()->className(); // of a receiver that may go
    eventName.clear();
    QElapsedTimer clock;
    clock.start();
    const double busyBefore = processorTime();
    const int outerLevel = std::exchange(handledLevel, level);
    deepestLevel = level;
    const bool done = QApplication::notify(receiver, event);
    handledLevel = outerLevel;
    if (deepestLevel > level) // a loop of its own let other events through, which were measured
        return done;
    const double time = static_cast<double>(clock.nsecsElapsed()) * 1e-6;
    if (time <= frame)
        return done;
    const QString name = eventName.isEmpty() ? QStringLiteral("%1 of %2").arg(type, className) : eventName;
    Cause &cause = found[name];
    ++cause.count;
    if (time > cause.worst) {
        cause.worst = time;
        cause.worstBusy = processorTime() - busyBefore;
    }
    return done;
}

} // namespace soak
