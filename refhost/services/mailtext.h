#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QString>

#include "refhostexport.h"

namespace refhost {

/// Whether a text can stand for one address in an SMTP command: one @, ASCII, no blanks, brackets or control
/// characters.
REFHOST_API bool isMailAddress(const QString &text);

/// A header's text in ASCII: as it is where it is short and plain, else as encoded words (RFC 2047). Line breaks and
/// other control characters become blanks, so that no text can start a header of its own.
REFHOST_API QByteArray headerText(const QString &text);

/// "Sat, 21 Nov 2026 15:30:00 +0800" (RFC 5322), in English whatever the locale.
REFHOST_API QByteArray mailDate(const QDateTime &time);

} // namespace refhost
