#pragma once

#include <QtCore/QString>
#include <vector>

#include "desk/desksettings.h"
#include "trading/desktypes.h"

class QWidget;

namespace terminal {

class FeedPump;
class TradeDesk;

/// What stands between a slip of the user and the market. GUI thread.
class OrderGuard
{
public:
    OrderGuard(const TradeDesk &desk, const FeedPump &pump);

    /// Why orders must not go out at all: what the desk would refuse, and the user's own limits. Empty for nothing.
    QString refusal(const std::vector<trading::OrderRequest> &requests, const DeskSettings &settings) const;
    /// The user's own limits alone. Empty for nothing.
    QString overLimit(const std::vector<trading::OrderRequest> &requests, const DeskSettings &settings) const;
    /// Why the user has to be asked although he wants no questions: the market is not heard. Empty for nothing.
    QString warning(const std::vector<trading::OrderRequest> &requests) const;
    /// The orders, a line each.
    QString summary(const std::vector<trading::OrderRequest> &requests) const;
    /// Asks over `page`, where the user wants to be asked, and in any case before orders go out on a market that is not
    /// heard, also when it falls silent while he thinks. Everything may have gone when it returns, `page` included.
    bool isWanted(const std::vector<trading::OrderRequest> &requests, const DeskSettings &settings, QWidget &page);
    /// Nothing that is done is kept, for this reason: the user is asked once whether he wants orders all the same.
    void setUnsaved(const QString &reason) { unsaved = reason; }

private:
    QString limitRefusal(const trading::OrderRequest &request, const DeskSettings &settings) const;

    const TradeDesk &desk;
    const FeedPump &pump;
    QString unsaved; ///< empty once the user has agreed
};

} // namespace terminal
