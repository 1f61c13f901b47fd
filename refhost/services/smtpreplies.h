#pragma once

#include <QtCore/QByteArray>

#include "net/cmailservice.h"
#include "services/mailsettings.h"

namespace refhost {

/// What a mail server says, and to what: so that a failure can be told in its own words. Keeps no more of the commands
/// than their names, since passwords are among them.
class SmtpReplies
{
public:
    void takeCommand(const QByteArray &line);
    void takeReply(const QByteArray &line);
    /// `code`: libcurl's of the transfer that has ended.
    net::MailResult result(int code, const MailSettings &settings) const;

private:
    enum class Stage
    {
        Greeting,
        StartTls,
        Login,
        Sender,
        Recipient,
        Content
    };
    QString refusal() const;
    QString failure(int code, const MailSettings &settings) const;
    int replyCode() const;
    QString words() const;

    Stage stage = Stage::Greeting;
    QString recipient; ///< the last one that was told
    QByteArray reply;  ///< the last one, all its lines
    bool replyEnded = true;
    bool isOver = false; ///< what is said at the parting is of no interest
};

} // namespace refhost
