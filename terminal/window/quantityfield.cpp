#include "window/quantityfield.h"

#include "window/orderdraft.h"
#include "zb/clineedit.h"

namespace terminal {

using feed::absent;

QuantityField::QuantityField(QWidget *parent) : StepField(QStringLiteral("数量"), QStringLiteral("\\d{0,9}"), parent) {}

QuantityField::~QuantityField() = default;

void QuantityField::setLot(int lot)
{
    lotSize = lot;
    edit()->setEmptyHintText(lot > 1 ? QStringLiteral("每手 %1").arg(lot) : QString());
}

void QuantityField::setQuantity(qint64 quantity)
{
    setText(quantity == absent<qint64> ? QString() : QString::number(quantity));
}

qint64 QuantityField::quantity() const
{
    bool isNumber = false;
    const qint64 value = text().toLongLong(&isNumber);
    return isNumber ? value : absent<qint64>;
}

void QuantityField::step(int steps)
{
    const qint64 from = quantity();
    setQuantity(steppedQuantity(from == absent<qint64> ? 0 : from, lotSize, steps));
}

} // namespace terminal
