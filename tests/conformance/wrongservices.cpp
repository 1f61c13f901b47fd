// A host that left its services for later: no strands, no loggers, nobody's configuration.

#include "kv/cuserconfig.h"
#include "net/rpcengine.h"
#include "utils/clogcenter.h"

namespace net {

RPCEngine::RPCEngine() = default;
RPCEngine::~RPCEngine() = default;

RPCEngine *RPCEngine::instance()
{
    return nullptr;
}

boost::shared_ptr<boost::asio::io_service::strand> RPCEngine::getStrand(const std::string &)
{
    return nullptr;
}

} // namespace net

namespace utils {

CLogCenter::CLogCenter() = default;
CLogCenter::~CLogCenter() = default;

CLogCenter *CLogCenter::instance()
{
    return nullptr;
}

bool CLogCenter::isDebugIdEnabled(int) const
{
    return false;
}

void CLogCenter::setDebugIdEnabled(int, bool) {}

log4cxx::LoggerPtr getStdLogger()
{
    return {};
}

log4cxx::LoggerPtr getLogger(const char *)
{
    return {};
}

QString getLogFolder()
{
    return {};
}

} // namespace utils

namespace KV {

CUserConfig::CUserConfig() = default;
CUserConfig::~CUserConfig() = default;

CUserConfig *getUserConfig()
{
    return nullptr;
}

} // namespace KV
