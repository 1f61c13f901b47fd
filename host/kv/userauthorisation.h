#pragma once

#include <QtCore/QDate>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include "hostexport.h"

namespace KV {

/// What the user who is logged in may do, and for how long.
struct UserAuthorisation
{
    QString user;             ///< empty when nobody is logged in
    QString organisation;     ///< whom the user belongs to; may be empty
    QStringList accountKinds; ///< kinds of accounts that the user may trade, as users read them
    bool hasNoEnd = false;    ///< then validUntil means nothing
    QDate validUntil;         ///< the last day; an invalid date when nobody knows
};

/// Told by the host. GUI thread.
HOST_API UserAuthorisation getUserAuthorisation();

} // namespace KV
