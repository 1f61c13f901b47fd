#include "services/accounts.h"

#include <QtCore/QMap>
#include <algorithm>

#include "kv/cuserconfig.h"

namespace refhost {

namespace {

const QString groupsPath = QStringLiteral("accounts/groups");
const QChar separator = QLatin1Char('\t');

Accounts *present = nullptr;

bool trades(const KV::AccountEntry &account, kdservice::EVxTraderType type)
{
    return type == kdservice::TraderNone || (account.traderTypes & type) != 0;
}

QVector<KV::AccountEntry> tradingOnly(const QVector<KV::AccountEntry> &accounts, kdservice::EVxTraderType type)
{
    QVector<KV::AccountEntry> some;
    std::copy_if(accounts.begin(), accounts.end(), std::back_inserter(some),
                 [type](const KV::AccountEntry &account) { return trades(account, type); });
    return some;
}

bool put(QVector<KV::AccountEntry> &accounts, const KV::AccountEntry &account)
{
    if (account.id.isEmpty())
        return false;
    const auto place = std::find_if(accounts.begin(), accounts.end(),
                                    [&account](const KV::AccountEntry &known) { return known.id == account.id; });
    if (place == accounts.end())
        accounts.push_back(account);
    else
        *place = account;
    return true;
}

bool isAllowed(const QString &name)
{
    return !name.isEmpty() &&
           std::none_of(name.begin(), name.end(), [](QChar c) { return c.category() == QChar::Other_Control; });
}

void tell(const QMap<QString, bool> &groups)
{
    if (KV::CUserConfig *config = KV::getUserConfig())
        Q_EMIT config->sigAccountGroupChanged(groups);
}

} // namespace

Accounts::Accounts()
{
    const KV::CUserConfig *config = KV::getUserConfig();
    const QStringList lines = config == nullptr ? QStringList() : config->value(groupsPath).toStringList();
    for (const QString &line : lines) {
        QStringList words = line.split(separator);
        const QString name = words.takeFirst();
        if (isAllowed(name) && groupPlace(name) < 0)
            made.push_back({name, words});
    }
}

Accounts::~Accounts()
{
    if (present == this)
        present = nullptr;
}

bool Accounts::putAccount(const KV::AccountEntry &account)
{
    return put(single, account);
}

bool Accounts::putComposedAccount(const KV::AccountEntry &account)
{
    return put(composed, account);
}

bool Accounts::removeAccount(const QString &id)
{
    const int before = single.size() + composed.size();
    const auto isIt = [&id](const KV::AccountEntry &account) { return account.id == id; };
    single.erase(std::remove_if(single.begin(), single.end(), isIt), single.end());
    composed.erase(std::remove_if(composed.begin(), composed.end(), isIt), composed.end());
    return single.size() + composed.size() < before;
}

int Accounts::groupPlace(const QString &name) const
{
    const auto found =
        std::find_if(made.begin(), made.end(), [&name](const KV::AccountGroup &group) { return group.name == name; });
    return found == made.end() ? -1 : static_cast<int>(found - made.begin());
}

bool Accounts::putGroup(const QString &name, const QStringList &accountIds)
{
    if (!isAllowed(name) || !std::all_of(accountIds.begin(), accountIds.end(), isAllowed))
        return false;
    if (const int place = groupPlace(name); place < 0)
        made.push_back({name, accountIds});
    else
        made[place].accountIds = accountIds;
    saveGroups();
    tell({{name, false}});
    return true;
}

bool Accounts::removeGroup(const QString &name)
{
    const int place = groupPlace(name);
    if (place < 0)
        return false;
    made.remove(place);
    saveGroups();
    tell({{name, true}});
    return true;
}

bool Accounts::renameGroup(const QString &name, const QString &other)
{
    const int place = groupPlace(name);
    if (place < 0 || !isAllowed(other) || groupPlace(other) >= 0)
        return false;
    made[place].name = other;
    saveGroups();
    tell({{name, true}, {other, false}});
    return true;
}

void Accounts::saveGroups() const
{
    QStringList lines;
    for (const KV::AccountGroup &group : made)
        lines << (QStringList(group.name) + group.accountIds).join(separator);
    if (KV::CUserConfig *config = KV::getUserConfig())
        config->setValue(groupsPath, lines);
}

QVector<KV::AccountEntry> Accounts::accounts(kdservice::EVxTraderType type) const
{
    return tradingOnly(single, type);
}

QVector<KV::AccountEntry> Accounts::composedAccounts(kdservice::EVxTraderType type) const
{
    return tradingOnly(composed, type);
}

QVector<KV::AccountGroup> Accounts::groups(kdservice::EVxTraderType type) const
{
    QStringList ids;
    for (const KV::AccountEntry &account : accounts(type))
        ids << account.id;
    QVector<KV::AccountGroup> some;
    for (const KV::AccountGroup &group : made) {
        KV::AccountGroup part{group.name, {}};
        for (const QString &id : group.accountIds)
            if (ids.contains(id))
                part.accountIds << id;
        if (!part.accountIds.isEmpty())
            some.push_back(part);
    }
    return some;
}

void setAccountData(std::unique_ptr<Accounts> accounts)
{
    static std::unique_ptr<Accounts> owned;
    present = accounts.get();
    owned = std::move(accounts);
}

} // namespace refhost

namespace KV {

CAccountData::CAccountData() = default;
CAccountData::~CAccountData() = default;

CAccountData *getAccountData()
{
    return refhost::present;
}

} // namespace KV
