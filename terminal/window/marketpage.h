#pragma once

#include "window/feedpump.h"
#include "window/page.h"
#include "zb/cuiresourcechangehandler.h"

class QSplitter;

namespace terminal {

class DealStreamPanel;
class OrderStreamPanel;

/// The market as it comes: order stream and deal stream, side by side or one above the other.
class MarketPage : public Page, public ZB::CUiResourceChangeHandler
{
    Q_OBJECT

public:
    explicit MarketPage(QWidget *parent = nullptr);
    ~MarketPage() override;

    OrderStreamPanel &orderStream() const { return *orders; }
    DealStreamPanel &dealStream() const { return *deals; }
    std::vector<Panel *> panels() const override;

    void takeOrders(const FeedPump::Records &records);
    void takeDeals(const FeedPump::Records &records);
    bool isSettled() override;
    void toggleLayout() override;
    void loadState() override;
    void saveState() const override;

    void themeChanged() override;

private:
    void arrange(Qt::Orientation orientation);

    QSplitter *splitter;
    OrderStreamPanel *orders;
    DealStreamPanel *deals;
};

} // namespace terminal
