#include <gtest/gtest.h>

#include <QtCore/QStringList>

#include "printtext.h"
#include "services/accounts.h"
#include "services/userconfig.h"
#include "window/demoaccounts.h"

namespace {

/// Groups with how many accounts, accounts and composed accounts of a business.
QString offered(const refhost::Accounts &accounts, kdservice::EVxTraderType type)
{
    QStringList all;
    for (const KV::AccountGroup &group : accounts.groups(type))
        all << QStringLiteral("%1(%2)").arg(group.name).arg(group.accountIds.size());
    for (const KV::AccountEntry &account : accounts.composedAccounts(type) + accounts.accounts(type))
        all << account.id;
    return all.join(QLatin1Char(' '));
}

} // namespace

TEST(DemoAccounts, EveryBusinessHasSomeAndAUsersOwnGroupsStayAlone)
{
    using namespace kdservice;
    refhost::setUserConfig(std::make_unique<refhost::UserConfig>());
    EXPECT_EQ(offered(*terminal::demoAccounts(), TraderStock), QStringLiteral("全部账号(2) 60001001 60001002"));
    const auto accounts = terminal::demoAccounts();
    EXPECT_EQ(offered(*accounts, TraderCredit), QStringLiteral("全部账号(1) 70001001"));
    EXPECT_EQ(offered(*accounts, TraderFuture), QStringLiteral("全部账号(2) Z8001 80001001 80001002"));
    EXPECT_TRUE(accounts->renameGroup(QStringLiteral("全部账号"), QStringLiteral("我的")));
    EXPECT_EQ(offered(*terminal::demoAccounts(), TraderCredit), QStringLiteral("我的(1) 70001001"));
    refhost::setUserConfig(nullptr);
}
