#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <functional>
#include <memory>

#include "hostexport.h"

namespace net {

/// A mail with one file. It goes to the service's own recipient.
struct MailMessage
{
    QString subject;
    QString text;
    QStringList carbonCopies; ///< addresses
    QString attachmentPath;
    QString attachmentName; ///< as the receiver reads it
    /// Keeps the file in being: the service holds it for as long as it may read the file.
    std::shared_ptr<const void> attachmentOwner;
};

/// How a mail went.
struct MailResult
{
    bool sent = false;
    QString reason;      ///< in words for the user; empty when sent
    QString serverWords; ///< the server's own, where it gave any
};

/// Sends mail. Implemented by the host.
///
/// Threading: GUI thread; it does not wait for the network. Answers come on the GUI thread, always after send() has
/// returned. Ownership: the host's; callers cancel what is under way before they go.
class HOST_API CMailService
{
public:
    using Progress = std::function<void(qint64 sentBytes, qint64 totalBytes)>;
    using Done = std::function<void(const MailResult &result)>;

    CMailService();
    virtual ~CMailService();

    CMailService(const CMailService &) = delete;
    CMailService &operator=(const CMailService &) = delete;

    /// Why nothing can be sent at present, in words for the user; empty when it can.
    virtual QString problem() const = 0;
    /// The address that mail goes to.
    virtual QString recipient() const = 0;
    /// The largest file that a mail may carry, in bytes.
    virtual qint64 attachmentLimit() const = 0;

    /// Returns what cancel() takes. `done` is called once, unless the mail is cancelled before. Either function may be
    /// empty.
    virtual int send(const MailMessage &message, Progress progress, Done done) = 0;
    /// Neither function of that mail is called any more. It may have been sent all the same. An unknown id is ignored.
    virtual void cancel(int id) = 0;
};

/// Null in a host without mail.
HOST_API CMailService *getMailService();

} // namespace net
