#pragma once

#include <array>
#include <random>

#include "trading_support.h"

namespace tradingtest {

/// A market that walks at random through trading days, and a trader who sends whatever comes to mind.
class RandomTrading
{
public:
    static constexpr int stockCount = 2;

    explicit RandomTrading(unsigned seed) : numbers(seed)
    {
        instruments = {stock(0, "600001.SH"), stock(1, "300002.SZ", 25), future(2, "rb2410"), future(3, "IF2404")};
        prices = {1000, 2500, 3500, 18000}; // in ticks
    }

    int below(int bound) { return int(numbers() % unsigned(bound)); }
    double priceOf(int index, qint64 ticks) const { return double(ticks) * instruments[size_t(index)].tick; }

    /// The next quote of one of the instruments.
    feed::QuoteSnapshot nextQuote(qint64 time)
    {
        const int index = below(int(instruments.size()));
        qint64 &price = prices[size_t(index)];
        price += below(5) - 2;
        const auto quantity = [&] { return (1 + below(30)) * (index < stockCount ? 100 : 1); };
        feed::QuoteSnapshot result = quote(
            index, time, {{priceOf(index, price - 1), quantity()}, {priceOf(index, price - 2), quantity()}},
            {{priceOf(index, price), quantity()}, {priceOf(index, price + 1), quantity()}}, priceOf(index, price));
        if (index >= stockCount)
            result.previousSettlement = priceOf(index, settlements[size_t(index)]);
        return result;
    }
    feed::Deal nextDeal(qint64 time)
    {
        const int index = below(stockCount);
        const qint64 ticks = prices[size_t(index)] + below(3) - 2;
        return deal(index, time, priceOf(index, ticks), (1 + below(40)) * 50,
                    below(2) == 0 ? feed::DealKind::BuyerInitiated : feed::DealKind::SellerInitiated);
    }
    trading::OrderRequest nextRequest()
    {
        const int index = below(int(instruments.size()));
        const bool isStock = index < stockCount;
        trading::OrderRequest request;
        request.account = isStock ? "S1" : "F1";
        request.code = instruments[size_t(index)].code;
        request.side = below(2) == 0 ? feed::Side::Buy : feed::Side::Sell;
        constexpr trading::Offset offsets[] = {trading::Offset::Open, trading::Offset::Open, trading::Offset::Close,
                                               trading::Offset::CloseToday, trading::Offset::CloseYesterday};
        request.offset = offsets[below(5)];
        request.price = priceOf(index, prices[size_t(index)] + below(7) - 3);
        request.quantity = isStock ? (1 + below(20)) * 100 : 1 + below(3);
        if (below(20) == 0)
            request.quantity += below(2000) - 1000;
        return request;
    }
    /// The settlement prices that the exchange tells on the next day.
    void endDay()
    {
        for (size_t i = 0; i < prices.size(); ++i)
            settlements[i] = prices[i] + below(21) - 10;
    }

    std::vector<feed::Instrument> instruments;
    std::vector<qint64> prices;
    std::array<qint64, 4> settlements{1000, 2500, 3500, 18000};

private:
    std::mt19937 numbers;
};

} // namespace tradingtest
