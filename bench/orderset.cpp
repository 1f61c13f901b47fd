#include "orderset.h"

#include <algorithm>
#include <string>

#include "records/fieldids.h"
#include "records/typecatalogue.h"

namespace bench {

namespace {

constexpr int metaId = 990001;
constexpr int columnCount = 20;
constexpr int instrumentCount = 500;
constexpr qint64 openingTime = 1689039000000; // 2023-07-11 09:30 in UTC+8

bool isSummed(int field)
{
    return field == refhost::OrderQuantity || field == refhost::OrderFilled || field == refhost::OrderAmount;
}

bool isColumn(const refhost::FieldDef &def)
{
    return def.visibleFor != refhost::Nobody && def.visibleFor != refhost::DerivativeTraders;
}

/// The own orders' type, cut to the wanted number of columns and sums.
int registerType()
{
    refhost::TypeDef type = refhost::TypeCatalogue::instance().findType(refhost::MetaOwnOrder)->def();
    type.metaId = metaId;
    int columns = 0;
    for (refhost::FieldDef &def : type.fields) {
        if (def.type == kdservice::ExtData)
            columns += static_cast<int>(def.nestedColumns.size());
        else if (isColumn(def) && ++columns > columnCount)
            def.visibleFor = refhost::Nobody;
        if (!isSummed(def.id))
            def.properties &= ~static_cast<unsigned>(refhost::Sum);
    }
    refhost::TypeCatalogue::instance().registerType(type);
    return metaId;
}

std::string codeOf(int instrument)
{
    return std::to_string(600000 + instrument) + ".SH";
}

const std::vector<boost::shared_ptr<kdservice::IData>> &instruments()
{
    static const auto made = [] {
        std::vector<boost::shared_ptr<kdservice::IData>> list;
        for (int i = 0; i < instrumentCount; ++i) {
            const auto record = refhost::makePlain(refhost::MetaInstrument, codeOf(i));
            record->setData(refhost::InstrumentCode, codeOf(i));
            record->setData(refhost::InstrumentName, "样本" + std::to_string(i));
            record->setData(refhost::InstrumentPriceDecimals, 2);
            list.push_back(record);
        }
        return list;
    }();
    return made;
}

int draw(std::mt19937 &random, int low, int high)
{
    return std::uniform_int_distribution<int>(low, high)(random);
}

double drawPrice(std::mt19937 &random)
{
    return draw(random, 300, 99999) / 100.0;
}

void fill(refhost::OrderRecord &order, qint64 filled)
{
    const qint64 quantity = order.getLong(refhost::OrderQuantity);
    order.setData(refhost::OrderFilled, filled);
    order.setData(refhost::OrderUnfilled, quantity - filled);
    order.setData(refhost::OrderAmount, order.getDouble(refhost::OrderPrice) * static_cast<double>(filled));
}

} // namespace

int orderMetaId()
{
    static const int registered = registerType();
    return registered;
}

OrderPtr makeOrder(int number, std::mt19937 &random)
{
    const int instrument = draw(random, 0, instrumentCount - 1);
    const OrderPtr order = refhost::makeOrder(orderMetaId(), "20230711.1." + std::to_string(number));
    const qint64 time = openingTime + number * 14;
    order->setNested(refhost::OrderInstrument, instruments()[static_cast<std::size_t>(instrument)]);
    order->setData(refhost::OrderCode, codeOf(instrument));
    order->setData(refhost::OrderDirection, draw(random, 48, 49));
    order->setData(refhost::OrderPrice, drawPrice(random));
    order->setData(refhost::OrderQuantity, qint64(draw(random, 1, 500)) * 100);
    fill(*order, order->getLong(refhost::OrderQuantity) / draw(random, 1, 4));
    order->setData(refhost::OrderAveragePrice, order->getDouble(refhost::OrderPrice));
    order->setData(refhost::OrderCancelled, qint64(0));
    // One in ten has each status; the filter benchmark keeps one of them.
    order->setData(refhost::OrderStatus, 48 + draw(random, 0, 9));
    order->setData(refhost::OrderEntryTime, time);
    order->setData(refhost::OrderUpdateTime, time + draw(random, 0, 60000));
    order->setData(refhost::OrderAccount, "10000" + std::to_string(draw(random, 1, 5)));
    order->setData(refhost::OrderNumber, qint64(number));
    order->setData(refhost::OrderChannel, 1);
    order->setData(refhost::OrderContract, "C" + std::to_string(number));
    order->setData(refhost::OrderSequence, number);
    return order;
}

std::vector<OrderPtr> makeOrders(int count, unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<OrderPtr> orders;
    orders.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        orders.push_back(makeOrder(i, random));
    return orders;
}

OrderPtr withOtherPrice(const OrderPtr &order, std::mt19937 &random)
{
    const OrderPtr changed = refhost::copyOf(*order);
    changed->setData(refhost::OrderPrice, drawPrice(random));
    return changed;
}

OrderPtr withOtherFill(const OrderPtr &order, std::mt19937 &random)
{
    const OrderPtr changed = refhost::copyOf(*order);
    fill(*changed, draw(random, 0, static_cast<int>(order->getLong(refhost::OrderQuantity))));
    return changed;
}

OrderPtr withOtherDeal(const OrderPtr &order, std::mt19937 &random)
{
    const OrderPtr changed = withOtherFill(withOtherPrice(order, random), random);
    changed->setData(refhost::OrderAveragePrice, drawPrice(random));
    changed->setData(refhost::OrderStatus, 48 + draw(random, 0, 9));
    changed->setData(refhost::OrderUpdateTime, order->getLong(refhost::OrderUpdateTime) + draw(random, 0, 3600000));
    return changed;
}

} // namespace bench
