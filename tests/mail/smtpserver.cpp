#include "mail/smtpserver.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

SmtpServer::SmtpServer(const QStringList &wanted) : moods(wanted)
{
    makeCertificate();
    process.start(QStringLiteral(SMTP_PYTHON), QStringList{QStringLiteral(SMTP_SERVER), folder.path(), certificate(),
                                                           folder.filePath(QStringLiteral("key.pem"))} +
                                                   moods);
    while (process.state() != QProcess::NotRunning && !process.canReadLine())
        if (!process.waitForReadyRead(30000))
            break;
    listeningPort = process.readLine().trimmed().toInt();
    EXPECT_GT(listeningPort, 0) << "the mail server has not started: " << process.readAllStandardError().toStdString();
}

SmtpServer::~SmtpServer()
{
    process.closeWriteChannel();
    if (!process.waitForFinished(5000))
        process.kill();
    process.waitForFinished();
}

void SmtpServer::makeCertificate()
{
    const QStringList arguments{"req",
                                "-x509",
                                "-newkey",
                                "ec",
                                "-pkeyopt",
                                "ec_paramgen_curve:prime256v1",
                                "-nodes",
                                "-days",
                                "2",
                                "-subj",
                                "/CN=localhost",
                                "-addext",
                                "subjectAltName=DNS:localhost,IP:127.0.0.1",
                                "-keyout",
                                "key.pem",
                                "-out",
                                "cert.pem"};
    QProcess openssl;
    openssl.setWorkingDirectory(folder.path());
    openssl.start(QStringLiteral("openssl"), arguments);
    EXPECT_TRUE(openssl.waitForFinished(30000)) << "no openssl";
    EXPECT_TRUE(QFile::exists(certificate())) << openssl.readAllStandardError().toStdString();
}

void SmtpServer::configure(refhost::UserConfig &config) const
{
    const auto set = [&config](const char *name, const QVariant &value) {
        config.setValue(QStringLiteral("mail/%1").arg(QLatin1String(name)), value);
    };
    set("server", QStringLiteral("localhost"));
    set("port", listeningPort);
    set("from", QStringLiteral("terminal@example.com"));
    set("to", QStringLiteral("support@example.com"));
    set("security", moods.contains("starttls") ? "starttls" : moods.contains("tls") ? "tls" : "none");
    set("caFile", certificate());
    set("timeoutSeconds", 20);
    if (!moods.contains("login"))
        return;
    set("user", QStringLiteral("trader"));
    set("password", QStringLiteral("口令 123"));
}

int SmtpServer::count() const
{
    return QDir(folder.path()).entryList({"*.json"}).size();
}

QJsonObject SmtpServer::mail(int number) const
{
    QFile file(folder.filePath(QStringLiteral("%1.json").arg(number)));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

QByteArray SmtpServer::bytes(int number) const
{
    QFile file(folder.filePath(QStringLiteral("%1.eml").arg(number)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
