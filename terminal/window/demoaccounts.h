#pragma once

#include <memory>

namespace refhost {
class Accounts;
}

namespace terminal {

/// Accounts to practise with: of stocks, of credit and of futures, the last two composed into one; and a group of all,
/// unless the user has groups. The user's configuration has to be there.
std::unique_ptr<refhost::Accounts> demoAccounts();

} // namespace terminal
