#include "kv/userauthorisation.h"

#include "kdservice/evxtradertype.h"
#include "kv/caccountdata.h"
#include "kv/cuserconfig.h"

namespace KV {

namespace {

/// What the user's accounts trade, in a fixed order.
QStringList kindsOfAccounts()
{
    const CAccountData *accounts = getAccountData();
    if (accounts == nullptr)
        return {};
    int types = 0;
    for (const AccountEntry &account : accounts->accounts(kdservice::TraderNone))
        types |= account.traderTypes;
    const struct
    {
        int type;
        const char *name;
    } known[] = {{kdservice::TraderStock, "证券"},
                 {kdservice::TraderCredit, "信用"},
                 {kdservice::TraderFuture, "期货"},
                 {kdservice::TraderOption, "期权"},
                 {kdservice::TraderStockOption, "股票期权"}};
    QStringList names;
    for (const auto &each : known)
        if (types & each.type)
            names << QString::fromUtf8(each.name);
    return names;
}

} // namespace

/// Kept in the user's configuration: "user/name", "user/organisation", "user/validUntil" (2026-12-31) and, for users
/// whose kinds are not those of their accounts, "user/accountKinds".
UserAuthorisation getUserAuthorisation()
{
    const CUserConfig *config = getUserConfig();
    if (config == nullptr)
        return {};
    UserAuthorisation known;
    known.user = config->value(QStringLiteral("user/name")).toString();
    known.organisation = config->value(QStringLiteral("user/organisation")).toString();
    known.accountKinds = config->value(QStringLiteral("user/accountKinds")).toStringList();
    if (known.accountKinds.isEmpty())
        known.accountKinds = kindsOfAccounts();
    const QString until = config->value(QStringLiteral("user/validUntil")).toString().trimmed();
    known.hasNoEnd = until.isEmpty();
    known.validUntil = QDate::fromString(until, Qt::ISODate);
    return known;
}

} // namespace KV
