// Strands, loggers, the user's configuration.

#include <boost/asio/executor_work_guard.hpp>
#include <boost/make_shared.hpp>
#include <map>
#include <mutex>
#include <thread>

#include "kv/cuserconfig.h"
#include "net/rpcengine.h"
#include "utils/clogcenter.h"

namespace net {

namespace {

/// One thread for all strands; it lives as long as the process.
struct Worker
{
    boost::asio::io_service service;
    boost::asio::executor_work_guard<boost::asio::io_service::executor_type> work{service.get_executor()};
    std::mutex mutex;
    std::map<std::string, boost::shared_ptr<boost::asio::io_service::strand>> strands;

    Worker()
    {
        std::thread([this] { service.run(); }).detach();
    }
};

} // namespace

RPCEngine::RPCEngine() = default;
RPCEngine::~RPCEngine() = default;

RPCEngine *RPCEngine::instance()
{
    static RPCEngine engine;
    return &engine;
}

boost::shared_ptr<boost::asio::io_service::strand> RPCEngine::getStrand(const std::string &name)
{
    static Worker *worker = new Worker;
    const std::lock_guard<std::mutex> lock(worker->mutex);
    auto &strand = worker->strands[name];
    if (!strand)
        strand = boost::make_shared<boost::asio::io_service::strand>(worker->service);
    return strand;
}

} // namespace net

namespace utils {

CLogCenter::CLogCenter() = default;
CLogCenter::~CLogCenter() = default;

CLogCenter *CLogCenter::instance()
{
    static CLogCenter center;
    return &center;
}

bool CLogCenter::isDebugIdEnabled(int) const
{
    return false;
}

void CLogCenter::setDebugIdEnabled(int, bool) {}

log4cxx::LoggerPtr getStdLogger()
{
    return log4cxx::Logger::getRootLogger();
}

log4cxx::LoggerPtr getLogger(const char *name)
{
    return log4cxx::Logger::getLogger(name);
}

QString getLogFolder()
{
    return {}; // this program writes no files
}

} // namespace utils

namespace KV {

namespace {

/// Kept in memory.
class MemoryConfig : public CUserConfig
{
public:
    bool isSegmentedFormat() const override { return true; }
    utils::CFlags<utils::EFormatNumberFlag> getSegmentedFormatFlag() const override { return utils::FormatGroupDigits; }
    void setSegmentedFormat(bool) override {}
    QVariant value(const QString &path, const QVariant &fallback) const override
    {
        return values.value(path, fallback);
    }
    void setValue(const QString &path, const QVariant &value) override
    {
        if (value.isValid())
            values.insert(path, value);
        else
            values.remove(path);
    }

private:
    QMap<QString, QVariant> values;
};

} // namespace

CUserConfig::CUserConfig() = default;
CUserConfig::~CUserConfig() = default;

CUserConfig *getUserConfig()
{
    static MemoryConfig config;
    return &config;
}

} // namespace KV
