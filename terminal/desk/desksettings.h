#pragma once

#include <QtGlobal>

#include "desk/feesettings.h"

namespace terminal {

/// What guards the user against slips, what calls him, and what he pays. Kept in the user's configuration.
struct DeskSettings
{
    bool confirms = true;          ///< ask before an order goes out
    bool sounds = true;            ///< at fills and rejects
    qint64 mostShares = 1'000'000; ///< of one order
    qint64 mostLots = 100;
    double mostAmount = 5'000'000; ///< of one order, in yuan
    FeeSettings fees;

    /// Values of the configuration that are out of their bounds are left as they are here.
    static DeskSettings load();
    void save() const;
};

} // namespace terminal
