#include "services/smtpreplies.h"

#include <curl/curl.h>

namespace refhost {

namespace {

constexpr int mostReplyBytes = 4096;
constexpr int firstRefusal = 400;
constexpr int codeLength = 3;
constexpr int tooBig = 552; ///< to the sender as well: the size is told with it

} // namespace

void SmtpReplies::takeCommand(const QByteArray &line)
{
    const QByteArray upper = line.left(10).toUpper();
    if (upper.startsWith("STARTTLS"))
        stage = Stage::StartTls;
    else if (upper.startsWith("AUTH "))
        stage = Stage::Login;
    else if (upper.startsWith("MAIL FROM:"))
        stage = Stage::Sender;
    else if (upper.startsWith("DATA"))
        stage = Stage::Content;
    else if (upper.startsWith("QUIT"))
        isOver = true;
    if (!upper.startsWith("RCPT TO:"))
        return;
    stage = Stage::Recipient;
    recipient = QString::fromUtf8(line.mid(line.indexOf(':') + 1)).remove(QLatin1Char('<')).remove(QLatin1Char('>'));
    recipient = recipient.trimmed();
}

void SmtpReplies::takeReply(const QByteArray &line)
{
    if (isOver)
        return;
    if (replyEnded)
        reply.clear();
    if (reply.size() < mostReplyBytes)
        reply += line.left(mostReplyBytes);
    replyEnded = line.size() <= codeLength || line[codeLength] != '-';
}

int SmtpReplies::replyCode() const
{
    return reply.left(codeLength).toInt();
}

/// The server's last reply on one line, without what could disturb a text field.
QString SmtpReplies::words() const
{
    return QString::fromUtf8(reply).simplified();
}

net::MailResult SmtpReplies::result(int code, const MailSettings &settings) const
{
    if (code == CURLE_OK)
        return {true, {}, {}};
    const bool isRefusal = replyCode() >= firstRefusal;
    return {false, isRefusal ? refusal() : failure(code, settings), isRefusal ? words() : QString()};
}

QString SmtpReplies::refusal() const
{
    if (replyCode() == tooBig && stage != Stage::Recipient)
        return QStringLiteral("邮件太大，邮件服务器不接收");
    switch (stage) {
    case Stage::StartTls:
        return QStringLiteral("邮件服务器不能加密连接（TLS），没有发送任何内容");
    case Stage::Login:
        return QStringLiteral("邮件服务器拒绝登录，请检查用户名和口令");
    case Stage::Sender:
        return QStringLiteral("邮件服务器拒绝发件人");
    case Stage::Recipient:
        return QStringLiteral("邮件服务器拒绝收件人 %1").arg(recipient);
    case Stage::Content:
        return QStringLiteral("邮件服务器拒绝邮件内容");
    default:
        return QStringLiteral("邮件服务器拒绝连接");
    }
}

QString SmtpReplies::failure(int code, const MailSettings &settings) const
{
    const QString server = QStringLiteral("%1:%2").arg(settings.server).arg(settings.usedPort());
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_URL_MALFORMAT:
        return QStringLiteral("找不到邮件服务器 %1").arg(settings.server);
    case CURLE_COULDNT_CONNECT:
        return QStringLiteral("无法连接邮件服务器 %1").arg(server);
    case CURLE_OPERATION_TIMEDOUT:
        return QStringLiteral("邮件服务器 %1 在 %2 秒内没有反应").arg(server).arg(settings.timeoutSeconds);
    case CURLE_USE_SSL_FAILED:
        return QStringLiteral("邮件服务器 %1 不支持加密连接（TLS），没有发送任何内容").arg(server);
    case CURLE_SSL_CONNECT_ERROR:
        return QStringLiteral("与邮件服务器 %1 的加密连接（TLS）没有建立").arg(server);
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
        return QStringLiteral("邮件服务器 %1 的证书不可信，没有发送任何内容").arg(server);
    case CURLE_LOGIN_DENIED:
        return QStringLiteral("邮件服务器 %1 不接受登录，请检查用户名和口令").arg(server);
    case CURLE_ABORTED_BY_CALLBACK:
    case CURLE_READ_ERROR:
        return QStringLiteral("没有读完附件，发送已中止");
    case CURLE_WEIRD_SERVER_REPLY:
        return QStringLiteral("邮件服务器 %1 的回答无法理解").arg(server);
    case CURLE_GOT_NOTHING:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
        return QStringLiteral("与邮件服务器 %1 的连接中断").arg(server);
    default:
        return QStringLiteral("发送失败：%1").arg(QString::fromUtf8(curl_easy_strerror(static_cast<CURLcode>(code))));
    }
}

} // namespace refhost
