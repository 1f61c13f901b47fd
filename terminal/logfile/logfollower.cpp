#include "logfile/logfollower.h"

#include <chrono>
#include <utility>

namespace terminal {

namespace {

constexpr auto pollInterval = std::chrono::milliseconds(250);

} // namespace

LogFollower::LogFollower(const QString &path, const LogTail::Limits &limits, QObject *parent)
    : QObject(parent), filePath(path), tail(path, limits)
{
}

LogFollower::~LogFollower()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        stopping = true;
    }
    changed.notify_all();
    if (reader.joinable())
        reader.join();
}

void LogFollower::start()
{
    if (!reader.joinable())
        reader = std::thread([this] { run(); });
}

void LogFollower::run()
{
    LogRead read;
    for (;;) {
        const bool hasNews = tail.read(read);
        if (hasNews && !handOver(newsOf(read)))
            return;
        if (hasNews)
            continue;
        std::unique_lock<std::mutex> lock(mutex);
        if (!std::exchange(atEnd, true))
            calls.post([this] { take(); });
        if (changed.wait_for(lock, pollInterval, [this] { return stopping; }))
            return;
    }
}

/// Puts lines of one level together, so that they cost the view less.
LogFileNews LogFollower::newsOf(LogRead &read)
{
    LogFileNews news;
    news.event = read.event;
    news.skipped = read.skipped;
    news.problem = std::move(read.problem);
    news.encoding = tail.decoder().encoding();
    news.zeroBytes = tail.decoder().sawZeroBytes();
    if (read.event != LogFileEvent::None)
        levels.restart();
    QStringList run;
    const auto endRun = [&news, &run] {
        if (run.isEmpty())
            return;
        news.blocks.back().text = run.join(QLatin1Char('\n'));
        news.blocks.back().lines = run.size();
        run.clear();
    };
    for (const QString &line : std::as_const(read.lines)) {
        const int level = levels.levelOf(line);
        if (run.isEmpty() || news.blocks.back().level != level) {
            endRun();
            news.blocks.push_back({QString(), level, 0});
        }
        run << line;
    }
    endRun();
    return news;
}

/// Waits until the GUI thread has taken what came before, so that a fast file cannot drown it. False at the end.
bool LogFollower::handOver(LogFileNews news)
{
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait(lock, [this] { return stopping || !waiting; });
    if (stopping)
        return false;
    waiting = std::move(news);
    atEnd = false;
    calls.post([this] { take(); });
    return true;
}

/// On the GUI thread.
void LogFollower::take()
{
    std::optional<LogFileNews> news;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        news = std::exchange(waiting, std::nullopt);
        caughtUp = atEnd;
    }
    changed.notify_all();
    if (news)
        Q_EMIT arrived(*news);
    if (caughtUp && !std::exchange(wasLoaded, true))
        Q_EMIT loaded();
}

} // namespace terminal
