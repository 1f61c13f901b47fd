#include "trading/money.h"

#include "feed/instrumentrules.h"

#include <limits>

namespace trading {

namespace {

constexpr qint64 priceUnitsPerMoney = qint64(feed::priceUnitsPerOne) / yuan;

std::optional<qint64> product(qint64 a, qint64 b)
{
    if (a < 0 || b < 0 || (b > 0 && a > std::numeric_limits<qint64>::max() / b))
        return std::nullopt;
    return a * b;
}

} // namespace

std::optional<Money> amountOf(qint64 priceUnits, qint64 quantity, int multiplier)
{
    const auto units = product(quantity, multiplier);
    return units ? product(priceUnits / priceUnitsPerMoney, *units) : std::nullopt;
}

Money shareInCents(Money amount, Rate rate)
{
    constexpr qint64 wholeInCents = wholeRate * cent;
    const qint64 cents =
        amount / wholeInCents * rate + (amount % wholeInCents * rate + wholeInCents / 2) / wholeInCents;
    return cents * cent;
}

Money proportion(Money amount, qint64 part, qint64 whole)
{
    if (whole <= 0 || part <= 0)
        return 0;
    if (part >= whole)
        return amount;
    // amount = each * whole + rest. The first product is at most the amount; the second, whose factors are both below
    // `whole`, is divided as it is built up from the bits of `rest`, so that it never stands there whole.
    const Money each = amount / whole;
    const Money rest = amount % whole;
    qint64 quotient = 0;
    qint64 remainder = 0;
    for (int bit = 61; bit >= 0; --bit) {
        remainder = 2 * remainder + ((rest >> bit) & 1) * part;
        quotient = 2 * quotient + remainder / whole;
        remainder %= whole;
    }
    return each * part + quotient;
}

double yuanOf(Money money)
{
    return double(money) / double(yuan);
}

QString moneyText(Money money)
{
    const quint64 size = money < 0 ? 0 - quint64(money) : quint64(money);
    const quint64 cents = (size + cent / 2) / quint64(cent);
    const QString sign = money < 0 && cents > 0 ? QStringLiteral("-") : QString();
    return QStringLiteral("%1%2.%3").arg(sign).arg(cents / 100).arg(cents % 100, 2, 10, QLatin1Char('0'));
}

} // namespace trading
