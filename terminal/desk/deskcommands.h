#pragma once

#include <optional>

#include "desk/desksettings.h"
#include "desk/orderguard.h"
#include "desk/ownorderspanel.h"

namespace terminal {

class TradeDesk;

/// What is done to orders and positions that there are: withdrawing, another price, closing. What came of it is said in
/// the title of the orders. GUI thread.
class DeskCommands
{
public:
    /// All of them outlive it; `page` is asked over, and owns whoever owns this.
    DeskCommands(TradeDesk &desk, const OrderGuard &guard, const DeskSettings &settings, OwnOrdersPanel &orders,
                 QWidget &page);

    void run(OwnOrdersPanel::Command command);
    void cancel(qint64 order);
    /// A level's button withdraws what stands at its price, the two large ones (level 0) a whole side.
    void cancelInLadder(int level, int side, const QString &code);

private:
    void cancelAll(const std::optional<feed::Side> &side);
    void repriceCurrent();
    void closeAll();

    TradeDesk &desk;
    const OrderGuard &guard;
    const DeskSettings &settings;
    OwnOrdersPanel &orders;
    QWidget &page;
};

} // namespace terminal
