#pragma once

#include <boost/shared_ptr.hpp>
#include <limits>
#include <string>

#include "pagemodel/chpfpagedatamodel.h"
#include "records/record.h"

/// Small orders for the tests of the paged model: one column of every value type.
namespace pagetest {

constexpr int metaId = 16204; ///< the status modes apply to this type

/// Columns of the test model, by which `columnType` they have.
enum Column : int
{
    IntColumn = 0,     ///< OrderChannel
    LongColumn = 1,    ///< OrderQuantity
    DoubleColumn = 2,  ///< OrderPrice
    TextColumn = 3,    ///< OrderCode
    CharColumn = 4,    ///< OrderStatus
    NestedColumn = 70, ///< InstrumentLot, of the nested record; beyond the first 64 columns
    ColumnCount = 6
};

constexpr int noInt = std::numeric_limits<int>::max();
constexpr qint64 noLong = std::numeric_limits<qint64>::max();
constexpr double noDouble = std::numeric_limits<double>::max();

/// What a record holds, in plain form.
struct Values
{
    int channel = 1;
    qint64 quantity = 100;
    double price = 10;
    std::string code = "600000.SH";
    int status = '0';
    int lot = noInt; ///< noInt: without a nested record
    int sequence = 0;
};

boost::shared_ptr<refhost::OrderRecord> makeOrder(const std::string &key, const Values &values);
/// Changes a record in place.
void fill(refhost::OrderRecord &order, const Values &values);
/// Gives a model the columns above.
void setColumns(KV::CHpfPageDataModel &model);

/// Keys of records, blank between them.
std::string keysOf(const QList<boost::shared_ptr<KV::CHpfPageData>> &pages);

} // namespace pagetest
