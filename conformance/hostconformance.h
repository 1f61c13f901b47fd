#pragma once

#include <QtCore/QString>
#include <boost/shared_ptr.hpp>
#include <string>
#include <vector>

#include "kdservice/evxtradertype.h"

namespace kdservice {
class IData;
}

/// Checks that a host keeps what the contract's headers promise. A program links this library together with the host
/// that it wants to check, makes a QApplication (off screen will do), calls checkHost() and reads the findings, from a
/// test framework of its choice or from a main() of three lines.
namespace conformance {

/// One promise that is not kept.
struct Finding
{
    QString subject; ///< what was asked: "ZB::formatIntNumber", "clr_table_background", a record's key
    QString what;    ///< what came, and what should have come
};
using Findings = std::vector<Finding>;

/// What only the host's own author can hand in.
struct HostSample
{
    /// Records of the kinds that the program shows, two or more of each kind, with distinct keys. They are read, never
    /// written.
    std::vector<boost::shared_ptr<kdservice::IData>> records;
    /// The trader types whose columns are looked at.
    std::vector<kdservice::EVxTraderType> traderTypes;
    /// Keys that the program's themes need besides those of the library ("clr_", "fnt_", "siz_", "img_").
    std::vector<std::string> extraKeys;
};

/// All of the checks below. GUI thread; makes widgets that are never shown; takes well under a second. An empty list
/// means that nothing was found, not that there is nothing.
Findings checkHost(const HostSample &sample);

/// Host events: the order of the trip, its arguments, where it ends, a sender that dies on the way, and event 17 of the
/// scroll bar.
Findings checkEvents();
/// Every resource key that the controls and the framework ask for: nothing is null, and no colour or image looks like
/// the fallback that stands for a missing key. (A missing font or size cannot be told from one that is there; the
/// host's own log names it.)
Findings checkResources(const std::vector<std::string> &extraKeys);
/// Number and time formatters, texts of the statistics, byte strings, colours of direction.
Findings checkTexts();
/// Records against their own description, kinds of access that find nothing, keys and their hashes; the defaults of
/// rows (qsKey, hashKey); columns of the catalogue for each trader type.
Findings checkRecords(const HostSample &sample);
/// Strands, loggers, the user's configuration (one value is written and taken back).
Findings checkServices();

} // namespace conformance
