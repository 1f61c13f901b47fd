// What the about box would show.

#include "kv/productinfo.h"
#include "kv/userauthorisation.h"

namespace KV {

ProductInfo getProductInfo()
{
    ProductInfo info;
    info.name = QStringLiteral("consumer");
    info.version = QStringLiteral("1.0");
    return info;
}

UserAuthorisation getUserAuthorisation()
{
    return {};
}

} // namespace KV
