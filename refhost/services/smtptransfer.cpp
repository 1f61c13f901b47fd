#include "services/smtptransfer.h"

#include <curl/curl.h>

#include <QtCore/QFile>
#include <QtCore/QUrl>
#include <QtCore/QUuid>
#include <mutex>

#include "services/mailtext.h"
#include "services/smtpreplies.h"

namespace refhost {

namespace {

constexpr int pollMs = 500;
constexpr int stoppingPollMs = 20;
constexpr int mostStoppingPolls = 50;

void *newMulti()
{
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
    return curl_multi_init();
}

QByteArray addressText(const QString &address)
{
    return '<' + address.toLatin1() + '>';
}

size_t readFile(char *buffer, size_t size, size_t count, void *file)
{
    const qint64 read = static_cast<QFile *>(file)->read(buffer, static_cast<qint64>(size * count));
    return read < 0 ? CURL_READFUNC_ABORT : static_cast<size_t>(read);
}

int seekFile(void *file, curl_off_t offset, int origin)
{
    const bool done = origin == SEEK_SET && static_cast<QFile *>(file)->seek(offset);
    return done ? CURL_SEEKFUNC_OK : CURL_SEEKFUNC_CANTSEEK;
}

int noteTalk(CURL *, curl_infotype kind, char *text, size_t size, void *replies)
{
    if (kind == CURLINFO_HEADER_IN)
        static_cast<SmtpReplies *>(replies)->takeReply(QByteArray(text, static_cast<int>(size)));
    else if (kind == CURLINFO_HEADER_OUT)
        static_cast<SmtpReplies *>(replies)->takeCommand(QByteArray(text, static_cast<int>(size)));
    return 0;
}

} // namespace

/// What libcurl needs for as long as the transfer goes on.
struct SmtpTransfer::Session
{
    Session() : easy(curl_easy_init()), mime(easy != nullptr ? curl_mime_init(easy) : nullptr) {}
    ~Session()
    {
        curl_easy_cleanup(easy);
        curl_mime_free(mime);
        curl_slist_free_all(headers);
        curl_slist_free_all(recipients);
    }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    template <typename Value>
    void set(CURLoption option, Value value)
    {
        curl_easy_setopt(easy, option, value);
    }
    void setText(CURLoption option, const QString &text) { set(option, text.toUtf8().constData()); }
    void setServer(const MailSettings &settings);
    void setTimes(int seconds);
    void setLogin(const MailSettings &settings);
    void setEnvelope(const MailSettings &settings, const net::MailMessage &message);
    void setHeaders(const MailSettings &settings, const net::MailMessage &message);
    void setBody(const net::MailMessage &message);

    CURL *const easy;
    curl_mime *const mime;
    curl_slist *headers = nullptr;
    curl_slist *recipients = nullptr;
    QFile attachment;
    SmtpReplies replies;
};

/// What libcurl asks again and again while it waits and transfers.
struct SmtpTransfer::Watch
{
    const net::CMailService::Progress &progress;
    const std::atomic<bool> &stopping;
    CURL *easy;

