#include "trading/historyreader.h"

#include "trading/historysearch.h"

#include <chrono>
#include <utility>

namespace trading {

namespace {

/// Between two answers to one call.
constexpr std::chrono::milliseconds progressPause(100);

} // namespace

HistoryReader::HistoryReader(const QString &path, QObject *parent) : QObject(parent)
{
    thread = std::thread([this, path] { run(path); });
}

HistoryReader::~HistoryReader()
{
    {
        const std::lock_guard<std::mutex> guard(mutex);
        isStopping = true;
    }
    changed.notify_all();
    thread.join();
}

void HistoryReader::ask(const HistoryQuery &query, qint64 start, int count, bool anew)
{
    {
        const std::lock_guard<std::mutex> guard(mutex);
        const bool isAnew = anew || (waiting && waiting->isAnew);
        waiting = Request{query, start, count, isAnew, ++asked};
    }
    changed.notify_all();
}

void HistoryReader::run(const QString &path)
{
    HistorySearch search; // a connection belongs to the thread that made it
    const QString problem = search.open(path);
    std::optional<HistoryQuery> current;
    for (;;) {
        std::unique_lock<std::mutex> guard(mutex);
        changed.wait(guard, [this] { return isStopping || waiting; });
        if (isStopping)
            return;
        Request request = *std::exchange(waiting, std::nullopt);
        guard.unlock();
        if (!problem.isEmpty()) {
            HistoryPage failed;
            failed.problem = problem;
            tell(request.number, std::move(failed));
            continue;
        }
        if (request.isAnew)
            calls.post([this, choices = search.choices()] { Q_EMIT choicesRead(choices); });
        if (request.isAnew || current != request.query)
            search.begin(request.query);
        current = request.query;
        serve(search, request);
    }
}

void HistoryReader::tell(qint64 number, HistoryPage page)
{
    calls.post([this, number, read = std::move(page)] { Q_EMIT pageRead(number, read); });
}

bool HistoryReader::isOvertaken()
{
    const std::lock_guard<std::mutex> guard(mutex);
    return isStopping || waiting;
}

/// A page of what is found at once, again while there is more to find, and once more with what all of it comes to.
void HistoryReader::serve(HistorySearch &search, Request &request)
{
    using Clock = std::chrono::steady_clock;
    Clock::time_point next = Clock::now();
    bool toldRows = false;
    for (;;) {
        if (search.isSummed() || (search.isComplete() ? !toldRows : Clock::now() >= next)) {
            toldRows = search.isComplete();
            tell(request.number, search.page(request.start, request.count));
            next = Clock::now() + progressPause;
        }
        if (search.isSummed() || isOvertaken())
            return;
        search.step();
    }
}

} // namespace trading
