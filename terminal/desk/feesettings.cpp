#include "desk/feesettings.h"

#include <cmath>

namespace terminal {

namespace {

trading::Rate rateOf(double tenThousandths)
{
    return std::llround(tenThousandths * double(trading::wholeRate / 10'000));
}

} // namespace

trading::TradingRules FeeSettings::rules() const
{
    trading::TradingRules rules;
    rules.stocks.commission = rateOf(commission);
    rules.stocks.leastCommission = std::llround(leastCommission * 100) * trading::cent;
    rules.stocks.stampDuty = rateOf(stampDuty);
    rules.stocks.transferFee = rateOf(transferFee);
    for (trading::FutureTerms &terms : rules.futures) {
        for (trading::Rate *rate : {&terms.open, &terms.close, &terms.closeToday})
            *rate = std::llround(double(*rate) * futuresFactor);
        for (trading::Money *fee : {&terms.openPerLot, &terms.closePerLot, &terms.closeTodayPerLot})
            *fee = std::llround(trading::yuanOf(*fee) * futuresFactor * 100) * trading::cent;
        terms.margin += rateOf(extraMargin * 100);
    }
    return rules;
}

} // namespace terminal
