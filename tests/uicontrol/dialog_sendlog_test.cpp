#include <KZip>

#include <QtCore/QDir>
#include <QtTest/QTest>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>

#include "dialog/clogpackfolder.h"
#include "dialog/clogpreview.h"
#include "picturesinlooks.h"
#include "services/productinfo.h"
#include "uicontrol/sendlogwindow.h"

namespace {

const QByteArray firstLog = "2026-11-20 09:30:00.120 INFO 登录 user=88001234 password=geheim token: \"abc def\"\n"
                            "2026-11-21 09:30:00.120 WARN 委托 600000 10.05 x 300\n";
const QByteArray firstMasked = "2026-11-20 09:30:00.120 INFO 登录 user=***34 password=*** token: \"***\"\n"
                               "2026-11-21 09:30:00.120 WARN 委托 600000 10.05 x 300\n";

} // namespace

TEST_F(SendLogWindow, SendsMaskedCopiesThroughARealServerAndLeavesTheLogsAlone)
{
    const SmtpServer server({"starttls", "login"});
    server.configure(*config);
    writeLog("terminal.log", firstLog);
    writeLog("debug.log", QByteArray("\xff\x00 88001234-\r\n880012345", 23));
    writeLog("notes.txt", "none of ours");
    open();
    ASSERT_EQ(fileList()->topLevelItemCount(), 2);
    description()->setPlainText(QStringLiteral("下单后界面没有反应\n详细情况"));
    QTest::keyClicks(copies(), "a@example.com; b@example.com");
    bool sent = false;
    QObject::connect(widget.get(), &KV::CSendLogWidget::sigSent, [&sent] { sent = true; });
    press(QStringLiteral("发送"));
    EXPECT_TRUE(widget->isBusy());
    EXPECT_TRUE(outcome().startsWith(QStringLiteral("已发送到 support@example.com（"))) << outcome().toStdString();
    EXPECT_TRUE(sent);

    ASSERT_EQ(server.count(), 1);
    const QJsonObject mail = server.mail(1);
    EXPECT_EQ(mail["to"].toVariant().toStringList().join(" "), "support@example.com a@example.com b@example.com");
    const KV::ProductInfo product = KV::getProductInfo();
    EXPECT_EQ(mail["headers"].toObject()["Subject"].toString(),
              QStringLiteral("%1 %2 日志：下单后界面没有反应").arg(product.name, product.version));
    EXPECT_EQ(mail["text"].toString().replace("\r\n", "\n").trimmed(),
              QStringLiteral("下单后界面没有反应\n详细情况\n\n%1 %2\n%3\n"
                             "附件：2 个日志文件，原大小 %4 B，账号、口令、令牌等已遮盖")
                  .arg(product.name, product.version, product.build)
                  .arg(firstLog.size() + 23));
    EXPECT_TRUE(QRegularExpression("^logs-\\d{8}-\\d{6}\\.zip$").match(mail["name"].toString()).hasMatch());
    EXPECT_TRUE(mail["broken"].isNull());
    const QMap<QString, QByteArray> wanted{{"terminal.log", firstMasked},
                                           {"debug.log", QByteArray("\xff\x00 ***34-\r\n880012345", 20)}};
    EXPECT_EQ(filesIn(mail), wanted);

    // The zip file is, byte for byte, what packing the same files makes.
    KV::LogPackRequest request;
    request.files = KV::listLogFiles(folder.filePath("logs"));
    request.accounts = QStringList{"88001234"};
    KV::LogPack again;
    KV::packLogs(request, again);
    QFile zip(again.path);
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly)) << again.problem.toStdString();
    EXPECT_TRUE(QByteArray::fromBase64(mail["attachment"].toString().toLatin1()) == zip.readAll());
    again.folder.reset();
    EXPECT_EQ(readLog("terminal.log"), firstLog);
    EXPECT_TRUE(isCleanSoon()) << leftOvers().join(" ").toStdString();
}

