#include "services/instruments.h"

#include <limits>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>

#include "kdservice/evxtradertype.h"
#include "kdservice/typemanager.h"
#include "kv/instrumentlist.h"
#include "kv/instrumentlookup.h"
#include "records/fieldids.h"
#include "zb/numberformat.h"

namespace refhost {

namespace {

struct Instrument
{
    boost::shared_ptr<kdservice::IData> record;
    KV::InstrumentItem item; ///< what the record said when it was put
};

struct Known
{
    std::shared_mutex mutex; ///< guards everything below
    std::unordered_map<std::string, Instrument> instruments;
    quint64 version = 0; ///< of the items
    std::unordered_map<std::string, QString> optionNames;
};

Known &known()
{
    static Known *made = new Known; // never destroyed: strands may ask to the end
    return *made;
}

int traderTypesOf(KV::EFilterFlag kind)
{
    using namespace kdservice;
    switch (kind) {
    case KV::FilterIndex:
        return 0;
    case KV::FilterFuture:
        return TraderFuture;
    case KV::FilterOption:
        return TraderFuture | TraderOption | TraderStockOption;
    default:
        return TraderStock | TraderCredit;
    }
}

KV::InstrumentItem itemOf(const kdservice::IData &record)
{
    KV::InstrumentItem item;
    item.code = ZB::sToQs(record.getString(InstrumentCode));
    item.name = ZB::sToQs(record.getString(InstrumentName));
    item.market = kdservice::TypeManager::instance()->getEnumItemName("exchange", record.getInt(InstrumentExchange),
                                                                      kdservice::TraderNone);
    const int kind = record.getInt(InstrumentKind);
    const bool isOneBit = kind > 0 && kind <= KV::FilterAll && (kind & (kind - 1)) == 0;
    item.kind = isOneBit ? static_cast<KV::EFilterFlag>(kind) : KV::FilterStock;
    item.traderTypes = traderTypesOf(item.kind);
    return item;
}

bool isSame(const KV::InstrumentItem &a, const KV::InstrumentItem &b)
{
    return a.code == b.code && a.name == b.name && a.market == b.market && a.kind == b.kind;
}

} // namespace

bool Instruments::put(const boost::shared_ptr<kdservice::IData> &instrument)
{
    const std::string code = instrument == nullptr ? std::string() : instrument->getString(InstrumentCode);
    if (code.empty())
        return false;
    KV::InstrumentItem item = itemOf(*instrument);
    const std::unique_lock<std::shared_mutex> lock(known().mutex);
    Instrument &place = known().instruments[code];
    if (!isSame(place.item, item))
        ++known().version;
    place = {instrument, std::move(item)};
    return true;
}

boost::shared_ptr<kdservice::IData> Instruments::find(const std::string &code)
{
    const std::shared_lock<std::shared_mutex> lock(known().mutex);
    const auto found = known().instruments.find(code);
    return found == known().instruments.end() ? boost::shared_ptr<kdservice::IData>() : found->second.record;
}

void Instruments::putOptionName(const std::string &code, const std::string &name)
{
    const std::unique_lock<std::shared_mutex> lock(known().mutex);
    known().optionNames[code] = ZB::sToQs(name);
}

} // namespace refhost

namespace KV {

InstrumentText getInstrumentText(const std::string &code)
{
    const boost::shared_ptr<kdservice::IData> record = refhost::Instruments::find(code);
    if (record == nullptr)
        return {};
    const int decimals = record->getInt(refhost::InstrumentPriceDecimals);
    return {ZB::sToQs(record->getString(refhost::InstrumentName)),
            decimals == std::numeric_limits<int>::max() ? -1 : decimals};
}

QString getExOptName(const std::string &code)
{
    const std::shared_lock<std::shared_mutex> lock(refhost::known().mutex);
    const auto found = refhost::known().optionNames.find(code);
    return found == refhost::known().optionNames.end() ? QString() : found->second;
}

std::vector<InstrumentItem> getInstrumentList()
{
    std::vector<InstrumentItem> items;
    const std::shared_lock<std::shared_mutex> lock(refhost::known().mutex);
    items.reserve(refhost::known().instruments.size());
    for (const auto &known : refhost::known().instruments)
        items.push_back(known.second.item);
    return items;
}

quint64 getInstrumentListVersion()
{
    const std::shared_lock<std::shared_mutex> lock(refhost::known().mutex);
    return refhost::known().version;
}

} // namespace KV
