#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextCodec>
#include <QtGui/QClipboard>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <gtest/gtest.h>

#include "log/chpflogwidget.h"
#include "loggedin.h"
#include "window/barbutton.h"
#include "window/barlabel.h"
#include "window/logfilepanel.h"
#include "window/logpage.h"

using namespace terminal;

namespace {

/// A panel used as its user would: by keys and buttons, by what can be read.
template <typename PanelType>
class InWindow
{
public:
    template <typename... Arguments>
    explicit InWindow(const Arguments &...arguments) : panel(arguments...)
    {
        panel.resize(1000, 400);
        panel.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&panel));
        panel.setFocus();
    }

    void settle()
    {
        EXPECT_TRUE(QTest::qWaitFor([this] { return panel.isSettled(); }));
        panel.showNow();
    }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }

    void type(const char *text) { QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(text)); }

    BarButton *button(const char *text) const
    {
        for (BarButton *candidate : panel.template findChildren<BarButton *>())
            if (candidate->text().startsWith(QString::fromUtf8(text)))
                return candidate;
        ADD_FAILURE() << "no button " << text;
        return nullptr;
    }

    /// The texts that can be read beside the lines, from left to right and from top to bottom.
    std::string labels() const
    {
        QStringList texts;
        for (const BarLabel *label : panel.template findChildren<BarLabel *>())
            if (label->isVisible() && !label->text().isEmpty() && label->text() != panel.caption())
                texts << label->text();
        return texts.join(QLatin1Char('|')).toStdString();
    }

    std::string copied()
    {
        QApplication::clipboard()->clear();
        press(Qt::Key_C, Qt::ControlModifier);
        return QApplication::clipboard()->text().toStdString();
    }

    PanelType panel;
};

class LogPanelTest : public ::testing::Test
{
protected:
    LogPanelTest() : window(QStringLiteral("日志"), 7, QStringLiteral("test")) {}

    void fill()
    {
        for (int i = 0; i < 100; ++i)
            window.panel.add(QStringLiteral("line %1 委托").arg(i), i % 10 == 9 ? 2 : i % 10 == 8 ? 1 : 0);
        window.settle();
    }

    InWindow<LogPanel> window;
};

} // namespace

TEST_F(LogPanelTest, LevelsAreChosenByKeyAndCounted)
{
    EXPECT_EQ(window.labels(), "0 行|还没有日志");
    fill();
    EXPECT_EQ(window.labels(), "100 行");
    EXPECT_EQ(window.button("警告")->text().toStdString(), "警告 10");
    window.press(Qt::Key_3, Qt::AltModifier);
    EXPECT_TRUE(window.button("错误")->isChecked());
    EXPECT_FALSE(window.button("全部")->isChecked());
    EXPECT_EQ(window.panel.log().shownLines(), 10);
    EXPECT_EQ(window.labels(), "筛选 10 / 100 行");
    window.button("警告")->click();
    EXPECT_EQ(window.panel.log().getFilterLevel(), 1);
    window.press(Qt::Key_0, Qt::AltModifier);
    EXPECT_EQ(window.labels(), "100 行");
    window.press(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(window.labels(), "0 行|还没有日志");
    EXPECT_EQ(window.button("警告")->text().toStdString(), "警告");
    window.panel.add(QStringLiteral("x"), 0);
    window.settle();
    window.press(Qt::Key_2, Qt::AltModifier);
    EXPECT_EQ(window.labels(), "筛选 0 / 1 行|没有这个级别的日志");
}

TEST_F(LogPanelTest, TheSearchIsDrivenByKeysAndCountsItsHits)
{
    fill();
    window.press(Qt::Key_F, Qt::ControlModifier);
    window.type("line 9");
    EXPECT_EQ(window.labels(), "100 行|2 / 11 处") << "the first one below the top of the page";
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.labels(), "100 行|3 / 11 处");
    window.press(Qt::Key_F3);
    window.press(Qt::Key_F3);
    EXPECT_EQ(window.labels(), "100 行|5 / 11 处");
    window.press(Qt::Key_Return, Qt::ShiftModifier);
    window.press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(window.labels(), "100 行|3 / 11 处");
    window.press(Qt::Key_3, Qt::AltModifier);
    EXPECT_EQ(window.labels(), "筛选 10 / 100 行|2 处") << "lines 9 and 99";
    window.press(Qt::Key_0, Qt::AltModifier);
    window.panel.add(QStringLiteral("line 9 new"), 0);
    window.settle();
    ASSERT_TRUE(QTest::qWaitFor([this] {
        window.panel.refresh();
        return window.labels().find("12 处") != std::string::npos;
    })) << "new hits are counted";
    window.type("x");
    EXPECT_EQ(window.labels(), "101 行|没有找到");
    EXPECT_FALSE(window.button("下一处")->isEnabled());
    window.press(Qt::Key_Escape);
    EXPECT_EQ(window.labels(), "101 行");
    EXPECT_EQ(QApplication::focusWidget(), &window.panel.log());
}

