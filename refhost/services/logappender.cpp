#include "services/logappender.h"

#include <log4cxx/level.h>

#include <cstdio>

#include "services/logtext.h"

namespace refhost {

namespace {

int levelOf(const log4cxx::spi::LoggingEvent &event)
{
    if (event.getLevel()->isGreaterOrEqual(log4cxx::Level::getError()))
        return LogError;
    return event.getLevel()->isGreaterOrEqual(log4cxx::Level::getWarn()) ? LogWarning : LogInfo;
}

/// Lines that are kept for listeners to come.
constexpr std::size_t mostKept = 1000;

/// True on a thread that is inside a listener: what it logs goes to nobody, or there would be no end.
thread_local bool insideListener = false;

} // namespace

LogAppender::LogAppender() = default;

LogAppender::~LogAppender()
{
    finalize();
}

int LogAppender::addListener(LogListener listener, std::vector<LogLine> *before)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (before)
        before->assign(newest.begin(), newest.end());
    auto changed = std::make_shared<Listeners>(*listeners);
    (*changed)[++lastId] = std::move(listener);
    listeners = std::move(changed);
    return lastId;
}

void LogAppender::removeListener(int id)
{
    const std::lock_guard<std::mutex> lock(mutex);
    auto changed = std::make_shared<Listeners>(*listeners);
    changed->erase(id);
    listeners = std::move(changed);
}

void LogAppender::close() {}

bool LogAppender::requiresLayout() const
{
    return false;
}

void LogAppender::doAppend(const log4cxx::spi::LoggingEventPtr &event, log4cxx::helpers::Pool &pool)
{
    append(event, pool);
}

void LogAppender::append(const log4cxx::spi::LoggingEventPtr &event, log4cxx::helpers::Pool &)
{
    const int level = levelOf(*event);
    if (level >= LogWarning) {
        const std::string line = fileLine(*event);
        std::fwrite(line.data(), 1, line.size(), stderr);
    }

    if (insideListener)
        return;
    const QString text = panelLine(*event);
    std::shared_ptr<const Listeners> present;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (newest.size() == mostKept)
            newest.pop_front();
        newest.push_back({text, level});
        present = listeners;
    }
    insideListener = true;
    for (const auto &[id, listener] : *present)
        listener(text, level);
    insideListener = false;
}

} // namespace refhost
