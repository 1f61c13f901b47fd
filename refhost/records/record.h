#pragma once

#include "records/dealrecord.h"
#include "records/fieldids.h"
#include "records/orderrecord.h"
#include "records/plainrecord.h"
#include "records/typecatalogue.h"

/// Making records. One allocation each: about 240 bytes for an order of the market. Fill a record with setData() and
/// setNested(), then hand it over as boost::shared_ptr<kdservice::IData>; it may be read on several threads from then
/// on. To change an order that tables already hold, copy it, change the copy and hand that in under the same key. Any
/// thread.
namespace refhost {

/// A record without values, of the class that its type asks for; empty for an unknown type.
REFHOST_API boost::shared_ptr<kdservice::IData> makeRecord(int metaId, const std::string &key);
REFHOST_API boost::shared_ptr<kdservice::IData> makeRecord(const RecordType &type, const std::string &key);

/// Empty unless the type is one of orders, of deals, of neither.
REFHOST_API boost::shared_ptr<OrderRecord> makeOrder(const RecordType &type, const std::string &key);
REFHOST_API boost::shared_ptr<DealRecord> makeDeal(const RecordType &type, const std::string &key);
REFHOST_API boost::shared_ptr<PlainRecord> makePlain(const RecordType &type, const std::string &key);

/// The same with the type looked up by its id; empty for an unknown id too.
REFHOST_API boost::shared_ptr<OrderRecord> makeOrder(int metaId, const std::string &key);
REFHOST_API boost::shared_ptr<DealRecord> makeDeal(int metaId, const std::string &key);
REFHOST_API boost::shared_ptr<PlainRecord> makePlain(int metaId, const std::string &key);

/// A new record with the same key and values; nested records are shared.
REFHOST_API boost::shared_ptr<OrderRecord> copyOf(const OrderRecord &record);
REFHOST_API boost::shared_ptr<DealRecord> copyOf(const DealRecord &record);
REFHOST_API boost::shared_ptr<PlainRecord> copyOf(const PlainRecord &record);

} // namespace refhost
