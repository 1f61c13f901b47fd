#pragma once

#include "trading/accountbook.h"
#include "window/positionspanel.h"
#include "zb/ceventdeliverer.h"

namespace terminal {

/// Positions of the desk's accounts.
class OwnPositionsPanel : public PositionsPanel, public ZB::CEventDeliverer
{
    Q_OBJECT

public:
    explicit OwnPositionsPanel(QWidget *parent = nullptr);
    ~OwnPositionsPanel() override;

    bool handleEvent(int event, int first, int second, QString text, void *data) override;

Q_SIGNALS:
    /// A position was double-clicked.
    void activated(const QString &account, const QString &code, trading::PositionSide side);
};

} // namespace terminal
