#include "logfile/programlog.h"

#include <QtCore/QStringList>
#include <mutex>
#include <utility>
#include <vector>

#include "services/logservice.h"

namespace terminal {

namespace {

constexpr std::size_t mostWaiting = 50000;

} // namespace

struct ProgramLog::State
{
    std::mutex mutex;          ///< guards everything below
    ProgramLog *log = nullptr; ///< none after its end
    std::vector<refhost::LogLine> lines;
    bool isWoken = false;

    void add(const QString &text, int level)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (!log)
            return;
        if (lines.size() >= 2 * mostWaiting)
            lines.erase(lines.begin(), lines.begin() + mostWaiting);
        lines.push_back({text, level});
        wake();
    }

    void wake()
    {
        if (!std::exchange(isWoken, true))
            log->calls.post([this] { log->take(); });
    }
};

ProgramLog::ProgramLog(QObject *parent) : QObject(parent), state(std::make_shared<State>())
{
    const std::lock_guard<std::mutex> lock(state->mutex); // what is logged meanwhile waits: it comes after
    state->log = this;
    listener = refhost::LogService::instance().addListener(
        [shared = state](const QString &text, int level) { shared->add(text, level); }, &state->lines);
    state->wake();
}

ProgramLog::~ProgramLog()
{
    refhost::LogService::instance().removeListener(listener);
    const std::lock_guard<std::mutex> lock(state->mutex);
    state->log = nullptr;
}

void ProgramLog::take()
{
    std::vector<refhost::LogLine> lines;
    {
        const std::lock_guard<std::mutex> lock(state->mutex);
        lines.swap(state->lines);
        state->isWoken = false;
    }
    QStringList run;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        run << lines[i].text;
        if (i + 1 < lines.size() && lines[i + 1].level == lines[i].level)
            continue;
        Q_EMIT arrived(run.join(QLatin1Char('\n')), lines[i].level);
        run.clear();
    }
}

} // namespace terminal
