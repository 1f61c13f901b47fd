#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QTreeView>
#include <gtest/gtest.h>

#include "dialog/caboutdialog.h"
#include "dialog/csendlogwidget.h"
#include "feed/simulation/simulatedfeed.h"
#include "kv/productinfo.h"
#include "services/productinfo.h"
#include "services/strandservice.h"
#include "services/userconfig.h"
#include "window/barbutton.h"
#include "window/feedpump.h"
#include "window/logpage.h"
#include "window/mainwindow.h"
#include "window/productname.h"
#include "window/qttexts.h"
#include "window/windowdialogs.h"

using namespace terminal;

namespace {

BarButton *button(QWidget &in, const QString &text)
{
    for (BarButton *each : in.findChildren<BarButton *>())
        if (each->text() == text && each->isVisibleTo(&in))
            return each;
    return nullptr;
}

} // namespace

TEST(WindowDialogs, WhatAKilledProgramHasLeftGoesAtTheNextStart)
{
    const QTemporaryDir folder;
    const QByteArray formerTemp = qgetenv("TMPDIR");
    qputenv("TMPDIR", QFile::encodeName(folder.path()));
    ASSERT_TRUE(QDir(folder.path()).mkpath("sendlog-old/more"));
    QFile lock(folder.filePath("sendlog-old/in-use.lock")); // of a process that there is not
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly) && lock.write("2147483646\nterminal\n\n") > 0);
    lock.close();
    QWidget window;
    const WindowDialogs dialogs(&window);
    EXPECT_TRUE(QTest::qWaitFor([&folder] { return !QDir(folder.filePath("sendlog-old")).exists(); }));
    refhost::finishStrands();
    if (formerTemp.isEmpty())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", formerTemp);
}

TEST(WindowDialogs, BoxesOfQtsOwnAreChinese)
{
    const std::unique_ptr<QTranslator> texts = chineseQtTexts();
    if (!texts)
        GTEST_SKIP() << "Qt's Chinese texts are not installed";
    QCoreApplication::installTranslator(texts.get());
    const QFileDialog box;
    for (const int column : {0, 3}) {
        const QString header = box.findChild<QTreeView *>()->model()->headerData(column, Qt::Horizontal).toString();
        EXPECT_GE(header.at(0).unicode(), 0x4E00) << header.toStdString();
    }
}

TEST(WindowDialogs, OpenByKeyAndByButtonOnceAndGoWithTheWindow)
{
    refhost::setUserConfig(std::make_unique<refhost::UserConfig>());
    nameProduct();
    EXPECT_EQ(KV::getProductInfo().name, QStringLiteral("模拟交易终端"));
    EXPECT_EQ(KV::getProductInfo().components.last().name, QStringLiteral("SQLite"));
    EXPECT_TRUE(KV::getProductInfo().agreementUrl.startsWith(QStringLiteral("file:///")));
    {
        FeedPump pump(std::make_unique<feed::MarketFeed>(std::make_unique<feed::SimulatedFeed>(1), 1));
        MainWindow window(pump);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, Qt::Key_F1);
        auto *about = window.findChild<KV::CAboutDialog *>();
        ASSERT_NE(about, nullptr);
        EXPECT_TRUE(about->isVisible());
        about->close();
        button(window, QStringLiteral("关于"))->click();
        EXPECT_TRUE(about->isVisible());
        EXPECT_EQ(window.findChildren<KV::CAboutDialog *>().size(), 1);
        about->close();

        window.showPage(window.logPage());
        BarButton *send = button(window, QStringLiteral("发送日志"));
        ASSERT_NE(send, nullptr);
        send->click();
        auto *sending = window.findChild<KV::CSendLogWidget *>();
        ASSERT_NE(sending, nullptr);
        EXPECT_TRUE(sending->isVisible());
        sending->close();
        QApplication::setActiveWindow(&window);
        QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_TRUE(sending->isVisible());
    }
    refhost::setProductInfo(refhost::builtProductInfo());
    refhost::setUserConfig(nullptr);
}
