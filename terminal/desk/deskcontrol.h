#pragma once

#include <QtCore/QObject>
#include <functional>
#include <memory>

#include "desk/desksettings.h"
#include "desk/desksounds.h"
#include "desk/orderguard.h"
#include "desk/ownorderspanel.h"
#include "desk/ticketorders.h"

namespace terminal {

class DeskCommands;
class FundsPanel;
class HistoryPanel;
class OwnDealsPanel;
class OwnPositionsPanel;
class TicketForm;
class TradeDesk;
class TradePage;

/// What the user does on the desk: puts the desk's panels on the trade page, and joins them, the ticket, the ladder and
/// the keys to the desk. GUI thread.
///
/// Keys on the page: F7 and F8 withdraw all buys or all sells, F9 everything, F10 re-prices the current order, F12
/// closes all positions. A double-click on an order withdraws it; on a position it fills the ticket.
class DeskControl : public QObject
{
    Q_OBJECT

public:
    /// To be made before the desk begins and the pump starts. All of them outlive it; it belongs to the page.
    DeskControl(TradeDesk &desk, FeedPump &pump, TradePage &page, TicketForm &ticket);
    ~DeskControl() override;

    /// The file that past days are read from.
    void openHistory(const QString &path);
    /// Nothing is kept. why: what is wrong with the file that was named; empty when the user has named none.
    void setUnsaved(const QString &why);

    OwnOrdersPanel &orders() const { return *ordersPanel; }
    OwnDealsPanel &deals() const { return *dealsPanel; }
    OwnPositionsPanel &positions() const { return *positionsPanel; }
    FundsPanel &funds() const { return *fundsPanel; }
    HistoryPanel &orderHistory() const { return *orderHistoryPanel; }

    const DeskSettings &settings() const { return present; }
    void setSettings(const DeskSettings &settings);
    /// Makes the sound of a fill (true), or of an order that was rejected or not even sent.
    void setSound(std::function<void(bool isFill)> sound) { makeSound = std::move(sound); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addPanels(TradePage &page);
    void addKeys(TradePage &page);
    void joinDesk();
    void joinPage();
    QString send(const OrderDraft &draft);
    QString refuse(const QString &text);
    void makeSoundIfWanted(bool isFill);
    void tradePosition(const QString &account, const QString &code, trading::PositionSide side);
    void openSettings();
    template <typename Box>
    void openBox();
    void endDay();
    void refreshLadder();

    TradeDesk &desk;
    FeedPump &pump;
    TradePage &page;
    TicketForm &ticket;
    OrderGuard guard;
    DeskSettings present;
    DeskSounds sounds;
    OwnOrdersPanel *ordersPanel;
    OwnDealsPanel *dealsPanel;
    OwnPositionsPanel *positionsPanel;
    FundsPanel *fundsPanel;
    HistoryPanel *orderHistoryPanel;
    HistoryPanel *dealHistoryPanel;
    std::unique_ptr<DeskCommands> commands;
    std::function<void(bool)> makeSound;
};

} // namespace terminal
