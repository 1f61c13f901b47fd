#pragma once

#include <QtCore/QString>

#include "refhostexport.h"

namespace KV {
class CUserConfig;
}

namespace refhost {

/// How mail is sent. Kept in the user's configuration under "mail/": server, port, security ("starttls", "tls" or
/// "none"), user, password, from, to, caFile, timeoutSeconds, attachmentLimitMB.
struct REFHOST_API MailSettings
{
    enum class Security
    {
        StartTls, ///< the connection starts plain and must become encrypted before anything is said
        Tls,      ///< encrypted from the first byte
        None      ///< for servers of the own house that ask for no login
    };
    QString server;
    int port = 0; ///< 0 for the usual one: 587, 465, 25
    Security security = Security::StartTls;
    QString user; ///< empty for no login
    QString password;
    QString from;
    QString to;
    QString caFile;          ///< certificates to trust instead of the system's; empty for the system's
    int timeoutSeconds = 30; ///< a server that says and takes nothing for so long is given up
    qint64 attachmentLimit = 20 << 20;

    static MailSettings read(const KV::CUserConfig *config);
    /// Why they are not enough to send mail, in words for the user; empty when they are.
    QString problem() const;
    int usedPort() const;
};

} // namespace refhost
