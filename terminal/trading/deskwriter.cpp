#include "trading/deskwriter.h"

#include "trading/deskstore.h"

#include <chrono>
#include <iterator>
#include <utility>

namespace trading {

namespace {

/// Between two attempts to write.
constexpr std::chrono::milliseconds retryPause(500);

} // namespace

DeskWriter::DeskWriter(QObject *parent) : QObject(parent) {}

DeskWriter::~DeskWriter()
{
    stop();
}

void DeskWriter::stop()
{
    if (!thread.joinable())
        return;
    {
        const std::lock_guard<std::mutex> guard(mutex);
        isStopping = true;
    }
    changed.notify_all();
    thread.join();
    isStopping = false;
}

QString DeskWriter::open(const QString &path, DeskState &state)
{
    stop();
    isOpened = false;
    thread = std::thread([this, path] { run(path); });
    std::unique_lock<std::mutex> guard(mutex);
    changed.wait(guard, [this] { return isOpened; });
    state = std::move(opened);
    const QString problem = openProblem;
    guard.unlock();
    if (!problem.isEmpty())
        stop();
    return problem;
}

void DeskWriter::put(DeskChange change)
{
    {
        const std::lock_guard<std::mutex> guard(mutex);
        queue.push_back(std::move(change));
    }
    changed.notify_all();
}

QString DeskWriter::start(const QString &path, DeskStore &store)
{
    DeskState state;
    QString problem = store.open(path);
    if (problem.isEmpty())
        problem = store.load(state);
    {
        const std::lock_guard<std::mutex> guard(mutex);
        isOpened = true;
        openProblem = problem;
        opened = std::move(state);
    }
    changed.notify_all();
    return problem;
}

void DeskWriter::run(const QString &path)
{
    DeskStore store; // a connection belongs to the thread that made it
    if (!start(path, store).isEmpty())
        return;
    qint64 number = 0;
    std::vector<DeskChange> taken;
    std::unique_lock<std::mutex> guard(mutex);
    for (;;) {
        if (taken.empty())
            changed.wait(guard, [this] { return isStopping || !queue.empty(); });
        else
            changed.wait_for(guard, retryPause, [this] { return isStopping; });
        const bool isLast = isStopping;
        taken.insert(taken.end(), std::make_move_iterator(queue.begin()), std::make_move_iterator(queue.end()));
        queue.clear();
        guard.unlock();
        if (!taken.empty()) {
            const QString problem = store.apply(taken);
            if (problem.isEmpty()) {
                number += qint64(taken.size());
                taken.clear();
                Q_EMIT stored(number);
            } else {
                Q_EMIT failed(problem);
            }
        }
        if (isLast)
            return;
        guard.lock();
    }
}

} // namespace trading
