#pragma once

namespace KV {

/// What has been selected in a choice of accounts.
enum ESelectedAccountType : int
{
    SelectedAccountGroup = 0,
    SelectedAccount = 1,
    SelectedComposedAccount = 2
};

} // namespace KV
