#include "window/tourwait.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

namespace terminal {

namespace {

constexpr int step = 5; ///< milliseconds

} // namespace

bool waitFor(const std::function<bool()> &isSo, int milliseconds)
{
    QElapsedTimer time;
    time.start();
    QEventLoop loop;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        if (isSo() || time.hasExpired(milliseconds))
            loop.quit();
    });
    timer.start(step);
    loop.exec();
    return isSo();
}

} // namespace terminal
