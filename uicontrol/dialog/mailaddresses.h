#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include "uicontrolexport.h"

namespace KV {

/// What a text field with mail addresses holds.
struct MailAddresses
{
    QStringList addresses; ///< each once, as they were written
    QString wrong;         ///< the first part that is no address; empty when all are
};

/// Addresses are separated by commas, semicolons (Chinese ones too) or blanks.
UICONTROL_API MailAddresses readMailAddresses(const QString &text);

} // namespace KV
