#include "kv/productinfo.h"
#include "kv/userauthorisation.h"
#include "net/cmailservice.h"

// What the about box tells, and a host without mail: logs can still be packed and saved.

namespace KV {

ProductInfo getProductInfo()
{
    return {QStringLiteral("consumer"), QStringLiteral("1.0"), {}, {}, {}};
}

UserAuthorisation getUserAuthorisation()
{
    return {QStringLiteral("Somebody"), {}, {}, true, {}};
}

} // namespace KV

namespace net {

CMailService::CMailService() = default;
CMailService::~CMailService() = default;

CMailService *getMailService()
{
    return nullptr;
}

} // namespace net
