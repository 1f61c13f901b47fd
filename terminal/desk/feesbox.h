#pragma once

#include "desk/desksettings.h"
#include "desk/settingsbox.h"

namespace terminal {

/// Asks for what the paper broker charges.
class FeesBox : public SettingsBox
{
    Q_OBJECT

public:
    FeesBox(const DeskSettings &settings, QWidget *parent);
    ~FeesBox() override;

    /// The settings it began with, and the fees as they stand in it.
    DeskSettings settings() const;

private:
    const DeskSettings before;
    QDoubleSpinBox *commission;
    QDoubleSpinBox *leastCommission;
    QDoubleSpinBox *stampDuty;
    QDoubleSpinBox *transferFee;
    QDoubleSpinBox *futuresFactor;
    QDoubleSpinBox *extraMargin;
};

} // namespace terminal
