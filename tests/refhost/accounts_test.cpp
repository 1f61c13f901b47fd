#include "services/accounts.h"

#include <gtest/gtest.h>

#include "services/userconfig.h"

using namespace refhost;

namespace {

QString listed(const KV::CAccountData &accounts, kdservice::EVxTraderType type)
{
    QStringList words;
    for (const KV::AccountGroup &group : accounts.groups(type))
        words << group.name + QLatin1Char('=') + group.accountIds.join(QLatin1Char('+'));
    for (const KV::AccountEntry &account : accounts.accounts(type))
        words << account.id;
    for (const KV::AccountEntry &account : accounts.composedAccounts(type))
        words << QLatin1Char('*') + account.id;
    return words.join(QLatin1Char(' '));
}

void fill(Accounts &accounts)
{
    accounts.putAccount({"1", "a", kdservice::TraderStock, {}});
    accounts.putAccount({"2", "b", kdservice::TraderFuture, {}});
    accounts.putAccount({"3", "c", kdservice::TraderStock | kdservice::TraderFuture, {}});
    accounts.putComposedAccount({"9", "d", kdservice::TraderStock, {"1", "3"}});
}

std::string utf8(const QString &text)
{
    return text.toStdString();
}

} // namespace

TEST(Accounts, AreToldByTraderTypeWithTheGroupsThatHaveSome)
{
    setUserConfig(std::make_unique<UserConfig>());
    Accounts accounts;
    fill(accounts);
    EXPECT_FALSE(accounts.putAccount({"", "x", 1, {}}));
    EXPECT_TRUE(accounts.putGroup("G", {"3", "1", "7"}));
    EXPECT_TRUE(accounts.putGroup("H", {"2"}));
    EXPECT_EQ(utf8(listed(accounts, kdservice::TraderNone)), "G=3+1 H=2 1 2 3 *9");
    EXPECT_EQ(utf8(listed(accounts, kdservice::TraderStock)), "G=3+1 1 3 *9");
    EXPECT_EQ(utf8(listed(accounts, kdservice::TraderFuture)), "G=3 H=2 2 3");
    EXPECT_EQ(utf8(listed(accounts, kdservice::TraderOption)), "");
    accounts.putAccount({"1", "a", kdservice::TraderFuture, {}}); // replaced in its place
    EXPECT_EQ(utf8(listed(accounts, kdservice::TraderFuture)), "G=3+1 H=2 1 2 3");
    EXPECT_TRUE(accounts.removeAccount("3"));
    EXPECT_TRUE(accounts.removeAccount("9"));
    EXPECT_FALSE(accounts.removeAccount("9"));
    EXPECT_EQ(utf8(listed(accounts, kdservice::TraderNone)), "G=1 H=2 1 2");
    setUserConfig(nullptr);
}

TEST(Accounts, TellOfEveryChangeOfAGroupAndOfNoneThatFailed)
{
    setUserConfig(std::make_unique<UserConfig>());
    Accounts accounts;
    QStringList told;
    QObject::connect(KV::getUserConfig(), &KV::CUserConfig::sigAccountGroupChanged,
                     [&told](const QMap<QString, bool> &groups) {
                         for (auto group = groups.begin(); group != groups.end(); ++group)
                             told << group.key() + (group.value() ? "-" : "+");
                     });
    const auto taken = [&told] { return utf8(std::exchange(told, {}).join(QLatin1Char(' '))); };
    EXPECT_TRUE(accounts.putGroup("G", {"1"}));
    EXPECT_TRUE(accounts.putGroup("G", {"2"}));
    EXPECT_EQ(taken(), "G+ G+");
    EXPECT_TRUE(accounts.renameGroup("G", "H"));
    EXPECT_EQ(taken(), "G- H+");
    accounts.putGroup("I", {});
    taken();
    EXPECT_FALSE(accounts.renameGroup("I", "H"));
    EXPECT_FALSE(accounts.renameGroup("X", "Y"));
    EXPECT_FALSE(accounts.removeGroup("G"));
    EXPECT_FALSE(accounts.putGroup("", {"1"}));
    EXPECT_FALSE(accounts.putGroup("a\tb", {"1"}));
    EXPECT_FALSE(accounts.putGroup("J", {"1\t2"}));
    EXPECT_EQ(taken(), "");
    EXPECT_TRUE(accounts.removeGroup("H"));
    EXPECT_EQ(taken(), "H-");
    setUserConfig(nullptr);
}

TEST(Accounts, GroupsAreKeptInTheUsersConfiguration)
{
    setUserConfig(std::make_unique<UserConfig>());
    {
        Accounts accounts;
        accounts.putGroup(QStringLiteral("套利/对冲, \"一\""), {"1", "2"});
        accounts.putGroup("empty", {});
        accounts.putGroup("gone", {"1"});
        accounts.removeGroup("gone");
    }
    Accounts again;
    fill(again);
    EXPECT_EQ(utf8(listed(again, kdservice::TraderNone)), "套利/对冲, \"一\"=1+2 1 2 3 *9");
    KV::getUserConfig()->setValue("accounts/groups", QStringList({"", "\t1", "A\t1", "A\t2"})); // spoilt by hand
    Accounts spoilt;
    fill(spoilt);
    EXPECT_EQ(utf8(listed(spoilt, kdservice::TraderStock)), "A=1 1 3 *9");
    setUserConfig(nullptr);
}
