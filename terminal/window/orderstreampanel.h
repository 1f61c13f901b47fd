#pragma once

#include "window/tablepanel.h"

namespace terminal {

/// Every order of the market, with what became of it: the newest at the end.
class OrderStreamPanel : public TablePanel
{
    Q_OBJECT

public:
    explicit OrderStreamPanel(QWidget *parent = nullptr);
    ~OrderStreamPanel() override;
};

} // namespace terminal
