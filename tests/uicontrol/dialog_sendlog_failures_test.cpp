#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QThread>
#include <QtTest/QTest>
#include <QtWidgets/QFileDialog>
#include <random>

#include "dialog/clogpreview.h"
#include "services/logservice.h"
#include "services/strandservice.h"
#include "uicontrol/sendlogwindow.h"

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {

/// Bytes that do not get smaller by packing.
QByteArray noise(int megabytes)
{
    std::mt19937 random(7);
    QByteArray bytes;
    bytes.reserve(megabytes << 20);
    while (bytes.size() < megabytes << 20)
        bytes += QByteArray::number(quint64(random()) << 32 | random(), 36) + '\n';
    return bytes;
}

} // namespace

TEST_F(SendLogWindow, EveryRefusalStandsInTheWindowAndCanBeTriedAgain)
{
    writeLog("terminal.log", "2026-11-21 a line\n");
    const struct
    {
        QStringList moods;
        QMap<QString, QVariant> settings;
        QString copy;
        QString says;
    } cases[] = {
        {{},
         {},
         "nobody@example.com",
         "邮件服务器拒绝收件人 nobody@example.com\n服务器回答：550 5.1.1 No such user here, sorry"},
        {{"starttls", "login"},
         {{"mail/password", "wrong"}},
         {},
         "邮件服务器拒绝登录，请检查用户名和口令\n服务器回答：535 5.7.8 Authentication credentials invalid"},
        {{"full"}, {}, {}, "邮件服务器拒绝邮件内容\n服务器回答：452 4.3.1 Insufficient system storage,"},
        {{}, {{"mail/security", "starttls"}}, {}, "邮件服务器 HOST 不支持加密连接（TLS），没有发送任何内容"},
        {{"silent"}, {{"mail/timeoutSeconds", 1}}, {}, "邮件服务器 HOST 在 1 秒内没有反应"},
        {{"drop"}, {}, {}, "与邮件服务器 HOST 的连接中断"},
    };
    for (const auto &each : cases) {
        const SmtpServer server(each.moods);
        config->remove("mail");
        server.configure(*config);
        for (auto setting = each.settings.begin(); setting != each.settings.end(); ++setting)
            config->setValue(setting.key(), setting.value());
        open();
        copies()->setText(each.copy);
        press(QStringLiteral("发送"));
        EXPECT_EQ(outcome().replace(QStringLiteral("localhost:%1").arg(server.port()), "HOST"), each.says);
        EXPECT_TRUE(button(QStringLiteral("发送"))->isEnabled());
        EXPECT_EQ(server.count(), 0);
        const SmtpServer better({});
        config->remove("mail");
        better.configure(*config);
        copies()->clear();
        press(QStringLiteral("发送"));
        EXPECT_TRUE(outcome().startsWith(QStringLiteral("已发送到"))) << outcome().toStdString();
        EXPECT_EQ(better.count(), 1);
        widget->close();
        EXPECT_TRUE(isCleanSoon()) << each.says.toStdString();
    }
}

TEST_F(SendLogWindow, ClosedOrStoppedInTheMiddleItLeavesNothingBehind)
{
    const SmtpServer server({"stall-at-the-end"});
    server.configure(*config);
    const QByteArray large = noise(12);
    writeLog("terminal.log", large);
    const auto isPacking = [this] { return !labels("正在压缩").isEmpty(); };
    const auto isSending = [this] { return !labels("正在发送").isEmpty(); };
    open();
    press(QStringLiteral("发送"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !leftOvers().isEmpty(); })); // well into it
    EXPECT_TRUE(isPacking());
    press(QStringLiteral("停止"));
    EXPECT_EQ(outcome(), "已停止，没有发送");
    EXPECT_TRUE(isCleanSoon());

    press(QStringLiteral("发送"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !leftOvers().isEmpty(); }));
    widget->close();
    EXPECT_FALSE(widget->isBusy());
    EXPECT_TRUE(isCleanSoon());

    open();
    press(QStringLiteral("发送"));
    EXPECT_TRUE(QTest::qWaitFor(isSending, 20000));
    QTest::keyClick(widget.get(), Qt::Key_Escape); // stops first
    EXPECT_FALSE(widget->isBusy());
    EXPECT_TRUE(widget->isVisible());
    EXPECT_TRUE(isCleanSoon());
    QTest::keyClick(widget.get(), Qt::Key_Escape);
    EXPECT_FALSE(widget->isVisible());

    open();
    press(QStringLiteral("查看将要发送的内容"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return widget->findChild<KV::CLogPreview *>() != nullptr; }, 20000));
    widget->close();
    EXPECT_EQ(widget->findChild<KV::CLogPreview *>(), nullptr);
    EXPECT_TRUE(isCleanSoon());

    open();
    press(QStringLiteral("另存为…")); // closed by the program while the user is asked where to
    EXPECT_EQ(widget->findChildren<QFileDialog *>().size(), 1);
    widget->close();
    EXPECT_EQ(widget->findChildren<QFileDialog *>().size(), 0);

    open();
    description()->setFocus();
    widget->saveTo(folder.filePath("mine.zip"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !labels("正在保存").isEmpty(); }, 20000));
    QTest::keyClick(description(), Qt::Key_Escape); // wherever the focus is
    EXPECT_EQ(outcome(), "已停止");
    refhost::finishStrands();
    for (const QFileInfo &left : QDir(folder.path()).entryInfoList({"mine.zip*"}, QDir::Files | QDir::Hidden))
        EXPECT_GT(left.size(), 6 << 20) << left.fileName().toStdString(); // whole, or nothing at all
    EXPECT_TRUE(isCleanSoon());
    widget->close();

    open();
    press(QStringLiteral("发送"));
    EXPECT_TRUE(QTest::qWaitFor(isSending, 20000));
    widget.reset(); // the program goes
    EXPECT_TRUE(isCleanSoon());
    EXPECT_EQ(server.count(), 0);
    EXPECT_TRUE(readLog("terminal.log") == large);
    widget = std::make_unique<KV::CSendLogWidget>(&window);
}

