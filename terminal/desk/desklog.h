#pragma once

#include <QtCore/QString>

#include "trading/desktypes.h"

namespace terminal {

class ToldAccounts;

/// Writes what happens on a desk to the log of the program. GUI thread.
class DeskLog
{
public:
    explicit DeskLog(const ToldAccounts &accounts);

    static void say(const QString &text);
    static void sayError(const QString &text);
    /// Orders, deals, settlements and ended days, and the money of the accounts that they moved.
    void take(const trading::DeskChange &change) const;

private:
    static void take(const trading::PaperOrder &order);
    static void take(const trading::PaperDeal &deal);
    static void take(const trading::Settlement &settled);
    void takeFunds(const std::string &account) const;

    const ToldAccounts &accounts;
};

} // namespace terminal
