#pragma once

#include <map>
#include <memory>

#include "net/cmailservice.h"
#include "refhostexport.h"

namespace core {
class CallQueue;
}

namespace refhost {

/// Sends mail by SMTP, with the settings (MailSettings) that the user's configuration has at the time. Each mail has a
/// thread of its own while it is under way. GUI thread.
class REFHOST_API MailService : public net::CMailService
{
public:
    MailService();
    /// Breaks off what is under way, and tells nobody.
    ~MailService() override;

    QString problem() const override;
    QString recipient() const override;
    qint64 attachmentLimit() const override;
    int send(const net::MailMessage &message, Progress progress, Done done) override;
    void cancel(int id) override;

private:
    struct Job;
    void showProgress(int id, qint64 sent, qint64 total);
    void finish(int id, const net::MailResult &result);

    std::unique_ptr<core::CallQueue> calls; ///< of the jobs' threads
    std::map<int, std::unique_ptr<Job>> jobs;
    int lastId = 0;
};

/// Makes a service that of the program, or nobody's (null). The one before is destroyed.
REFHOST_API void setMailService(std::unique_ptr<MailService> service);

} // namespace refhost
