#include "pagerecords.h"

#include "kdservice/fielddes.h"
#include "records/fieldids.h"

namespace pagetest {

namespace {

kdservice::FieldDes *field(int meta, int id)
{
    const refhost::RecordType *type = refhost::TypeCatalogue::instance().findType(meta);
    return type->fields().at(id);
}

} // namespace

void fill(refhost::OrderRecord &order, const Values &values)
{
    order.setData(refhost::OrderChannel, values.channel);
    order.setData(refhost::OrderQuantity, values.quantity);
    order.setData(refhost::OrderPrice, values.price);
    order.setData(refhost::OrderCode, values.code);
    order.setData(refhost::OrderStatus, values.status);
    order.setData(refhost::OrderSequence, values.sequence);
}

boost::shared_ptr<refhost::OrderRecord> makeOrder(const std::string &key, const Values &values)
{
    const auto order = refhost::makeOrder(metaId, key);
    if (values.lot != noInt) {
        const auto instrument = refhost::makePlain(refhost::MetaInstrument, values.code);
        instrument->setData(refhost::InstrumentLot, values.lot);
        order->setNested(refhost::OrderInstrument, instrument);
    }
    fill(*order, values);
    return order;
}

void setColumns(KV::CHpfPageDataModel &model)
{
    const QMap<int, int> fieldOfColumn{{IntColumn, refhost::OrderChannel},  {LongColumn, refhost::OrderQuantity},
                                       {DoubleColumn, refhost::OrderPrice}, {TextColumn, refhost::OrderCode},
                                       {CharColumn, refhost::OrderStatus},  {NestedColumn, refhost::InstrumentLot}};
    QMap<int, kdservice::FieldDes *> descriptions;
    QMap<int, int> columnOfField;
    for (auto it = fieldOfColumn.cbegin(); it != fieldOfColumn.cend(); ++it) {
        const bool nested = it.value() == refhost::InstrumentLot;
        descriptions[it.key()] = field(nested ? int(refhost::MetaInstrument) : metaId, it.value());
        columnOfField[it.value()] = it.key();
    }
    model.setColumnFieldDesMap(descriptions);
    model.setFieldColumnIDMap(columnOfField);
}

std::string keysOf(const QList<boost::shared_ptr<KV::CHpfPageData>> &pages)
{
    std::string text;
    for (const auto &page : pages)
        text += (text.empty() ? "" : " ") + page->getIData()->getKey();
    return text;
}

} // namespace pagetest
