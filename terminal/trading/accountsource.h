#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>

#include "trading/accountbook.h"

namespace trading {

/// Which parts of accounts are different from what was told before.
struct AccountChanges
{
    std::set<std::pair<std::string, AccountBook::PositionKey>> positions; ///< by account; those that are gone too
    std::set<std::string> accounts;                                       ///< whose money is different
};

/// Accounts for one follower, who shows their positions and funds. One thread.
class AccountSource
{
public:
    virtual ~AccountSource();

    /// By account id. An account that has been told once stays.
    virtual const std::map<std::string, AccountBook> &books() const = 0;
    /// What is different since the call before; the first call tells everything.
    virtual AccountChanges takeChanges() = 0;
};

} // namespace trading
