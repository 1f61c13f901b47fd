#pragma once

#include <boost/shared_ptr.hpp>
#include <string>
#include <unordered_map>

#include "trading/desktypes.h"

namespace kdservice {
class IData;
}

namespace terminal {

/// Makes the records that tables show out of a desk's orders and deals. Keys are the numbers; a changed order gives a
/// new record under the key of the old one. Instruments of past days that the feed does not know get a record of their
/// own. One thread.
class DeskRecords
{
public:
    using Record = boost::shared_ptr<kdservice::IData>;

    DeskRecords();
    ~DeskRecords();

    Record orderRecord(const trading::PaperOrder &order);
    Record dealRecord(const trading::PaperDeal &deal);

    /// The number of an order or a deal by the key of its record; 0 for none.
    static qint64 numberOf(const std::string &key);

private:
    Record instrumentOf(const std::string &code, const std::string &name, const std::string &exchange);

    std::unordered_map<std::string, Record> ownInstruments;
};

} // namespace terminal
