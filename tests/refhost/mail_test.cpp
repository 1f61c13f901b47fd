#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include "mail/smtpserver.h"
#include "printtext.h"
#include "services/mailservice.h"
#include "services/mailtext.h"

#ifdef Q_OS_LINUX
#include <dlfcn.h>
#include <netdb.h>
#include <unistd.h>

#include <atomic>
#include <cstring>

static std::atomic<int> slowLookUps{0};

/// Takes the place of the system's: one name takes longer than anybody waits.
extern "C" Q_DECL_EXPORT int getaddrinfo(const char *name, const char *service, const addrinfo *hints,
                                         addrinfo **result)
{
    using Function = int (*)(const char *, const char *, const addrinfo *, addrinfo **);
    static const auto systems = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "getaddrinfo"));
    if (name == nullptr || std::strcmp(name, "slow.example") != 0)
        return systems(name, service, hints, result);
    ++slowLookUps;
    sleep(8);
    return EAI_AGAIN;
}
#endif

namespace {

class Mail : public testing::Test
{
protected:
    Mail()
    {
        auto made = std::make_unique<refhost::UserConfig>();
        config = made.get();
        refhost::setUserConfig(std::move(made));
        refhost::setMailService(std::make_unique<refhost::MailService>());
        service = net::getMailService();
        for (int at = 0; at < 100000; ++at)
            contents += char(at * 31 + at / 251);
        QFile file(folder.filePath("logs.zip"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
        message.subject = QStringLiteral("终端日志 2026-11-21 演示用户反馈：下单后界面没有反应");
        message.text = QStringLiteral("第一行\n.\n.以点开头\n最后");
        message.attachmentPath = file.fileName();
        message.attachmentName = QStringLiteral("logs-20261121.zip");
    }

    ~Mail() override
    {
        refhost::setMailService(nullptr);
        refhost::setUserConfig(nullptr);
    }

    int send()
    {
        answers.clear();
        return service->send(
            message, [this](qint64 sent, qint64) { told = sent; },
            [this](const net::MailResult &result) {
                answers << (result.sent ? QStringLiteral("sent") : result.reason + '|' + result.serverWords);
            });
    }

    /// What lets go of the attachment when the sending does.
    std::weak_ptr<int> sendOwned(int &id)
    {
        auto owner = std::make_shared<int>(0);
        message.attachmentOwner = owner;
        id = send();
        message.attachmentOwner.reset();
        return owner;
    }

    /// "sent", or "reason|server's words".
    QString answer()
    {
        const int before = answers.size();
        send();
        EXPECT_EQ(answers.size(), before == 0 ? 0 : answers.size()); // never while send() is under way
        EXPECT_TRUE(QTest::qWaitFor([this] { return !answers.isEmpty(); }, 60000));
        return answers.join(QStringLiteral(" and "));
    }

    QTemporaryDir folder;
    QByteArray contents;
    net::MailMessage message;
    refhost::UserConfig *config = nullptr;
    net::CMailService *service = nullptr;
    QStringList answers;
    qint64 told = -1;
};

/// A mail with a boundary that is always the same.
QString unbounded(const QByteArray &mail)
{
    QString text = QString::fromUtf8(mail);
    text.replace(QRegularExpression("boundary=\\S+"), "boundary=B");
    text.replace(QRegularExpression("--------------------------[0-9a-f]{16}"), "--B");
    return text;
}

} // namespace

TEST_F(Mail, ArrivesByteForByteOverStartTlsWithLoginAndCarbonCopies)
{
    const SmtpServer server({"starttls", "login"});
    server.configure(*config);
    EXPECT_EQ(service->problem(), QString());
    EXPECT_EQ(service->recipient(), "support@example.com");
    message.carbonCopies = QStringList{"a@example.com", "b.c+d@example.org"};
    ASSERT_EQ(answer(), "sent");
    EXPECT_GT(told, 0);
    ASSERT_EQ(server.count(), 1);
    const QJsonObject mail = server.mail(1);
    EXPECT_EQ(mail["from"].toString(), "terminal@example.com");
    EXPECT_EQ(mail["to"].toVariant().toStringList().join(" "), "support@example.com a@example.com b.c+d@example.org");
    EXPECT_EQ(mail["login"].toString(), "trader");
    EXPECT_TRUE(mail["encrypted"].toBool());
    EXPECT_EQ(mail["text"].toString().replace("\r\n", "\n").trimmed(), message.text);
    EXPECT_EQ(mail["name"].toString(), message.attachmentName);
    EXPECT_TRUE(QByteArray::fromBase64(mail["attachment"].toString().toLatin1()) == contents);
    const QJsonObject headers = mail["headers"].toObject();
    EXPECT_EQ(headers["Subject"].toString(), message.subject);
    EXPECT_EQ(headers["Cc"].toString(), "a@example.com, b.c+d@example.org");
    EXPECT_EQ(headers["To"].toString(), "support@example.com");

    // The whole of it, but for what differs from mail to mail.
    QByteArray lines;
    const QByteArray base64 = contents.toBase64();
    for (int at = 0; at < base64.size(); at += 76)
        lines += base64.mid(at, 76) + "\r\n";
    QString text = unbounded(server.bytes(1));
    text.replace(QRegularExpression("Date: \\w{3}, \\d\\d \\w{3} \\d{4} \\d\\d:\\d\\d:\\d\\d [+-]\\d{4}"), "Date: D");
    text.replace(QRegularExpression("Message-ID: <[0-9a-f-]{36}@example.com>"), "Message-ID: I");
    // clang-format off
    EXPECT_EQ(text, "Content-Type: multipart/mixed; boundary=B\r\nMime-Version: 1.0\r\n"
                    "Date: D\r\nFrom: terminal@example.com\r\nTo: support@example.com\r\n"
                    "Cc: a@example.com,\r\n b.c+d@example.org\r\n"
                    "Subject: " + QString::fromLatin1(refhost::headerText(message.subject)) + "\r\n"
                    "Message-ID: I\r\n\r\n"
                    "--B\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Transfer-Encoding: base64\r\n\r\n" +
                    QString::fromLatin1(message.text.toUtf8().toBase64()) + "\r\n"
                    "--B\r\nContent-Disposition: attachment; filename=\"logs-20261121.zip\"\r\n"
                    "Content-Type: application/zip\r\nContent-Transfer-Encoding: base64\r\n\r\n" + lines + "--B--\r\n");
    // clang-format on
}

TEST_F(Mail, ArrivesOverTlsFromTheFirstByteAndToAHouseServerWithoutAny)
{
    const SmtpServer encrypted({"tls", "login"});
    encrypted.configure(*config);
    EXPECT_EQ(answer(), "sent");
    EXPECT_EQ(encrypted.mail(1)["login"].toString(), "trader");
    refhost::setUserConfig(nullptr);
    auto other = std::make_unique<refhost::UserConfig>();
    config = other.get();
    refhost::setUserConfig(std::move(other));
    const SmtpServer plain({});
    plain.configure(*config);
    EXPECT_EQ(answer(), "sent");
    EXPECT_FALSE(plain.mail(1)["encrypted"].toBool());
}

TEST_F(Mail, TellsEachFailureInTheServersOwnWords)
{
    const struct
    {
        QStringList moods;
        QMap<QString, QVariant> settings;
        QString copy;
        QString answer;
    } cases[] = {
        {{"starttls", "login"},
         {{"mail/password", "wrong"}},
         {},
         "邮件服务器拒绝登录，请检查用户名和口令|535 5.7.8 Authentication credentials invalid"},
        {{}, {}, "nobody@example.com", "邮件服务器拒绝收件人 nobody@example.com|550 5.1.1 No such user here, sorry"},
        {{"refuse-sender"}, {}, {}, "邮件服务器拒绝发件人|550 5.7.1 Sender is not known here"},
        {{"full"}, {}, {}, "邮件服务器拒绝邮件内容|452 4.3.1 Insufficient system storage,"},
        {{"busy"}, {}, {}, "邮件服务器拒绝连接|421 4.3.2 Too busy today"},
        {{}, {{"mail/security", "starttls"}}, {}, "邮件服务器 HOST 不支持加密连接（TLS），没有发送任何内容|"},
        {{}, {{"mail/security", "tls"}}, {}, "与邮件服务器 HOST 的加密连接（TLS）没有建立|"},
        {{"starttls"}, {{"mail/caFile", ""}}, {}, "邮件服务器 HOST 的证书不可信，没有发送任何内容|"},
        {{"drop"}, {}, {}, "与邮件服务器 HOST 的连接中断|"},
        {{"hang-up"}, {}, {}, "与邮件服务器 HOST 的连接中断|"},
        {{"silent"}, {{"mail/timeoutSeconds", 1}}, {}, "邮件服务器 HOST 在 1 秒内没有反应|"},
        {{"stall-at-the-end"}, {{"mail/timeoutSeconds", 1}}, {}, "邮件服务器 HOST 在 1 秒内没有反应|"},
        {{"tls-stall"},
         {{"mail/timeoutSeconds", 1}, {"mail/security", "starttls"}},
         {},
         "邮件服务器 HOST 在 1 秒内没有反应|"},
        {{"two-lines"}, {}, {}, "邮件服务器拒绝发件人|554-5.7.1 Not from here 554 5.7.1 ask the help desk"},
        {{"small"}, {}, {}, "邮件太大，邮件服务器不接收|552 Error: message size exceeds fixed maximum message size"},
        {{}, {{"mail/server", "no-such-host.invalid"}}, {}, "找不到邮件服务器 no-such-host.invalid|"},
        {{}, {{"mail/server", "bad host/name"}}, {}, "找不到邮件服务器 bad host/name|"},
        {{}, {{"mail/port", 1}}, {}, "无法连接邮件服务器 localhost:1|"},
        {{}, {}, "x@y>\r\nRCPT TO:<z@z", "抄送地址 x@y>\r\nRCPT TO:<z@z 不正确|"},
        {{}, {{"mail/user", "trader"}}, {}, "连接没有加密，不能发送登录口令（配置项 mail/security）|"},
        {{}, {{"mail/server", ""}}, {}, "没有设置邮件服务器（配置项 mail/server）|"},
        {{}, {{"mail/to", "support"}}, {}, "没有设置正确的收件人地址（配置项 mail/to）|"},
        {{}, {{"mail/caFile", "/nowhere/ca.pem"}}, {}, "无法读取证书文件 /nowhere/ca.pem（配置项 mail/caFile）|"},
    };
    for (const auto &each : cases) {
        const SmtpServer server(each.moods);
        server.configure(*config);
        if (!each.moods.contains("login"))
            config->remove("mail/user");
        for (auto setting = each.settings.begin(); setting != each.settings.end(); ++setting)
            config->setValue(setting.key(), setting.value());
        message.carbonCopies = each.copy.isEmpty() ? QStringList() : QStringList(each.copy);
        QElapsedTimer time;
        time.start();
        EXPECT_EQ(answer().replace(QStringLiteral("localhost:%1").arg(server.port()), "HOST"), each.answer);
        EXPECT_LT(time.elapsed(), 15000) << each.answer.toStdString();
        EXPECT_EQ(server.count(), 0) << each.answer.toStdString();
    }
    const SmtpServer server({});
    server.configure(*config);
    config->remove("mail/user");
    message.carbonCopies.clear();
    config->setValue("mail/attachmentLimitMB", 1);
    QFile file(message.attachmentPath);
    ASSERT_TRUE(file.resize((1 << 20) + 1));
    EXPECT_EQ(answer(), "附件超过 1 MB|");
    file.remove();
    EXPECT_TRUE(answer().startsWith("无法读取附件："));
}

TEST_F(Mail, AServerThatStopsReadingInTheMiddleIsGivenUp)
{
    const SmtpServer server({"stop-reading"});
    server.configure(*config);
    config->setValue("mail/timeoutSeconds", 1);
    QFile file(message.attachmentPath);
    ASSERT_TRUE(file.resize(19 << 20)); // more than the system takes on trust
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(answer(), QStringLiteral("邮件服务器 localhost:%1 在 1 秒内没有反应|").arg(server.port()));
    EXPECT_GT(told, 0);
    EXPECT_LT(told, 19 << 20);
    EXPECT_LT(time.elapsed(), 15000);
}

TEST_F(Mail, CancelledOrLeftBehindIsBrokenOffAtOnceAndLetsGoOfItsFile)
{
    const SmtpServer server({"stall-at-the-end"});
    server.configure(*config);
    int id = 0;
    const std::weak_ptr<int> file = sendOwned(id);
    ASSERT_TRUE(QTest::qWaitFor([this] { return told > 0; }));
    EXPECT_FALSE(file.expired());
    service->cancel(id);
    service->cancel(id + 1);
    EXPECT_TRUE(QTest::qWaitFor([&file] { return file.expired(); }, 5000));
    QCoreApplication::processEvents();
    EXPECT_EQ(answers.size(), 0);

    send();
    QElapsedTimer time;
    time.start();
    refhost::setMailService(nullptr);
    EXPECT_LT(time.elapsed(), 3000);
    EXPECT_EQ(answers.size(), 0);
    EXPECT_TRUE(net::getMailService() == nullptr);
}

#ifdef Q_OS_LINUX
TEST_F(Mail, ANameThatIsLookedUpForLongHoldsNobodyUp)
{
    config->setValue("mail/server", "slow.example");
    config->setValue("mail/from", "terminal@example.com");
    config->setValue("mail/to", "support@example.com");
    int id = 0;
    const std::weak_ptr<int> file = sendOwned(id);
    ASSERT_TRUE(QTest::qWaitFor([] { return slowLookUps > 0; }));
    service->cancel(id);
    EXPECT_TRUE(QTest::qWaitFor([&file] { return file.expired(); }, 3000));

    send();
    ASSERT_TRUE(QTest::qWaitFor([] { return slowLookUps > 1; }));
    QElapsedTimer time;
    time.start();
    refhost::setMailService(nullptr); // the program ends
    EXPECT_LT(time.elapsed(), 3000);
}
#endif

TEST_F(Mail, ACancelledOneIsNeverTakenForAWholeOne)
{
    const SmtpServer server({});
    server.configure(*config);
    QFile file(message.attachmentPath);
    ASSERT_TRUE(file.resize(20 << 20)); // takes a second or two
    int id = 0;
    const std::weak_ptr<int> held = sendOwned(id);
    ASSERT_TRUE(QTest::qWaitFor([this] { return told > 0; }));
    service->cancel(id);
    ASSERT_TRUE(QTest::qWaitFor([&held] { return held.expired(); }));
    message.attachmentPath = folder.filePath("small.zip");
    QFile small(message.attachmentPath);
    ASSERT_TRUE(small.open(QIODevice::WriteOnly) && small.write("zip") == 3);
    small.close();
    EXPECT_EQ(answer(), "sent");
    EXPECT_EQ(server.count(), 1);
    EXPECT_EQ(QByteArray::fromBase64(server.mail(1)["attachment"].toString().toLatin1()), "zip");
}

TEST_F(Mail, HeaderTextsStayInTheirHeader)
{
    using refhost::headerText;
    EXPECT_EQ(headerText("Logs of today"), "Logs of today");
    EXPECT_EQ(headerText("a\r\nBcc: x@y"), "a  Bcc: x@y");
    EXPECT_EQ(headerText(QStringLiteral("日志")), "=?UTF-8?B?5pel5b+X?=");
    EXPECT_EQ(headerText("=?UTF-8?Q?x?="), "=?UTF-8?B?PT9VVEYtOD9RP3g/PQ==?=");
    EXPECT_EQ(headerText(QString()), "");
    const QByteArray folded = headerText(QString(40, QChar(0x4e2d)));
    for (const QByteArray &line : folded.split('\n'))
        EXPECT_LE(line.trimmed().size(), 75) << line.toStdString();
    EXPECT_EQ(refhost::mailDate(QDateTime(QDate(2026, 11, 1), QTime(3, 4, 5), Qt::OffsetFromUTC, -12600)),
              "Sun, 01 Nov 2026 03:04:05 -0330");
}
