#include "trade.h"

#include <limits>
#include <utility>

using kdservice::FieldDes;

namespace {

FieldDes field(int id, kdservice::EXT_DATA_TYPE type, const char *name, signed char decimals, unsigned int properties)
{
    FieldDes made;
    made.fieldId = id;
    made.dataType = type;
    made.precision = decimals;
    made.sequence = id;
    made.properties = properties;
    made.name = name;
    return made;
}

constexpr unsigned int property(int number)
{
    return 1u << number;
}

} // namespace

Trade::Trade(std::string tradeKey, std::string tradeCode, double tradePrice, qint64 tradeQuantity)
    : key(std::move(tradeKey)), code(std::move(tradeCode)), price(tradePrice), quantity(tradeQuantity)
{
}

const kdservice::IData::FieldMap &Trade::fields()
{
    // Descriptions live as long as the process: the library keeps pointers to them.
    static FieldDes codeField = field(Code, kdservice::ExtString, "code", 0, property(2) | property(8));
    static FieldDes priceField = field(Price, kdservice::ExtDouble, "price", 2, property(5) | property(6));
    static FieldDes quantityField = field(Quantity, kdservice::ExtLong, "quantity", 0, property(1) | property(6));
    static const FieldMap map{{Code, &codeField}, {Price, &priceField}, {Quantity, &quantityField}};
    return map;
}

int Trade::getInt(int) const
{
    return std::numeric_limits<int>::max();
}

qint64 Trade::getLong(int id) const
{
    return id == Quantity ? quantity : std::numeric_limits<qint64>::max();
}

double Trade::getDouble(int id) const
{
    return id == Price ? price : std::numeric_limits<double>::max();
}

std::string Trade::getString(int id) const
{
    return id == Code ? code : std::string();
}

bool Trade::getBool(int) const
{
    return false;
}

boost::shared_ptr<kdservice::IData> Trade::getIData(int) const
{
    return nullptr;
}

const FieldDes *Trade::getFieldDes(int id) const
{
    const auto found = fields().find(id);
    return found == fields().end() ? nullptr : found->second;
}

void Trade::setData(int, const int &) {}

void Trade::setData(int id, const qint64 &value)
{
    if (id == Quantity)
        quantity = value;
}

void Trade::setData(int id, const double &value)
{
    if (id == Price)
        price = value;
}

void Trade::setData(int, const bool &) {}

void Trade::setData(int id, const std::string &value)
{
    if (id == Code)
        code = value;
}
