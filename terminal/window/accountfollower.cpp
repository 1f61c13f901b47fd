#include "window/accountfollower.h"

#include <QtCore/QEvent>

#include "window/fundspanel.h"
#include "window/positionspanel.h"

namespace terminal {

namespace {

constexpr int stepMs = 50;

} // namespace

AccountFollower::AccountFollower(trading::AccountSource &accounts, FundsPanel &fundsPanel,
                                 PositionsPanel &positionsPanel)
    : QObject(&fundsPanel), source(accounts), funds(fundsPanel), positions(positionsPanel)
{
    fundsPanel.installEventFilter(this);
    positionsPanel.installEventFilter(this);
    follow();
}

AccountFollower::~AccountFollower() = default;

void AccountFollower::follow()
{
    const trading::AccountChanges changes = source.takeChanges();
    positions.take(source, changes);
    funds.take(source, changes);
}

bool AccountFollower::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Show && !step.isActive()) {
        follow();
        step.start(stepMs, this);
    } else if (event->type() == QEvent::Hide && !funds.isVisible() && !positions.isVisible()) {
        step.stop();
    }
    return false;
}

void AccountFollower::timerEvent(QTimerEvent *)
{
    follow();
}

} // namespace terminal
