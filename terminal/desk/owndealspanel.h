#pragma once

#include "desk/ownrecordspanel.h"

namespace terminal {

/// Own deals, with what they cost.
class OwnDealsPanel : public OwnRecordsPanel
{
    Q_OBJECT

public:
    explicit OwnDealsPanel(QWidget *parent = nullptr);
    ~OwnDealsPanel() override;
};

} // namespace terminal
