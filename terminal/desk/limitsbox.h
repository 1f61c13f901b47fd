#pragma once

#include "desk/desksettings.h"
#include "desk/settingsbox.h"

namespace terminal {

/// Asks for the largest size and amount of one order.
class LimitsBox : public SettingsBox
{
    Q_OBJECT

public:
    LimitsBox(const DeskSettings &settings, QWidget *parent);
    ~LimitsBox() override;

    /// The settings it began with, and the limits as they stand in it.
    DeskSettings settings() const;

private:
    const DeskSettings before;
    QSpinBox *shares;
    QSpinBox *lots;
    QDoubleSpinBox *amount;
};

} // namespace terminal