    /// A stopped transfer takes leave of the server, and does not wait long for an answer.
    static int goOn(void *watch, curl_off_t, curl_off_t, curl_off_t total, curl_off_t sent)
    {
        const auto *self = static_cast<const Watch *>(watch);
        if (self->stopping) {
            curl_easy_setopt(self->easy, CURLOPT_SERVER_RESPONSE_TIMEOUT, 1L);
            return 1;
        }
        self->progress(sent, total);
        return 0;
    }
};

void SmtpTransfer::Session::setServer(const MailSettings &settings)
{
    QUrl url;
    url.setScheme(settings.security == MailSettings::Security::Tls ? QStringLiteral("smtps") : QStringLiteral("smtp"));
    url.setHost(settings.server);
    url.setPort(settings.usedPort());
    setText(CURLOPT_URL, QString::fromLatin1(url.toEncoded()));
    setText(CURLOPT_PROXY, QString()); // what the environment says of web proxies does not lead to a mail server
    set(CURLOPT_USE_SSL,
        settings.security == MailSettings::Security::None ? long(CURLUSESSL_NONE) : long(CURLUSESSL_ALL));
    set(CURLOPT_SSLVERSION, long(CURL_SSLVERSION_TLSv1_2));
    if (!settings.caFile.isEmpty())
        set(CURLOPT_CAINFO, QFile::encodeName(settings.caFile).constData());
    set(CURLOPT_FORBID_REUSE, 1L); // the parting belongs to the transfer and its thread
    set(CURLOPT_NOSIGNAL, 1L);
#if LIBCURL_VERSION_NUM >= 0x075700
    set(CURLOPT_QUICK_EXIT, 1L); // a stopped transfer does not wait until the system has given up looking for a name
#endif
    set(CURLOPT_VERBOSE, 1L); // or the function is not called
    set(CURLOPT_DEBUGFUNCTION, noteTalk);
    set(CURLOPT_DEBUGDATA, &replies);
}

void SmtpTransfer::Session::setTimes(int seconds)
{
    set(CURLOPT_CONNECTTIMEOUT, long(seconds));
    set(CURLOPT_SERVER_RESPONSE_TIMEOUT, long(seconds));
    set(CURLOPT_LOW_SPEED_LIMIT, 1L);
    set(CURLOPT_LOW_SPEED_TIME, long(seconds));
}

void SmtpTransfer::Session::setLogin(const MailSettings &settings)
{
    if (settings.user.isEmpty())
        return;
    setText(CURLOPT_USERNAME, settings.user);
    setText(CURLOPT_PASSWORD, settings.password);
}

void SmtpTransfer::Session::setEnvelope(const MailSettings &settings, const net::MailMessage &message)
{
    set(CURLOPT_MAIL_FROM, addressText(settings.from).constData());
    recipients = curl_slist_append(recipients, addressText(settings.to).constData());
    for (const QString &copy : message.carbonCopies)
        recipients = curl_slist_append(recipients, addressText(copy).constData());
    set(CURLOPT_MAIL_RCPT, recipients);
}

void SmtpTransfer::Session::setHeaders(const MailSettings &settings, const net::MailMessage &message)
{
    const auto add = [this](const char *name, const QByteArray &value) {
        headers = curl_slist_append(headers, (QByteArray(name) + ": " + value).constData());
    };
    QByteArrayList copies;
    for (const QString &copy : message.carbonCopies)
        copies << copy.toLatin1();
    const QByteArray id = QUuid::createUuid().toByteArray(QUuid::WithoutBraces);
    add("Date", mailDate(QDateTime::currentDateTime()));
    add("From", settings.from.toLatin1());
    add("To", settings.to.toLatin1());
    if (!copies.isEmpty())
        add("Cc", copies.join(",\r\n "));
    add("Subject", headerText(message.subject));
    add("Message-ID", '<' + id + settings.from.mid(settings.from.indexOf(QLatin1Char('@'))).toLatin1() + '>');
    set(CURLOPT_HTTPHEADER, headers);
}

void SmtpTransfer::Session::setBody(const net::MailMessage &message)
{
    const QByteArray text = message.text.toUtf8();
    curl_mimepart *part = curl_mime_addpart(mime);
    curl_mime_data(part, text.constData(), static_cast<size_t>(text.size()));
    curl_mime_type(part, "text/plain; charset=utf-8");
    curl_mime_encoder(part, "base64");
    part = curl_mime_addpart(mime);
    curl_mime_data_cb(part, attachment.size(), readFile, seekFile, nullptr, &attachment);
    curl_mime_type(part, "application/zip");
    curl_mime_filename(part, message.attachmentName.toUtf8().constData());
    curl_mime_encoder(part, "base64");
    set(CURLOPT_MIMEPOST, mime);
}

SmtpTransfer::SmtpTransfer(const MailSettings &given, const net::MailMessage &mail)
    : settings(given), message(mail), multi(newMulti())
{
}

SmtpTransfer::~SmtpTransfer()
{
    curl_multi_cleanup(multi);
}

void SmtpTransfer::stop()
{
    stopping = true;
    curl_multi_wakeup(multi);
}

net::MailResult SmtpTransfer::run(const net::CMailService::Progress &progress)
{
    Session session;
    session.attachment.setFileName(message.attachmentPath);
    if (!session.attachment.open(QIODevice::ReadOnly))
        return {false, QStringLiteral("无法读取附件：%1").arg(session.attachment.errorString()), {}};
    if (session.attachment.size() > settings.attachmentLimit)
        return {false, QStringLiteral("附件超过 %1 MB").arg(settings.attachmentLimit >> 20), {}};
    if (multi == nullptr || session.mime == nullptr)
        return {false, QStringLiteral("内存不足，无法发送邮件"), {}};
    for (const QString &copy : message.carbonCopies)
        if (!isMailAddress(copy))
            return {false, QStringLiteral("抄送地址 %1 不正确").arg(copy), {}};
    session.setServer(settings);
    session.setTimes(settings.timeoutSeconds);
    session.setLogin(settings);
    session.setEnvelope(settings, message);
    session.setHeaders(settings, message);
    session.setBody(message);
    Watch watch{progress, stopping, session.easy};
    session.set(CURLOPT_NOPROGRESS, 0L);
    session.set(CURLOPT_XFERINFOFUNCTION, &Watch::goOn);
    session.set(CURLOPT_XFERINFODATA, &watch);
    return transfer(session);
}

/// A stopped transfer is not taken out of libcurl's hands before it has ended with an error: libcurl would end the mail
/// where it is, and the server would take it for a whole one.
net::MailResult SmtpTransfer::transfer(Session &session)
{
    curl_multi_add_handle(multi, session.easy);
    int running = 1;
    for (int stoppingPolls = 0; stoppingPolls < mostStoppingPolls; stoppingPolls += stopping ? 1 : 0) {
        if (curl_multi_perform(multi, &running) != CURLM_OK || running == 0)
            break;
        curl_multi_poll(multi, nullptr, 0, stopping ? stoppingPollMs : pollMs, nullptr);
    }
    CURLcode code = CURLE_ABORTED_BY_CALLBACK;
    int left = 0;
    if (const CURLMsg *last = curl_multi_info_read(multi, &left); last != nullptr && last->msg == CURLMSG_DONE)
        code = last->data.result;
    curl_multi_remove_handle(multi, session.easy);
    return session.replies.result(code, settings);
}

} // namespace refhost
