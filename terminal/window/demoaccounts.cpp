#include "window/demoaccounts.h"

#include "services/accounts.h"

namespace terminal {

std::unique_ptr<refhost::Accounts> demoAccounts()
{
    using namespace kdservice;
    auto accounts = std::make_unique<refhost::Accounts>();
    const QStringList futures = {QStringLiteral("80001001"), QStringLiteral("80001002")};
    const KV::AccountEntry entries[] = {
        {QStringLiteral("60001001"), QStringLiteral("股票模拟一号"), TraderStock, {}},
        {QStringLiteral("60001002"), QStringLiteral("股票模拟二号"), TraderStock, {}},
        {QStringLiteral("70001001"), QStringLiteral("信用模拟"), TraderCredit, {}},
        {futures[0], QStringLiteral("期货模拟一号"), TraderFuture, {}},
        {futures[1], QStringLiteral("期货模拟二号"), TraderFuture, {}},
    };
    QStringList all;
    for (const KV::AccountEntry &entry : entries) {
        accounts->putAccount(entry);
        all << entry.id;
    }
    accounts->putComposedAccount({QStringLiteral("Z8001"), QStringLiteral("期货组合"), TraderFuture, futures});
    if (accounts->groups(TraderNone).isEmpty())
        accounts->putGroup(QStringLiteral("全部账号"), all);
    return accounts;
}

} // namespace terminal
