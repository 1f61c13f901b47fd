#pragma once

#include "trading/demonstrationaccounts.h"
#include "window/marketlistener.h"
#include "window/page.h"
#include "zb/cuiresourcechangehandler.h"

class QSplitter;

namespace terminal {

class AccountFollower;
class FundsPanel;
class PositionsPanel;

/// Funds and positions of the demonstration accounts, kept up to date by the market's deals and quotes.
class AccountPage : public Page, public MarketListener, public ZB::CUiResourceChangeHandler
{
    Q_OBJECT

public:
    explicit AccountPage(QWidget *parent = nullptr);
    ~AccountPage() override;

    FundsPanel &funds() const { return *fundsPanel; }
    PositionsPanel &positions() const { return *positionsPanel; }
    const trading::DemonstrationAccounts &accounts() const { return demonstration; }

    std::vector<Panel *> panels() const override;
    void showNow() override;
    void toggleLayout() override;
    void loadState() override;
    void saveState() const override;

    void takeInstrument(const feed::Instrument &instrument) override;
    void takeDeal(const feed::Deal &deal) override;
    void takeQuote(const feed::QuoteSnapshot &quote) override;

    void themeChanged() override;

private:
    trading::DemonstrationAccounts demonstration;
    QSplitter *splitter;
    FundsPanel *fundsPanel;
    PositionsPanel *positionsPanel;
    AccountFollower *follower;
};

} // namespace terminal
