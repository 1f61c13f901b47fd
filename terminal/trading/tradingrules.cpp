#include "trading/tradingrules.h"

#include <algorithm>

namespace trading {

namespace {

bool startsWith(const std::string &text, const char *start)
{
    return text.rfind(start, 0) == 0;
}

Charges stockCharges(const StockFees &fees, feed::InstrumentKind kind, feed::Side side, const Filled &filled)
{
    Charges charges;
    if (filled.quantity == 0)
        return charges;
    charges.commission = std::max(fees.leastCommission, shareInCents(filled.amount, fees.commission));
    if (kind != feed::InstrumentKind::Stock)
        return charges; // funds and bonds pay neither duty nor transfer
    if (side == feed::Side::Sell)
        charges.stampDuty = shareInCents(filled.amount, fees.stampDuty);
    charges.transferFee = shareInCents(filled.amount, fees.transferFee);
    return charges;
}

Charges futureCharges(const FutureTerms &terms, Offset offset, const Filled &filled)
{
    Charges charges;
    if (offset == Offset::Open) {
        charges.commission = shareInCents(filled.amount, terms.open) + filled.quantity * terms.openPerLot;
        return charges;
    }
    charges.commission = shareInCents(filled.amount - filled.todayAmount, terms.close) +
                         (filled.quantity - filled.todayQuantity) * terms.closePerLot +
                         shareInCents(filled.todayAmount, terms.closeToday) +
                         filled.todayQuantity * terms.closeTodayPerLot;
    return charges;
}

} // namespace

std::vector<FutureTerms> TradingRules::defaultFutures()
{
    std::vector<FutureTerms> terms;
    for (const char *product : {"IF", "IH", "IC"}) {
        FutureTerms index;
        index.product = product;
        index.open = 2'300;
        index.close = 2'300;
        index.closeToday = 23'000;
        index.largestOrder = 20;
        terms.push_back(index);
    }
    FutureTerms apple;
    apple.product = "AP";
    apple.open = apple.close = apple.closeToday = 0;
    apple.openPerLot = apple.closePerLot = 5 * yuan;
    apple.closeTodayPerLot = 20 * yuan;
    apple.margin = 10'000'000;
    terms.push_back(apple);
    terms.emplace_back();
    return terms;
}

const FutureTerms &TradingRules::futureTerms(const std::string &code) const
{
    static const FutureTerms usual;
    const std::string product = productOf(code);
    const auto found = std::find_if(futures.begin(), futures.end(), [&](const FutureTerms &terms) {
        return terms.product.empty() || terms.product == product;
    });
    return found == futures.end() ? usual : *found;
}

Charges TradingRules::charges(const feed::Instrument &instrument, feed::Side side, Offset offset,
                              const Filled &filled) const
{
    return instrument.kind == feed::InstrumentKind::Future ? futureCharges(futureTerms(instrument.code), offset, filled)
                                                           : stockCharges(stocks, instrument.kind, side, filled);
}

Money TradingRules::margin(const std::string &code, Money value) const
{
    return shareInCents(value, futureTerms(code).margin);
}

std::string productOf(const std::string &code)
{
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    return {code.begin(), std::find_if_not(code.begin(), code.end(), isLetter)};
}

QuantityRules QuantityRules::of(const feed::Instrument &instrument, const TradingRules &rules)
{
    QuantityRules quantities;
    quantities.step = std::max(1, instrument.lot);
    quantities.least = quantities.step;
    quantities.most = 1'000'000;
    if (instrument.kind == feed::InstrumentKind::Future)
        quantities.most = rules.futureTerms(instrument.code).largestOrder;
    else if (instrument.exchange == "SH" && startsWith(instrument.code, "68"))
        quantities = {1, 200, 100'000};
    else if (instrument.exchange == "BJ")
        quantities = {1, 100, 1'000'000};
    else if (instrument.exchange == "SZ" && startsWith(instrument.code, "30"))
        quantities.most = 300'000;
    return quantities;
}

bool sellsOnSameDay(feed::InstrumentKind kind)
{
    return kind == feed::InstrumentKind::Bond || kind == feed::InstrumentKind::Future;
}

bool keepsDaysApart(const std::string &exchange)
{
    return exchange == "SHFE" || exchange == "INE";
}

} // namespace trading
