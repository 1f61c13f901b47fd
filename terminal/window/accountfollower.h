#pragma once

#include <QtCore/QBasicTimer>
#include <QtCore/QObject>

#include "trading/accountsource.h"

namespace terminal {

class FundsPanel;
class PositionsPanel;

/// Keeps a panel of funds and one of positions up to date with the accounts of a source: many times a second while one
/// of them is on the screen, and not at all while none is. Belongs to the panel of funds.
class AccountFollower : public QObject
{
    Q_OBJECT

public:
    /// The source outlives the panels.
    AccountFollower(trading::AccountSource &accounts, FundsPanel &fundsPanel, PositionsPanel &positionsPanel);
    ~AccountFollower() override;

    /// Hands on what has changed now.
    void follow();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    trading::AccountSource &source;
    FundsPanel &funds;
    PositionsPanel &positions;
    QBasicTimer step;
};

} // namespace terminal
