#pragma once

#include "window/panel.h"

namespace terminal {

class TicketForm;

/// The panel of the order ticket.
class TicketPanel : public Panel
{
    Q_OBJECT

public:
    explicit TicketPanel(QWidget *parent = nullptr);
    ~TicketPanel() override;

    TicketForm &form() const { return *ticket; }

    void refresh() override;
    void themeChanged() override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void fixWidth();

    TicketForm *ticket;
};

} // namespace terminal
