#pragma once

#include <boost/shared_ptr.hpp>
#include <string>

namespace kdservice {
class IData;
}

namespace terminal {

/// A record of the same type and values under another key; nested records are shared. Empty when the type is unknown.
/// Any thread.
boost::shared_ptr<kdservice::IData> repeatedRecord(const kdservice::IData &record, const std::string &key);

} // namespace terminal