TEST_F(SendLogWindow, DaysChooseFilesAndFilesCanBeLeftOut)
{
    const QDate today = QDate::currentDate();
    const auto day = [&today](int before) { return today.addDays(-before).toString(Qt::ISODate); };
    writeLog("terminal.log", day(1).toLatin1() + " x\n", today);
    writeLog("terminal.log.1", QByteArray(2000, 'x'), today.addDays(-3));
    writeLog("terminal.log.2", day(9).toLatin1() + QByteArray(3 << 20, 'y'), today.addDays(-5));
    open();
    EXPECT_EQ(shownFiles().join("|"), QString("x terminal.log %1 至 %2 13 B").arg(day(1), day(0)));
    press(QStringLiteral("近 7 天"));
    EXPECT_EQ(shownFiles().join("|"), QString("x terminal.log %1 至 %2 13 B|x terminal.log.1 %3 2.0 KB|"
                                              "x terminal.log.2 %4 至 %5 3.0 MB")
                                          .arg(day(1), day(0), day(3), day(9), day(5)));
    EXPECT_EQ(labels("已选").join(""), "已选 3 个文件，压缩前共 3.0 MB");
    fileList()->topLevelItem(2)->setCheckState(0, Qt::Unchecked);
    EXPECT_EQ(labels("已选").join(""), "已选 2 个文件，压缩前共 2.0 KB");
    const QList<QDateEdit *> days = widget->findChildren<QDateEdit *>();
    days[0]->setDate(today.addDays(-6)); // also the wrong way round
    days[1]->setDate(today.addDays(-8));
    EXPECT_EQ(fileList()->topLevelItemCount(), 1);
    days[0]->setDate(today.addDays(-20));
    days[1]->setDate(today.addDays(-19));
    EXPECT_EQ(labels("没有日志文件").join(""), "所选日期内没有日志文件");
    EXPECT_FALSE(button(QStringLiteral("发送"))->isEnabled());
    press(QStringLiteral("全部"));
    EXPECT_EQ(days[0]->date(), today.addDays(-9));
    EXPECT_EQ(fileList()->topLevelItemCount(), 3);
    press(QStringLiteral("当天"));
    EXPECT_EQ(fileList()->topLevelItemCount(), 1);
}

TEST_F(SendLogWindow, CarbonCopiesAreCheckedWithEveryKey)
{
    const SmtpServer server({});
    server.configure(*config);
    writeLog("terminal.log", firstLog);
    open();
    const struct
    {
        const char *typed;
        const char *wrong;
    } cases[] = {
        {"", ""},
        {"a@example.com", ""},
        {"a.b+c@mail.example.com.cn，d@e.org；f@g.io", ""},
        {"a", "a"},
        {"a@b", "a@b"},
        {"a@example.com, b@", "b@"},
        {"a..b@example.com", "a..b@example.com"},
        {"a@-x.com", "a@-x.com"},
        {"a@x.com> RCPT", "a@x.com>"},
        {"张三@example.com", "张三@example.com"},
    };
    for (const auto &each : cases) {
        copies()->setFocus();
        copies()->selectAll();
        QTest::keyClick(copies(), Qt::Key_Delete);
        for (const QChar letter : QString::fromUtf8(each.typed))
            copies()->insert(letter);
        const QString wrong = QString::fromUtf8(each.wrong);
        EXPECT_EQ(labels("不是邮箱地址").join(""),
                  wrong.isEmpty() ? QString() : QString("“%1”不是邮箱地址").arg(wrong));
        EXPECT_EQ(button(QStringLiteral("发送"))->isEnabled(), wrong.isEmpty()) << each.typed;
    }
}

TEST_F(SendLogWindow, WhatIsLookedAtIsWhatGoesOut)
{
    const SmtpServer server({});
    server.configure(*config);
    writeLog("terminal.log", firstLog);
    open();
    description()->setPlainText(QStringLiteral("看一下"));
    press(QStringLiteral("查看将要发送的内容"));
    outcome();
    auto *preview = widget->findChild<KV::CLogPreview *>();
    ASSERT_NE(preview, nullptr);
    auto *text = preview->findChild<QPlainTextEdit *>();
    EXPECT_TRUE(text->toPlainText().startsWith(QStringLiteral("收件人：support@example.com\n主题：")))
        << text->toPlainText().toStdString();
    EXPECT_TRUE(text->toPlainText().contains(QStringLiteral("\n看一下\n")));
    auto *list = preview->findChild<QListWidget *>();
    ASSERT_EQ(list->count(), 2);
    list->setCurrentRow(1);
    EXPECT_EQ(text->toPlainText(), QString::fromUtf8(firstMasked));
    delete preview;
    writeLog("terminal.log", firstLog + "one more line\n");
    press(QStringLiteral("发送"));
    EXPECT_TRUE(outcome().startsWith(QStringLiteral("已发送到"))) << outcome().toStdString();
    EXPECT_EQ(filesIn(server.mail(1))["terminal.log"], firstMasked);

    press(QStringLiteral("发送")); // anew: as the files are now
    EXPECT_TRUE(outcome().startsWith(QStringLiteral("已发送到"))) << outcome().toStdString();
    EXPECT_EQ(filesIn(server.mail(2))["terminal.log"], firstMasked + "one more line\n");
    EXPECT_TRUE(isCleanSoon());
}

