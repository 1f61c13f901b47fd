#include "services/mailservice.h"

#include <QtCore/QElapsedTimer>
#include <thread>

#include "kv/cuserconfig.h"
#include "services/smtptransfer.h"
#include "threads/callqueue.h"

namespace refhost {

namespace {

constexpr qint64 progressMs = 50;

MailService *present = nullptr;

} // namespace

struct MailService::Job
{
    Job(const MailSettings &settings, const net::MailMessage &message, Progress ofProgress, Done ofDone)
        : transfer(settings, message), progress(std::move(ofProgress)), done(std::move(ofDone))
    {
    }
    ~Job()
    {
        transfer.stop();
        if (thread.joinable())
            thread.join();
    }
    Job(const Job &) = delete;
    Job &operator=(const Job &) = delete;

    SmtpTransfer transfer;
    Progress progress; ///< empty once cancelled
    Done done;
    std::thread thread;
};

MailService::MailService() : calls(std::make_unique<core::CallQueue>()) {}

MailService::~MailService()
{
    if (present == this)
        present = nullptr;
    jobs.clear();
}

QString MailService::problem() const
{
    return MailSettings::read(KV::getUserConfig()).problem();
}

QString MailService::recipient() const
{
    return MailSettings::read(KV::getUserConfig()).to;
}

qint64 MailService::attachmentLimit() const
{
    return MailSettings::read(KV::getUserConfig()).attachmentLimit;
}

int MailService::send(const net::MailMessage &message, Progress progress, Done done)
{
    const int id = ++lastId;
    const MailSettings settings = MailSettings::read(KV::getUserConfig());
    const auto &job =
        jobs.emplace(id, std::make_unique<Job>(settings, message, std::move(progress), std::move(done))).first->second;
    if (const QString reason = settings.problem(); !reason.isEmpty()) {
        calls->post([this, id, reason] { finish(id, {false, reason, {}}); });
        return id;
    }
    job->thread = std::thread([this, id, transfer = &job->transfer] {
        QElapsedTimer sinceTold;
        qint64 lastSent = 0;
        const net::MailResult result = transfer->run([&](qint64 sent, qint64 total) {
            const bool isNews = sent != lastSent;
            if (!isNews || (sent != total && sinceTold.isValid() && sinceTold.elapsed() < progressMs))
                return;
            lastSent = sent;
            sinceTold.start();
            calls->post([this, id, sent, total] { showProgress(id, sent, total); });
        });
        calls->post([this, id, result] { finish(id, result); });
    });
    return id;
}

void MailService::cancel(int id)
{
    const auto job = jobs.find(id);
    if (job == jobs.end())
        return;
    job->second->progress = nullptr;
    job->second->done = nullptr;
    job->second->transfer.stop();
}

void MailService::showProgress(int id, qint64 sent, qint64 total)
{
    const auto job = jobs.find(id);
    if (job == jobs.end() || !job->second->progress)
        return;
    const Progress progress = job->second->progress; // it may cancel, or send
    progress(sent, total);
}

void MailService::finish(int id, const net::MailResult &result)
{
    const auto job = jobs.find(id);
    const Done done = std::move(job->second->done);
    jobs.erase(job); // and the attachment with it, unless somebody else holds it
    if (done)
        done(result);
}

void setMailService(std::unique_ptr<MailService> service)
{
    static std::unique_ptr<MailService> owned;
    present = service.get();
    owned = std::move(service);
}

} // namespace refhost

namespace net {

CMailService::CMailService() = default;
CMailService::~CMailService() = default;

CMailService *getMailService()
{
    return refhost::present;
}

} // namespace net