TEST_F(LogPanelTest, NewLinesAreCountedWhileTheViewStaysWhereItIs)
{
    fill();
    EXPECT_TRUE(window.button("跟随最新")->isChecked());
    window.press(Qt::Key_PageUp);
    EXPECT_FALSE(window.button("转到最新")->isChecked());
    window.panel.add(QStringLiteral("a\nb\nc"), 0);
    window.panel.add(QStringLiteral("d"), 2);
    window.settle();
    EXPECT_NE(window.button("新日志 4"), nullptr);
    window.press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_TRUE(window.panel.log().isFollowing());
    EXPECT_TRUE(window.button("跟随最新")->isChecked());
    window.press(Qt::Key_Up);
    EXPECT_EQ(window.copied(), "d");
    window.press(Qt::Key_PageUp);
    window.button("转到最新")->click();
    EXPECT_TRUE(window.panel.log().isFollowing());
    window.button("跟随最新")->click();
    EXPECT_TRUE(window.button("跟随最新")->isChecked()) << "only scrolling ends it";
}

TEST_F(LogPanelTest, WrappingIsKeptForTheNextTime)
{
    const LoggedIn user;
    window.panel.add(QString(1000, QLatin1Char('w')), 0);
    window.settle();
    window.press(Qt::Key_W, Qt::AltModifier);
    EXPECT_TRUE(window.button("自动换行")->isChecked());
    EXPECT_GT(window.panel.log().shownLines(), 3);
    EXPECT_EQ(window.labels(), "1 行");
    window.panel.saveState();
    LogPanel next(QStringLiteral("日志"), 8, QStringLiteral("test"));
    next.loadState();
    EXPECT_TRUE(next.log().isAutoLine());
    window.button("自动换行")->click();
    EXPECT_FALSE(window.panel.log().isAutoLine());
    EXPECT_EQ(window.panel.log().shownLines(), 1);
}

TEST_F(LogPanelTest, OfMoreLinesThanItKeepsThePanelSaysSo)
{
    for (int i = 0; i < 6; ++i)
        window.panel.add(QStringLiteral("\n").repeated(9999), 0);
    window.settle();
    EXPECT_EQ(window.labels(), "60,000 行  ·  只保留最新 50,001 行");
    window.button("清空")->click();
    EXPECT_EQ(window.labels(), "0 行|还没有日志");
    window.panel.add(QStringLiteral("\n").repeated(59999), 0);
    window.settle();
    EXPECT_EQ(window.labels(), "60,000 行  ·  只保留最新 50,001 行") << "all at once";
}

TEST(LogFilePanel, SaysWhatBecomesOfItsFile)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.log"));
    const auto write = [&path](const QByteArray &bytes, QIODevice::OpenMode mode) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | mode));
        file.write(bytes);
    };
    InWindow<LogFilePanel> window(path, 9);
    const auto waitFor = [&window, origin = path.toStdString()](const std::string &labels) {
        const std::string expected = origin + "  ·  " + labels;
        const bool found = QTest::qWaitFor([&] {
            window.panel.showNow();
            return window.labels() == expected;
        });
        EXPECT_TRUE(found) << window.labels() << "\nfor\n" << expected;
    };
    waitFor("0 行|文件不存在，等待它出现");
    write("one\nERROR 委托\n", QIODevice::Append);
    waitFor("UTF-8  ·  2 行");
    EXPECT_EQ(window.button("错误")->text().toStdString(), "错误 1");
    write(QByteArray("zero\0\n", 6), QIODevice::Append);
    waitFor("UTF-8  ·  3 行|文件含有二进制零字节，显示为 ␀");
    write("x\n", QIODevice::Truncate);
    waitFor("UTF-8  ·  5 行|文件含有二进制零字节，显示为 ␀");
    window.press(Qt::Key_Up);
    window.press(Qt::Key_Up);
    EXPECT_NE(window.copied().find(" 文件被清空，从头读取 ────"), std::string::npos);
    ASSERT_TRUE(QFile::remove(path));
    waitFor("UTF-8  ·  6 行|文件不存在，等待它出现");
    window.press(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
    waitFor("UTF-8  ·  0 行|文件不存在，等待它出现");
}

