#pragma once

#include "window/panel.h"

namespace terminal {

class TicketForm;
class TradePage;

/// The panel of the order ticket.
class TicketPanel : public Panel
{
    Q_OBJECT

public:
    explicit TicketPanel(QWidget *parent = nullptr);
    ~TicketPanel() override;

    TicketForm &form() const { return *ticket; }

    /// Ticket and page are about one instrument from now on, whoever chooses it; clicks in the page's ladder fill the
    /// ticket, and what is double-clicked in its quotes is to be traded. The page has to outlive the panel.
    void follow(TradePage &page);

    QSize sizeHint() const override;
    void refresh() override;
    void themeChanged() override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void fixWidth();
    void takeLadderEvent(int event, int second, const QString &text);

    TicketForm *ticket;
    TradePage *page = nullptr;
};

} // namespace terminal
