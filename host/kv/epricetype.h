#pragma once

namespace KV {

/// How an order gets its price. The ladder offers those that need no number.
enum EPriceType : int
{
    PriceLimit = 0,
    PriceOpposite = 1, ///< 对手价: the best price of the other side
    PriceOwnBest = 2,  ///< 本方最优: the best price of the own side
    PriceBestFive = 3  ///< 最优五档: through the five best levels of the other side
};

} // namespace KV
