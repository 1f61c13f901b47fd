#include "services/mailsettings.h"

#include <QtCore/QFileInfo>
#include <algorithm>

#include "kv/cuserconfig.h"
#include "services/mailtext.h"

namespace refhost {

namespace {

constexpr int mostSeconds = 600;
constexpr int mostMegabytes = 2000;

MailSettings::Security securityOf(const QString &word)
{
    if (word == QLatin1String("none"))
        return MailSettings::Security::None;
    return word == QLatin1String("tls") ? MailSettings::Security::Tls : MailSettings::Security::StartTls;
}

} // namespace

MailSettings MailSettings::read(const KV::CUserConfig *config)
{
    MailSettings settings;
    if (config == nullptr)
        return settings;
    const auto text = [config](const char *name) {
        return config->value(QStringLiteral("mail/%1").arg(QLatin1String(name))).toString();
    };
    const auto number = [&text](const char *name, int fallback, int most) {
        bool isNumber = false;
        const int given = text(name).toInt(&isNumber);
        return isNumber && given > 0 ? std::min(given, most) : fallback;
    };
    settings.server = text("server").trimmed();
    settings.port = number("port", 0, 65535);
    settings.security = securityOf(text("security").trimmed().toLower());
    settings.user = text("user");
    settings.password = text("password");
    settings.from = text("from").trimmed();
    settings.to = text("to").trimmed();
    settings.caFile = text("caFile");
    settings.timeoutSeconds = number("timeoutSeconds", settings.timeoutSeconds, mostSeconds);
    settings.attachmentLimit = qint64(number("attachmentLimitMB", 20, mostMegabytes)) << 20;
    return settings;
}

QString MailSettings::problem() const
{
    if (server.isEmpty())
        return QStringLiteral("没有设置邮件服务器（配置项 mail/server）");
    if (!isMailAddress(from))
        return QStringLiteral("没有设置正确的发件人地址（配置项 mail/from）");
    if (!isMailAddress(to))
        return QStringLiteral("没有设置正确的收件人地址（配置项 mail/to）");
    if (security == Security::None && !user.isEmpty())
        return QStringLiteral("连接没有加密，不能发送登录口令（配置项 mail/security）");
    if (!caFile.isEmpty() && !QFileInfo(caFile).isReadable())
        return QStringLiteral("无法读取证书文件 %1（配置项 mail/caFile）").arg(caFile);
    return {};
}

int MailSettings::usedPort() const
{
    if (port != 0)
        return port;
    return security == Security::StartTls ? 587 : security == Security::Tls ? 465 : 25;
}

} // namespace refhost
