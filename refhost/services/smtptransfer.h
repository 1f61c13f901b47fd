#pragma once

#include <atomic>
#include <functional>

#include "net/cmailservice.h"
#include "services/mailsettings.h"

namespace refhost {

/// Hands one mail to an SMTP server and waits until that is done: for a thread of its own. run() once; stop() from any
/// thread at any time. Nothing is sent twice.
class SmtpTransfer
{
public:
    SmtpTransfer(const MailSettings &settings, const net::MailMessage &message);
    ~SmtpTransfer();

    SmtpTransfer(const SmtpTransfer &) = delete;
    SmtpTransfer &operator=(const SmtpTransfer &) = delete;

    /// `progress` is called on the calling thread, with bytes of the mail.
    net::MailResult run(const net::CMailService::Progress &progress);
    void stop();

private:
    struct Session;
    struct Watch;
    net::MailResult transfer(Session &session);

    const MailSettings settings;
    const net::MailMessage message;
    void *const multi; ///< libcurl's
    std::atomic<bool> stopping{false};
};

} // namespace refhost
