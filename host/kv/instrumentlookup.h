#pragma once

#include <QtCore/QString>
#include <string>

#include "hostexport.h"

namespace KV {

/// What the host's data centre knows of an instrument, for texts in tables. Any thread.
struct InstrumentText
{
    QString name;           ///< empty when the code is unknown
    int priceDecimals = -1; ///< -1 when the code is unknown
};

/// Looks an instrument up by its full code ("600000.SH").
HOST_API InstrumentText getInstrumentText(const std::string &code);
/// The name that the trade service gives to an option contract; empty when the code is no option.
HOST_API QString getExOptName(const std::string &code);

} // namespace KV
