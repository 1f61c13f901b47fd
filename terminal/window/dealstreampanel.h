#pragma once

#include "window/tablepanel.h"

namespace terminal {

/// Every deal of the market: the newest at the end.
class DealStreamPanel : public TablePanel
{
    Q_OBJECT

public:
    explicit DealStreamPanel(QWidget *parent = nullptr);
    ~DealStreamPanel() override;
};

} // namespace terminal
