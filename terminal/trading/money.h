#pragma once

#include <QtCore/QString>
#include <QtGlobal>
#include <optional>

namespace trading {

/// Money as whole ten-thousandths of a yuan: every price step of the exchanges times any quantity is exact in it.
using Money = qint64;
constexpr Money yuan = 10'000;
constexpr Money cent = yuan / 100;

/// A share of an amount as whole hundred-millionths: 100'000'000 is all of it, 50'000 is 0.05 %.
using Rate = qint64;
constexpr Rate wholeRate = 100'000'000;

/// What a quantity costs at a price in feed::priceUnits. Empty when it does not fit, or when a factor is below 0.
std::optional<Money> amountOf(qint64 priceUnits, qint64 quantity, int multiplier);
/// That share of an amount of at least 0, to the nearest cent, halves upwards.
Money shareInCents(Money amount, Rate rate);
/// `amount` x part / whole, rounded down, for an amount of at least 0 and 0 <= part <= whole < 2^61; exact also where
/// the product does not fit.
Money proportion(Money amount, qint64 part, qint64 whole);

double yuanOf(Money money);
/// With two decimals and no groups: "-1234.50".
QString moneyText(Money money);

} // namespace trading
