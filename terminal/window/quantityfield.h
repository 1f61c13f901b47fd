#pragma once

#include <QtGlobal>

#include "window/stepfield.h"

namespace terminal {

/// The quantity of an order: typed, or stepped by lots. What is typed and shown counts shares, or lots where the user
/// wants so; what goes in and out of this class always counts shares (of futures lots, whose lot is one).
class QuantityField : public StepField
{
    Q_OBJECT

public:
    explicit QuantityField(QWidget *parent = nullptr);
    ~QuantityField() override;

    void setLot(int lot);
    /// The quantity stays. A quantity that is no number of whole lots has it count shares again.
    void setCountsLots(bool counts);
    /// Where a lot is one, there is nothing to tell apart.
    bool countsLots() const { return inLots && lotSize > 1; }
    /// Absent empties it. Without the edited() signal.
    void setQuantity(qint64 quantity);
    /// Absent when it holds no number.
    qint64 quantity() const;

protected:
    void step(int steps) override;

private:
    int lotSize = 100;
    bool inLots = false;
};

} // namespace terminal
