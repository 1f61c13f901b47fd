#pragma once

#include <QtCore/QString>
#include <vector>

#include "hostexport.h"
#include "kv/efilterflag.h"

namespace KV {

/// An instrument as users look for it.
struct InstrumentItem
{
    QString code;                   ///< with exchange where codes need it: "600519.SH", "AP010"
    QString name;                   ///< empty when nobody told it
    QString market;                 ///< short text that tells two instruments of one code apart: "上交所"
    EFilterFlag kind = FilterStock; ///< one bit
    int traderTypes = 0;            ///< bits of kdservice::EVxTraderType that can trade it; 0 for an index
};

/// All instruments that the host knows, in no order, each code once. Any thread; costs a copy of the list.
HOST_API std::vector<InstrumentItem> getInstrumentList();
/// Grows with every change of that list, a name included. Any thread, cheap.
HOST_API quint64 getInstrumentListVersion();

} // namespace KV
