#pragma once

#include "kv/userauthorisation.h"
#include "uicontrolexport.h"

namespace KV {

enum class EValidity
{
    Valid,
    NearExpiry, ///< within 30 days, or nobody knows when
    Expired
};

/// How long an authorisation is good for, as users read it.
struct ValidityText
{
    EValidity state = EValidity::Valid;
    QString text;
};

UICONTROL_API ValidityText validityText(const UserAuthorisation &authorisation, const QDate &today);

} // namespace KV
