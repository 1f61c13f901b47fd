#include <log4cxx/logger.h>

#include <QtCore/QFileInfo>
#include <atomic>
#include <mutex>
#include <set>

#include "services/logservice.h"
#include "utils/clogcenter.h"

namespace utils {

namespace {

struct DebugIds
{
    std::atomic<int> count{0}; ///< so that a program without debug ids pays one load a question
    std::mutex mutex;          ///< guards ids
    std::set<int> ids;
};

DebugIds &debugIds()
{
    static DebugIds *ids = new DebugIds; // never destroyed, as the loggers
    return *ids;
}

} // namespace

CLogCenter::CLogCenter() = default;
CLogCenter::~CLogCenter() = default;

CLogCenter *CLogCenter::instance()
{
    static CLogCenter center;
    return &center;
}

bool CLogCenter::isDebugIdEnabled(int id) const
{
    DebugIds &all = debugIds();
    if (all.count.load(std::memory_order_acquire) == 0)
        return false;
    const std::lock_guard<std::mutex> lock(all.mutex);
    return all.ids.count(id) != 0;
}

void CLogCenter::setDebugIdEnabled(int id, bool enabled)
{
    DebugIds &all = debugIds();
    const std::lock_guard<std::mutex> lock(all.mutex);
    if (enabled)
        all.ids.insert(id);
    else
        all.ids.erase(id);
    all.count.store(static_cast<int>(all.ids.size()), std::memory_order_release);
}

log4cxx::LoggerPtr getStdLogger()
{
    return getLogger("KDStd");
}

log4cxx::LoggerPtr getLogger(const char *name)
{
    refhost::LogService::instance();
    return log4cxx::Logger::getLogger(name == nullptr ? "" : name);
}

QString getLogFolder()
{
    const QStringList files = refhost::LogService::instance().files();
    return files.isEmpty() ? QString() : QFileInfo(files.constFirst()).absolutePath();
}

} // namespace utils
