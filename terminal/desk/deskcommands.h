#pragma once

#include <set>
#include <vector>

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
    DeskCommands(TradeDesk &desk, OrderGuard &guard, const DeskSettings &settings, OwnOrdersPanel &orders,
                 QWidget &page);

    void run(OwnOrdersPanel::Command command);
    void cancel(qint64 order);
    /// A level's mark withdraws what stands at the price that the user saw there, the two large buttons (level 0) a
    /// whole side.
    void cancelInLadder(int level, int side, const QString &code, double shownPrice);
    /// An order has ended, and that is stored: only then it is told as withdrawn.
    void orderEnded(qint64 order);

private:
    void withdraw(const std::vector<qint64> &numbers, const QString &nothing);
    void tellWithdrawn();
    void repriceCurrent();
    void closeAll();

    TradeDesk &desk;
    OrderGuard &guard;
    const DeskSettings &settings;
    OwnOrdersPanel &orders;
    QWidget &page;

    std::set<qint64> awaited; ///< being withdrawn
    std::vector<qint64> withdrawn;
    QString refusal; ///< of those that stay
};

} // namespace terminal
