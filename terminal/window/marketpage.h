#pragma once

#include <QtWidgets/QWidget>
#include <vector>

#include "window/feedpump.h"
#include "zb/cuiresourcechangehandler.h"

class QSplitter;

namespace terminal {

class DealStreamPanel;
class OrderStreamPanel;
class TablePanel;

/// The market as it comes: order stream and deal stream, side by side or one above the other.
class MarketPage : public QWidget, public ZB::CUiResourceChangeHandler
{
    Q_OBJECT

public:
    explicit MarketPage(QWidget *parent = nullptr);
    ~MarketPage() override;

    OrderStreamPanel &orderStream() const { return *orders; }
    DealStreamPanel &dealStream() const { return *deals; }
    std::vector<TablePanel *> tablePanels() const;

    void takeOrders(const FeedPump::Records &records);
    void takeDeals(const FeedPump::Records &records);
    /// Brings the titles up to date. Called a few times a second.
    void refresh();
    /// Shows everything taken so far now, instead of with the next frame.
    void showNow();

    void toggleLayout();
    /// Gives the keyboard to the panel behind the one that has it.
    void focusNextPanel();

    void loadState();
    void saveState() const;

    void themeChanged() override;

private:
    void arrange(Qt::Orientation orientation);

    QSplitter *splitter;
    OrderStreamPanel *orders;
    DealStreamPanel *deals;
};

} // namespace terminal
