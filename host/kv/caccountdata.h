#pragma once

#include <QtCore/QStringList>
#include <QtCore/QVector>

#include "hostexport.h"
#include "kdservice/evxtradertype.h"

namespace KV {

/// An account of the trade service, or several composed into one.
struct AccountEntry
{
    QString id;            ///< identifier, what orders go to
    QString title;         ///< what users read besides it; may be empty
    int traderTypes = 0;   ///< bits of kdservice::EVxTraderType: what it trades
    QStringList memberIds; ///< of a composed account: the accounts that it is made of
};

/// Accounts that the user has put together under a name.
struct AccountGroup
{
    QString name; ///< its identifier
    QStringList accountIds;
};

/// The accounts of the user who is logged in. Implemented by the host. Threading: GUI thread. Ownership: the host's;
/// it outlives every control. Answers are copies, in the order in which users want to read them.
class HOST_API CAccountData
{
public:
    CAccountData();
    virtual ~CAccountData();

    CAccountData(const CAccountData &) = delete;
    CAccountData &operator=(const CAccountData &) = delete;

    /// Those that trade what the trader type says; all of them for TraderNone.
    virtual QVector<AccountEntry> accounts(kdservice::EVxTraderType type) const = 0;
    virtual QVector<AccountEntry> composedAccounts(kdservice::EVxTraderType type) const = 0;
    /// Groups with at least one account of that type, and of each group those accounts only.
    virtual QVector<AccountGroup> groups(kdservice::EVxTraderType type) const = 0;
};

/// The account data of the user who is logged in; null before that.
HOST_API CAccountData *getAccountData();

} // namespace KV