TEST_F(SendLogWindow, TheGuiThreadNeverWaitsWhileFilesArePacked)
{
    writeLog("terminal.log", noise(24));
    open();
    widget->saveTo(folder.filePath("mine.zip"));
    qint64 longest = 0;
    QElapsedTimer step;
    while (widget->isBusy()) {
        step.start();
        QCoreApplication::processEvents();
        longest = std::max(longest, step.elapsed());
        QThread::msleep(1);
    }
    EXPECT_LT(longest, 1000); // packing takes longer, on an idle machine too
    EXPECT_TRUE(outcome().startsWith(QStringLiteral("已保存"))) << outcome().toStdString();
}

#ifdef Q_OS_UNIX
TEST_F(SendLogWindow, AFileThatCannotBeReadIsShownWithTheReasonAndLeftOut)
{
    const SmtpServer server({});
    server.configure(*config);
    writeLog("good.log", "2026-11-21 good\n");
    writeLog("secret.log", "2026-11-21 secret\n");
    for (const QString &path : {folder.path(), folder.filePath("logs")})
        QFile::setPermissions(path, QFileDevice::Permissions(0x7755));
    QFile::setPermissions(folder.filePath("logs/secret.log"), QFileDevice::Permissions());
    const bool isRoot = geteuid() == 0;
    ASSERT_EQ(isRoot ? seteuid(65534) : 0, 0);
    open();
    ASSERT_EQ(isRoot ? seteuid(0) : 0, 0);
    ASSERT_EQ(shownFiles().size(), 2);
    EXPECT_EQ(shownFiles().filter("- secret.log 无法读取：").size(), 1) << shownFiles().join("|").toStdString();
    EXPECT_EQ(labels("已选").join(""), "已选 1 个文件，压缩前共 16 B");
    press(QStringLiteral("发送"));
    EXPECT_TRUE(outcome().startsWith(QStringLiteral("已发送到"))) << outcome().toStdString();
    EXPECT_EQ(filesIn(server.mail(1)).keys(), QStringList("good.log"));
}
#endif

TEST_F(SendLogWindow, NothingToSendIsSaidBeforeAnythingIsTried)
{
    open();
    EXPECT_EQ(labels("没有日志文件").join(""), QString("日志目录 %1 中没有日志文件").arg(folder.filePath("logs")));
    for (const char *text : {"发送", "另存为…", "查看将要发送的内容"})
        EXPECT_FALSE(button(text)->isEnabled()) << text;
    widget->close();
    refhost::LogService::instance().closeFiles();
    open();
    EXPECT_EQ(labels("没有写日志").join(""), "程序没有写日志文件");
    widget->close();

    EXPECT_EQ(refhost::LogService::instance().openFiles(folder.filePath("logs")), QString());
    QFile huge(folder.filePath("logs/huge.log"));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly));
    if (!huge.resize((qint64(2) << 30) + 1))
        GTEST_SKIP() << "no sparse files here";
    open();
    EXPECT_EQ(labels("缩小日期").join(""), "所选日志共 2.0 GB，超过 2.0 GB，请缩小日期范围");
    EXPECT_FALSE(button(QStringLiteral("发送"))->isEnabled());
}

TEST_F(SendLogWindow, APackBeyondTheMailsLimitIsGivenUpAsSoonAsItIs)
{
    const SmtpServer server({});
    server.configure(*config);
    config->setValue("mail/attachmentLimitMB", 1);
    writeLog("terminal.log", noise(8));
    open();
    press(QStringLiteral("发送"));
    EXPECT_EQ(outcome(), "压缩后超过 1.0 MB，请缩小日期范围或少选文件");
    EXPECT_TRUE(isCleanSoon());
    widget->saveTo(folder.filePath("mine.zip")); // the own disk takes it
    EXPECT_TRUE(outcome().startsWith(QStringLiteral("已保存到"))) << outcome().toStdString();
    press(QStringLiteral("发送")); // and it does not go by mail after all
    EXPECT_TRUE(outcome().contains(QStringLiteral("超过邮件上限 1.0 MB"))) << outcome().toStdString();
    EXPECT_EQ(server.count(), 0);
}
