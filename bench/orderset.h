#pragma once

#include <boost/shared_ptr.hpp>
#include <random>
#include <vector>

#include "records/record.h"

namespace bench {

using OrderPtr = boost::shared_ptr<refhost::OrderRecord>;

/// Record type of the benchmarks: the user's own orders with 20 columns, three of which have statistics.
int orderMetaId();

/// `count` orders of 500 instruments with prices, quantities and states like those of a trading day; the same for the
/// same seed.
std::vector<OrderPtr> makeOrders(int count, unsigned seed);
/// One more order, with the key number `number`.
OrderPtr makeOrder(int number, std::mt19937 &random);
/// A new record under the same key with another price (the column that the benchmarks sort by).
OrderPtr withOtherPrice(const OrderPtr &order, std::mt19937 &random);
/// A new record under the same key with another filled quantity.
OrderPtr withOtherFill(const OrderPtr &order, std::mt19937 &random);
/// The same after a deal at another price: seven fields are others for the most part.
OrderPtr withOtherDeal(const OrderPtr &order, std::mt19937 &random);

} // namespace bench