TEST(LogFilePanel, OfALongFileItShowsTheEndAndSaysSo)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.log"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    for (int i = 0; i < 60000; ++i)
        file.write("line " + QByteArray::number(i) + "\n");
    file.close();
    InWindow<LogFilePanel> window(path, 9);
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.panel.isSettled(); }));
    window.panel.showNow();
    EXPECT_EQ(window.labels(), path.toStdString() + "  ·  50,001 行|文件较长：略去前面的 96.6 kB，只读入末尾（最多 "
                                                    "50,001 行、64 MB）");
    window.press(Qt::Key_Home, Qt::ControlModifier);
    window.press(Qt::Key_Down);
    EXPECT_EQ(window.copied(), "line 9999");
}

/// Lines of up to 175,000 Chinese characters, and a file in GBK.
TEST(LogFilePanel, ShowsRecordedLogsWholeWrappedAndSearched)
{
    const QString logs = QStringLiteral(SHARED_DATA_DIR "/logs/");
    if (!QFile::exists(logs))
        GTEST_SKIP() << "no recorded logs at " << logs.toStdString();
    for (const auto &[name, codec] :
         {std::pair("stock_screener_zh_utf8.log", "UTF-8"), std::pair("stock_screener_zh_gbk.log", "GB18030")}) {
        SCOPED_TRACE(name);
        QFile file(logs + QLatin1String(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        QString all = QTextCodec::codecForName(codec)->toUnicode(file.readAll()).remove(QLatin1Char('\r'));
        all.chop(all.endsWith(QLatin1Char('\n')) ? 1 : 0);
        const int lines = all.count(QLatin1Char('\n')) + 1;

        InWindow<LogFilePanel> window(file.fileName(), 9);
        ASSERT_TRUE(QTest::qWaitFor([&] { return window.panel.isSettled(); }));
        window.panel.showNow();
        KV::CHpfLogWidget &log = window.panel.log();
        EXPECT_EQ(log.shownLines(), lines);
        EXPECT_NE(window.labels().find(codec), std::string::npos) << window.labels();
        const QString wanted = QStringLiteral("涨停数");
        EXPECT_TRUE(log.findText(wanted));
        EXPECT_EQ(log.matchCount(), all.count(wanted));

        window.press(Qt::Key_W, Qt::AltModifier);
        EXPECT_GT(log.shownLines(), lines) << "the long ones are wrapped";
        EXPECT_TRUE(log.findText(wanted));
        EXPECT_EQ(log.matchCount(), all.count(wanted)) << "cuts hide no hit";
        window.press(Qt::Key_A, Qt::ControlModifier);
        QString expected = all;
        expected.remove(QLatin1Char('\n'));
        QString copied = QString::fromStdString(window.copied()).remove(QLatin1Char('\n'));
        EXPECT_TRUE(copied == expected) << copied.size() << " characters of " << expected.size();
        window.press(Qt::Key_W, Qt::AltModifier);
        EXPECT_EQ(log.shownLines(), lines);
    }
}

TEST(LogPage, ShowsTheFileInFrontAndTheProgramsOwnLogBelow)
{
    LogPage page;
    EXPECT_EQ(page.panels().size(), 1U);
    page.follow(QStringLiteral("/nowhere/a.log"));
    ASSERT_EQ(page.panels().size(), 2U);
    page.resize(900, 800);
    page.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&page));
    EXPECT_TRUE(page.filePanel()->isAncestorOf(QApplication::focusWidget()));
    EXPECT_LT(page.filePanel()->mapTo(&page, QPoint()).y(), page.programPanel().mapTo(&page, QPoint()).y());
    EXPECT_GT(page.filePanel()->height(), 2 * page.programPanel().height());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(page.filePanel()->isAncestorOf(QApplication::focusWidget()));
    page.focusNextPanel();
    EXPECT_EQ(QApplication::focusWidget(), &page.programPanel().log());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(page.programPanel().isAncestorOf(QApplication::focusWidget())) << "each panel has its own search";
}
