#pragma once

#include <QtWidgets/QDialog>

#include "desk/desksettings.h"

class QDoubleSpinBox;
class QSpinBox;

namespace terminal {

/// Asks for the largest size and amount of one order.
class LimitsBox : public QDialog
{
    Q_OBJECT

public:
    LimitsBox(const DeskSettings &settings, QWidget *parent);

    /// The settings it began with, and the limits as they stand in it.
    DeskSettings settings() const;

private:
    DeskSettings before;
    QSpinBox *shares;
    QSpinBox *lots;
    QDoubleSpinBox *amount;
};

} // namespace terminal
