#include "window/pricefield.h"

#include "zb/clineedit.h"
#include "zb/numberformat.h"

namespace terminal {

namespace {

using feed::absent;

/// Digits and one point; the full stop of a Chinese input method is one too.
const QString pricePattern = QStringLiteral("\\d{0,9}([.。]\\d{0,6})?");

} // namespace

PriceField::PriceField(QWidget *parent) : StepField(QStringLiteral("价格"), pricePattern, parent) {}

PriceField::~PriceField() = default;

void PriceField::setTerms(const TradeTerms &newTerms)
{
    terms = newTerms;
}

void PriceField::setReferencePrice(double price)
{
    reference = price;
    edit()->setEmptyHintText(price == absent<double> ? QString() : QStringLiteral("最新 ") + priceText(price));
}

QString PriceField::priceText(double price) const
{
    return ZB::formatDoubleNumber(price, terms.priceDecimals, utils::FormatNoGroups, true, QString());
}

void PriceField::setPrice(double price)
{
    type = KV::PriceLimit;
    setText(price == absent<double> ? QString() : priceText(price));
}

double PriceField::price() const
{
    if (type != KV::PriceLimit)
        return absent<double>;
    bool isNumber = false;
    const double value = text().replace(QStringLiteral("。"), QStringLiteral(".")).toDouble(&isNumber);
    return isNumber ? value : absent<double>;
}

void PriceField::setPriceType(KV::EPriceType newType)
{
    if (newType == type)
        return;
    OrderDraft draft;
    draft.priceType = newType;
    setText(draft.priceText());
    type = newType;
}

void PriceField::step(int steps)
{
    const double from = price();
    if (from != absent<double>)
        setPrice(steppedPrice(from, terms, steps));
    else if (reference != absent<double>)
        setPrice(reference);
    else
        setPrice(terms.lowerLimit != absent<double> ? terms.lowerLimit : terms.tick);
}

/// What is typed into the words of a type takes their place.
void PriceField::typed()
{
    if (type == KV::PriceLimit)
        return;
    type = KV::PriceLimit;
    QString digits;
    for (const QChar character : text())
        if (character.isDigit() || character == QLatin1Char('.'))
            digits += character;
    edit()->setText(digits);
}

} // namespace terminal
