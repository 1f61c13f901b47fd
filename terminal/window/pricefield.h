#pragma once

#include "window/orderdraft.h"
#include "window/stepfield.h"

namespace terminal {

/// The price of an order: typed, stepped by ticks within the day's limits, or one of the types that need no number.
class PriceField : public StepField
{
    Q_OBJECT

public:
    explicit PriceField(QWidget *parent = nullptr);
    ~PriceField() override;

    void setTerms(const TradeTerms &terms);
    /// Where stepping starts while the field is empty, which shows it then; absent: at the lower limit, else at the
    /// first tick.
    void setReferencePrice(double price);
    double referencePrice() const { return reference; }

    /// Absent empties it. Without the edited() signal, as the next.
    void setPrice(double price);
    /// Absent when it holds no number.
    double price() const;
    /// Shows the words of a type in place of a number, until the user types or steps. PriceLimit keeps the number.
    void setPriceType(KV::EPriceType type);
    KV::EPriceType priceType() const { return type; }

protected:
    void step(int steps) override;
    void typed() override;

private:
    QString priceText(double price) const;

    TradeTerms terms;
    double reference = feed::absent<double>;
    KV::EPriceType type = KV::PriceLimit;
};

} // namespace terminal
