#include "services/instruments.h"

#include <limits>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>

#include "kv/instrumentlookup.h"
#include "records/fieldids.h"
#include "zb/numberformat.h"

namespace refhost {

namespace {

struct Known
{
    std::shared_mutex mutex; ///< guards everything below
    std::unordered_map<std::string, boost::shared_ptr<kdservice::IData>> instruments;
    std::unordered_map<std::string, QString> optionNames;
};

Known &known()
{
    static Known *made = new Known; // never destroyed: strands may ask to the end
    return *made;
}

} // namespace

bool Instruments::put(const boost::shared_ptr<kdservice::IData> &instrument)
{
    const std::string code = instrument == nullptr ? std::string() : instrument->getString(InstrumentCode);
    if (code.empty())
        return false;
    const std::unique_lock<std::shared_mutex> lock(known().mutex);
    known().instruments[code] = instrument;
    return true;
}

boost::shared_ptr<kdservice::IData> Instruments::find(const std::string &code)
{
    const std::shared_lock<std::shared_mutex> lock(known().mutex);
    const auto found = known().instruments.find(code);
    return found == known().instruments.end() ? boost::shared_ptr<kdservice::IData>() : found->second;
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

} // namespace KV
