#pragma once

#include <memory>

#include "kv/caccountdata.h"
#include "refhostexport.h"

namespace refhost {

/// What KV::getAccountData() answers with: accounts as the program tells them, groups as the user makes them. The
/// groups are kept in the user's configuration, which tells of every change by its sigAccountGroupChanged. GUI thread.
class REFHOST_API Accounts : public KV::CAccountData
{
public:
    /// Reads the groups of the present user configuration.
    Accounts();
    ~Accounts() override;

    /// Adds an account at the end, or replaces the one of its id; false without an id.
    bool putAccount(const KV::AccountEntry &account);
    bool putComposedAccount(const KV::AccountEntry &account);
    /// Accounts and composed accounts; what groups hold of it stays, and is shown again when the account comes back.
    bool removeAccount(const QString &id);

    /// Makes a group or gives it other accounts; false, and nothing changed, for a name that is empty or holds a
    /// control character.
    bool putGroup(const QString &name, const QStringList &accountIds);
    bool removeGroup(const QString &name);
    /// To those who know the old name only, the group is gone. False when the new name is in use or not allowed.
    bool renameGroup(const QString &name, const QString &other);

    QVector<KV::AccountEntry> accounts(kdservice::EVxTraderType type) const override;
    QVector<KV::AccountEntry> composedAccounts(kdservice::EVxTraderType type) const override;
    QVector<KV::AccountGroup> groups(kdservice::EVxTraderType type) const override;

private:
    int groupPlace(const QString &name) const;
    void saveGroups() const;

    QVector<KV::AccountEntry> single;
    QVector<KV::AccountEntry> composed;
    QVector<KV::AccountGroup> made;
};

/// Makes accounts those of the user who is logged in, or nobody's (null). The ones before are destroyed.
REFHOST_API void setAccountData(std::unique_ptr<Accounts> accounts);

} // namespace refhost
