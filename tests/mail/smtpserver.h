#pragma once

#include <QtCore/QDir>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include "services/userconfig.h"

/// A mail server on the loopback with a certificate of its own, started for one test. Its moods are those of
/// smtpserver.py: "starttls", "tls", "login", "refuse-sender", "full", "drop", "silent", "hang-up", "busy",
/// "stall-at-the-end", "stop-reading", "tls-stall",
/// "two-lines", "small". The user is "trader" with "口令 123".
class SmtpServer
{
public:
    explicit SmtpServer(const QStringList &moods);
    ~SmtpServer();

    int port() const { return listeningPort; }
    QString certificate() const { return folder.filePath(QStringLiteral("cert.pem")); }
    /// Points a configuration to this server: from, to, port, certificate, encryption as its moods say, login.
    void configure(refhost::UserConfig &config) const;

    /// What has arrived: envelope and decoded parts; and the bytes.
    int count() const;
    QJsonObject mail(int number) const;
    QByteArray bytes(int number) const;

private:
    void makeCertificate();

    const QStringList moods;
    QTemporaryDir folder{QDir::temp().filePath(QStringLiteral("smtpserver-XXXXXX"))};
    QProcess process;
    int listeningPort = 0;
};
