#pragma once

#include <boost/shared_ptr.hpp>
#include <string>

#include "kdservice/idata.h"
#include "refhostexport.h"

namespace refhost {

/// The instruments that the program knows, by full code ("600519.SH"): one record each (MetaInstrument), nested in all
/// orders, deals and positions of that instrument. What KV::getInstrumentText() answers with. Any thread.
class REFHOST_API Instruments
{
public:
    /// Adds a record under its code, or replaces the one there; false without a code.
    static bool put(const boost::shared_ptr<kdservice::IData> &instrument);
    /// Empty when unknown.
    static boost::shared_ptr<kdservice::IData> find(const std::string &code);
    /// The name of an option contract, for KV::getExOptName().
    static void putOptionName(const std::string &code, const std::string &name);
};

} // namespace refhost
