#include "uicontrol/sendlogwindow.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>

#include "services/accounts.h"
#include "services/logservice.h"
#include "services/mailservice.h"
#include "services/strandservice.h"

SendLogWindow::SendLogWindow() : formerTemp(qgetenv("TMPDIR"))
{
    QDir(folder.path()).mkpath(QStringLiteral("tmp"));
    QDir(folder.path()).mkpath(QStringLiteral("logs"));
    qputenv("TMPDIR", QFile::encodeName(folder.filePath(QStringLiteral("tmp"))));
    auto made = std::make_unique<refhost::UserConfig>();
    config = made.get();
    refhost::setUserConfig(std::move(made));
    auto accounts = std::make_unique<refhost::Accounts>();
    accounts->putAccount({"88001234", {}, kdservice::TraderFuture, {}});
    refhost::setAccountData(std::move(accounts));
    refhost::setMailService(std::make_unique<refhost::MailService>());
    EXPECT_EQ(refhost::LogService::instance().openFiles(folder.filePath(QStringLiteral("logs"))), QString());
    QDir logs(folder.filePath(QStringLiteral("logs")));
    for (const QString &name : logs.entryList(QDir::Files))
        logs.remove(name); // those of the test itself go nowhere
    widget = std::make_unique<KV::CSendLogWidget>(&window);
}

SendLogWindow::~SendLogWindow()
{
    widget.reset();
    refhost::finishStrands();
    refhost::setMailService(nullptr);
    EXPECT_EQ(leftOvers().join(QLatin1Char(' ')), QString());
    refhost::LogService::instance().closeFiles();
    refhost::setAccountData(nullptr);
    refhost::setUserConfig(nullptr);
    if (formerTemp.isEmpty())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", formerTemp);
}

void SendLogWindow::writeLog(const QString &name, const QByteArray &contents, const QDate &day)
{
    QFile file(folder.filePath(QStringLiteral("logs/") + name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(contents);
    file.flush();
    ASSERT_TRUE(file.setFileTime(QDateTime(day, QTime(12, 0)), QFileDevice::FileModificationTime));
}

QByteArray SendLogWindow::readLog(const QString &name) const
{
    QFile file(folder.filePath(QStringLiteral("logs/") + name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void SendLogWindow::open()
{
    widget->show();
    EXPECT_TRUE(QTest::qWaitFor([this] { return labels(QStringLiteral("正在查找")).isEmpty(); }));
}

QString SendLogWindow::outcome()
{
    EXPECT_TRUE(QTest::qWaitFor([this] { return !widget->isBusy(); }, 60000));
    for (const QLabel *label : widget->findChildren<QLabel *>())
        if (label->parent() == widget.get())
            return label->text();
    return {};
}

QPushButton *SendLogWindow::button(const QString &text) const
{
    for (QPushButton *each : widget->findChildren<QPushButton *>())
        if (each->text() == text)
            return each;
    ADD_FAILURE() << "no button " << text.toStdString();
    return nullptr;
}

QStringList SendLogWindow::shownFiles() const
{
    QStringList lines;
    for (int at = 0; at < fileList()->topLevelItemCount(); ++at) {
        const QTreeWidgetItem *line = fileList()->topLevelItem(at);
        lines << QStringLiteral("%1 %2 %3 %4")
                     .arg(line->checkState(0) == Qt::Checked ? QLatin1Char('x') : QLatin1Char('-'))
                     .arg(line->text(0), line->text(1), line->text(2));
    }
    return lines;
}

QStringList SendLogWindow::labels(const QString &part) const
{
    QStringList found;
    for (const QLabel *label : widget->findChildren<QLabel *>())
        if (label->text().contains(part))
            found << label->text();
    return found;
}

QStringList SendLogWindow::leftOvers() const
{
    QStringList names =
        QDir(folder.filePath(QStringLiteral("tmp"))).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    for (const QString &server : names.filter(QStringLiteral("smtpserver-")))
        names.removeAll(server);
    return names;
}

bool SendLogWindow::isCleanSoon() const
{
    return QTest::qWaitFor([this] { return leftOvers().isEmpty(); }, 10000);
}

QMap<QString, QByteArray> SendLogWindow::filesIn(const QJsonObject &mail)
{
    QMap<QString, QByteArray> files;
    const QJsonObject packed = mail[QStringLiteral("files")].toObject();
    for (const QString &name : packed.keys())
        files[name] = QByteArray::fromBase64(packed[name].toString().toLatin1());
    return files;
}
