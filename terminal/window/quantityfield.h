#pragma once

#include <QtGlobal>

#include "window/stepfield.h"

namespace terminal {

/// The quantity of an order: typed, or stepped by lots.
class QuantityField : public StepField
{
    Q_OBJECT

public:
    explicit QuantityField(QWidget *parent = nullptr);
    ~QuantityField() override;

    void setLot(int lot);
    /// Absent empties it. Without the edited() signal.
    void setQuantity(qint64 quantity);
    /// Absent when it holds no number.
    qint64 quantity() const;

protected:
    void step(int steps) override;

private:
    int lotSize = 100;
};

} // namespace terminal