TEST_F(SendLogWindow, AFileOfAnyLengthCanBeLookedAtToItsEnd)
{
    QByteArray lines;
    for (int line = 0; lines.size() < 600 << 10; ++line)
        lines += QStringLiteral("第 %1 行\n").arg(line).toUtf8();
    lines += "last 密码=geheim";
    writeLog("terminal.log", lines);
    open();
    press(QStringLiteral("查看将要发送的内容"));
    outcome();
    auto *preview = widget->findChild<KV::CLogPreview *>();
    ASSERT_NE(preview, nullptr);
    auto *text = preview->findChild<QPlainTextEdit *>();
    preview->findChild<QListWidget *>()->setCurrentRow(1);
    QPushButton *more = nullptr;
    for (QPushButton *each : preview->findChildren<QPushButton *>())
        if (each->text() == QStringLiteral("继续显示"))
            more = each;
    ASSERT_NE(more, nullptr);
    EXPECT_TRUE(text->toPlainText().startsWith(QStringLiteral("第 0 行\n第 1 行\n")));
    EXPECT_EQ(text->textCursor().position(), 0);
    int pieces = 1;
    for (; more->isVisible() && pieces < 9; ++pieces) {
        EXPECT_TRUE(text->toPlainText().endsWith(QStringLiteral(" 行\n"))); // never half a line
        QTest::mouseClick(more, Qt::LeftButton);
    }
    EXPECT_EQ(pieces, 3);
    EXPECT_TRUE(text->toPlainText() == QString::fromUtf8(lines.replace("geheim", "***")));
    preview->findChild<QListWidget *>()->setCurrentRow(0);
    EXPECT_FALSE(more->isVisible());
    EXPECT_TRUE(text->toPlainText().startsWith(QStringLiteral("收件人：")));
}

TEST_F(SendLogWindow, SavesThePackWithoutAnyMailService)
{
    writeLog("terminal.log", firstLog);
    open();
    EXPECT_EQ(labels("无法发送").join(""), "无法发送：没有设置邮件服务器（配置项 mail/server）；可以另存后自行发送");
    EXPECT_FALSE(button(QStringLiteral("发送"))->isEnabled());
    const QString path = folder.filePath("mine.zip");
    QFile older(path);
    ASSERT_TRUE(older.open(QIODevice::WriteOnly));
    older.write("older");
    older.close();
    widget->saveTo(path);
    EXPECT_TRUE(outcome().startsWith(QStringLiteral("已保存到 ") + path)) << outcome().toStdString();
    KZip zip(path);
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    ASSERT_NE(zip.directory()->file("terminal.log"), nullptr);
    EXPECT_EQ(zip.directory()->file("terminal.log")->data(), firstMasked);
    widget->saveTo(folder.filePath("nowhere/mine.zip"));
    EXPECT_TRUE(outcome().startsWith(QStringLiteral("无法保存到"))) << outcome().toStdString();
    EXPECT_EQ(QDir(folder.path()).entryList({"*.zip*"}, QDir::Files), QStringList("mine.zip"));
}

TEST_F(SendLogWindow, FollowsThemeAndScaleWhileItIsOpen)
{
    config->setValue("mail/server", "mail.example.com");
    config->setValue("mail/from", "terminal@example.com");
    config->setValue("mail/to", "support@example.com");
    writeLog("terminal.log", firstLog);
    writeLog("debug.log", QByteArray(70000, 'x'));
    open();
    description()->setPlainText(QStringLiteral("今天 10:15 撤单后委托仍显示“已报”。"));
    copies()->setText(QStringLiteral("leader@example.com, me@"));
    const QList<QImage> images = picturesInLooks(
        *widget, "sendlog", [this](double scale) { EXPECT_GE(widget->grab().width(), int(620 * scale)); });
    EXPECT_LT(qGray(images[0].pixel(2, 2)), qGray(images[2].pixel(2, 2)));
    EXPECT_NEAR(images[2].width(), images[0].width(), 8); // back to its size when the scale is
    EXPECT_NEAR(images[2].height(), images[0].height(), 8);
}
