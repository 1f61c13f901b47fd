#include "window/quantityfield.h"

#include "window/orderdraft.h"
#include "zb/clineedit.h"

namespace terminal {

using feed::absent;

QuantityField::QuantityField(QWidget *parent) : StepField(QStringLiteral("数量"), QStringLiteral("\\d{0,9}"), parent) {}

QuantityField::~QuantityField() = default;

void QuantityField::setLot(int lot)
{
    if (lot != lotSize) {
        const qint64 kept = quantity();
        lotSize = lot;
        setQuantity(kept);
    }
    edit()->setEmptyHintText(lot > 1 && !countsLots() ? QStringLiteral("每手 %1").arg(lot) : QString());
}

void QuantityField::setCountsLots(bool counts)
{
    const qint64 kept = quantity();
    inLots = counts;
    setQuantity(kept);
}

void QuantityField::setQuantity(qint64 quantity)
{
    if (quantity == absent<qint64>)
        return setText(QString());
    if (quantity % lotSize != 0)
        inLots = false;
    setText(QString::number(countsLots() ? quantity / lotSize : quantity));
}

qint64 QuantityField::quantity() const
{
    bool isNumber = false;
    const qint64 value = text().toLongLong(&isNumber);
    if (!isNumber)
        return absent<qint64>;
    return countsLots() ? value * lotSize : value;
}

void QuantityField::step(int steps)
{
    const qint64 from = quantity();
    setQuantity(steppedQuantity(from == absent<qint64> ? 0 : from, lotSize, steps));
}

} // namespace terminal
