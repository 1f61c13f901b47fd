#include <QtGui/QClipboard>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QVBoxLayout>
#include <gtest/gtest.h>

#include "log/cloglayout.h"
#include "theme/themeservice.h"
#include "uicontrol/logcache.h"
#include "uicontrol/logwindow.h"

TEST(LogWidget, RowsStandInTheMiddleOfTheHeight)
{
    KV::CLogLayout layout;
    const auto fitted = [&layout](int height) {
        layout.size = QSize(300, height);
        return QStringLiteral("%1 rows, %2 above").arg(layout.pageLines()).arg(layout.topPad()).toStdString();
    };
    EXPECT_EQ(fitted(30), "1 rows, 5 above");
    EXPECT_EQ(fitted(20), "1 rows, 0 above");
    EXPECT_EQ(fitted(12), "1 rows, -4 above");
    EXPECT_EQ(fitted(119), "5 rows, 9 above");
    EXPECT_EQ(layout.rowAt(0), 0) << "above the first row is the first row";
    EXPECT_EQ(layout.rowAt(9 + 40), 2);
}

TEST(LogWidget, TheNewestLineIsFollowedUntilTheUserScrollsAway)
{
    LogWindow window(300, 100);
    window.add(numbered(0, 5));
    EXPECT_TRUE(window.vertical->isHidden());
    EXPECT_EQ(text(window.rows()), text(numbered(0, 5)));
    window.add(numbered(5, 30));
    EXPECT_FALSE(window.vertical->isHidden());
    EXPECT_EQ(text(window.rows()), text(numbered(25, 30)));

    window.wheel({0, 120});
    const int scrolled = window.vertical->value();
    EXPECT_LT(scrolled, 25);
    window.add(numbered(30, 60));
    EXPECT_EQ(window.vertical->value(), scrolled);
    EXPECT_EQ(window.firstRow(), QStringLiteral("line %1").arg(scrolled));

    window.vertical->setSliderPosition(window.vertical->maximum());
    window.add(numbered(60, 70));
    EXPECT_EQ(text(window.rows()), text(numbered(65, 70))) << "at the bottom it follows again";
    window.press(Qt::Key_PageUp);
    window.press(Qt::Key_End, Qt::ControlModifier);
    window.add(numbered(70, 80));
    EXPECT_EQ(text(window.rows()), text(numbered(75, 80)));
}

TEST(LogWidget, AViewThatDoesNotFollowStaysOnItsLinesWhileOldOnesGo)
{
    LogWindow window(300, 100);
    window.add(numbered(0, 50001));
    window.vertical->setSliderPosition(20000);
    window.click(2);
    window.add(numbered(50001, 50501));
    EXPECT_EQ(window.copied(), QStringLiteral("line 20002"));
    EXPECT_EQ(window.vertical->value(), 19500);
    EXPECT_EQ(window.firstRow(), QStringLiteral("line 20000"));
    window.add(numbered(50501, 90000));
    EXPECT_EQ(window.vertical->value(), 0) << "they are gone: the oldest that is left";
    EXPECT_EQ(window.firstRow(), QStringLiteral("line %1").arg(90000 - 50001));
}

TEST(LogWidget, ABarThatAppearsMaySettleTheLayoutAroundTheView)
{
    QWidget frame;
    auto *above = new QWidget(&frame);
    auto *log = new KV::CHpfLogWidget(1, &frame);
    auto *layout = new QVBoxLayout(&frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(above);
    layout->addWidget(log, 1);
    (new QHBoxLayout(log))->addWidget(new QWidget(log)); // as a notice in the middle would need it
    above->setFixedHeight(60);
    frame.resize(300, 160);
    frame.show();
    ASSERT_EQ(log->height(), 100);
    log->dataCallBack(numbered(0, 5).join(QLatin1Char('\n')) + QString(100, QLatin1Char('w')) + "\n\n", 0);
    const auto probe = boost::make_shared<KV::CModelTextCache>();
    probe->dataCallBack(QString(), 0);
    ASSERT_TRUE(waitFor([&probe] { return probe->getDataSize() > 0; })); // the block is in, the view has not looked yet
    above->setFixedHeight(0); // the layout is still to follow: 8 rows instead of 5
    log->slotTimeout();
    EXPECT_EQ(log->height(), 160);
    for (const auto *bar : log->findChildren<ZB::CStandScrollBar *>()) {
        EXPECT_EQ(bar->maximum() > 0, bar->eventId() == 1) << bar->eventId();
        EXPECT_EQ(bar->isVisible(), bar->eventId() == 1) << bar->eventId();
    }
    EXPECT_TRUE(log->isFollowing());
}

TEST(LogWidget, AFilterShowsOneLevelAndLeavesCopyOfAllAlone)
{
    LogWindow window(300, 100);
    for (int i = 0; i < 12; ++i)
        window.log->dataCallBack(QStringLiteral("line %1").arg(i), i % 3);
    window.settle();
    window.log->setFilterLevel(2);
    EXPECT_EQ(text(window.rows()), "line 2\nline 5\nline 8\nline 11");
    EXPECT_TRUE(window.vertical->isHidden());
    window.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(window.markedRows().size(), 4U);
    EXPECT_EQ(window.copied().toStdString(), "\n" + text(numbered(0, 11)) + "line 11");
    window.log->setFilterLevel(9);
    EXPECT_EQ(window.rowText(0), QString()) << "no line has this level";
    window.log->setFilterLevel(KV::CHpfLogWidget::allLevels);
    EXPECT_EQ(text(window.rows()), text(numbered(7, 12)));
}

TEST(LogWidget, AClickBelowTheLastRowSelectsNothingToCopy)
{
    LogWindow window(300, 200);
    QApplication::clipboard()->setText(QStringLiteral("kept"));
    EXPECT_EQ(window.copied(), QStringLiteral("kept")) << "nothing is selected yet";
    window.add(numbered(0, 3));
    EXPECT_EQ(window.rowText(2), QStringLiteral("line 2"));
    EXPECT_EQ(window.markedRows(), std::vector<int>{2});
    EXPECT_EQ(window.rowText(7), QString());
    EXPECT_TRUE(window.markedRows().empty());
    window.press(Qt::Key_Down);
    EXPECT_EQ(window.copied(), QStringLiteral("line 2")) << "a row that exists";
    QTest::mouseClick(window.log, Qt::RightButton, Qt::NoModifier, QPoint(50, 5));
    EXPECT_EQ(window.copied(), QStringLiteral("line 2")) << "other buttons select nothing";
}

TEST(LogWidget, ClearingEmptiesTheViewFollowsAgainAndTellsTheHost)
{
    LogWindow window(300, 100);
    window.log->setLogKey(QStringLiteral("main log"));
    window.add(numbered(0, 50) << QString(200, QLatin1Char('w')));
    window.press(Qt::Key_Home, Qt::ControlModifier);
    window.press(Qt::Key_Right);
    window.log->findText(QStringLiteral("line"));
    window.log->slotClear(false);
    EXPECT_EQ(text(window.events), "1284 41 0 main log");
    EXPECT_EQ(window.horizontal->value(), 0);
    EXPECT_TRUE(window.horizontal->isHidden());
    EXPECT_TRUE(window.vertical->isHidden());
    EXPECT_EQ(window.rowText(0), QString());
    window.add(numbered(0, 40));
    EXPECT_EQ(text(window.rows()), text(numbered(35, 40)));
    EXPECT_EQ(text(window.hits()), text({"", "", "", "", ""})) << "the search is over";
    window.log->clear();
    EXPECT_EQ(window.events.size(), 1) << "only the user's clearing is told";
}

TEST(LogWidget, WrappingFitsLinesToTheWidthAndEndsSidewaysScrolling)
{
    LogWindow window(310, 100);
    const QString line = QString(100, QLatin1Char('x')) + QStringLiteral("end");
    window.add({line});
    EXPECT_EQ(window.horizontal->maximum(), 103 * 6 - 310);
    window.press(Qt::Key_Right);
    EXPECT_GT(window.horizontal->value(), 0);
    window.log->slotAutoLine(true);
    EXPECT_TRUE(window.horizontal->isHidden());
    EXPECT_EQ(window.horizontal->value(), 0);
    EXPECT_EQ(text(window.rows()), text({QString(50, 'x'), QString(50, 'x'), "end"}));
    const QImage before = window.picture();
    window.press(Qt::Key_Right);
    window.press(Qt::Key_Left);
    EXPECT_EQ(window.picture(), before) << "nothing to scroll to";

    window.resizeLog(130, 100);
    EXPECT_EQ(window.rowText(0), QString(20, 'x'));
    EXPECT_TRUE(window.horizontal->isHidden());
    window.resizeLog(110, 100);
    EXPECT_EQ(window.rowText(0), QString(20, 'x')) << "too narrow to wrap for";
    window.resizeLog(310, 100);
    window.log->slotAutoLine(false);
    EXPECT_EQ(text(window.rows()), text({line}));
    EXPECT_EQ(window.horizontal->maximum(), 103 * 6 - 310);
}

TEST(LogWidget, AHiddenLogIsNotDrawnAndShowsEverythingLater)
{
    LogWindow window(300, 100);
    window.hide();
    window.add(numbered(0, 40));
    EXPECT_EQ(window.vertical->maximum(), 0);
    window.show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.vertical->maximum() == 35; })) << "the log looks for itself";
    EXPECT_EQ(text(window.rows()), text(numbered(35, 40)));
}

TEST(LogWidget, TheMenuOffersFourActionsAndTheyWork)
{
    LogWindow window(300, 100);
    window.add(numbered(0, 3));
    const auto openMenu = [&window] {
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
        QApplication::sendEvent(window.log, &event);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        EXPECT_NE(menu, nullptr);
        return menu;
    };
    const auto choose = [&openMenu](int index) {
        QMenu *menu = openMenu();
        QAction *action = menu->actions().at(index);
        const QString label = action->text() + (action->isCheckable() ? action->isChecked() ? "+" : "-" : "");
        action->trigger();
        menu->close();
        return label.toStdString();
    };
    EXPECT_EQ(choose(0), "全选");
    EXPECT_EQ(window.markedRows().size(), 3U);
    EXPECT_EQ(choose(1), "复制");
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("\nline 0\nline 1line 2"));
    EXPECT_EQ(choose(2), "自动换行-");
    EXPECT_EQ(choose(2), "自动换行+");
    EXPECT_EQ(choose(3), "清空");
    EXPECT_EQ(openMenu()->actions().size(), 4);
    QApplication::activePopupWidget()->close();
    EXPECT_EQ(text(window.events), "1284 41 0 ");
}

TEST(LogWidget, ThemeAndScaleChangesLookLikeALogMadeUnderThem)
{
    auto &themes = refhost::ThemeService::instance();
    const auto fill = [](LogWindow &window) {
        window.log->slotAutoLine(true);
        for (int i = 0; i < 40; ++i)
            window.log->dataCallBack(QStringLiteral("股票('6889%1', '中芯国际') accepted ").arg(i).repeated(1 + i % 3),
                                     0);
        window.settle();
        window.log->findText(QStringLiteral("中芯国际') acc"));
        window.click(2);
    };
    LogWindow window(400, 205);
    fill(window);
    for (const auto &[theme, scale] : {std::pair("light", 1.0), {"light", 1.5}, {"dark", 2.0}, {"dark", 1.0}}) {
        themes.setTheme(QString::fromLatin1(theme));
        themes.setScale(scale);
        LogWindow fresh(400, 205);
        fill(fresh);
        window.press(Qt::Key_End, Qt::ControlModifier);
        window.click(2);
        fresh.click(2);
        EXPECT_EQ(window.picture(), fresh.picture()) << theme << " " << scale;
        EXPECT_EQ(window.vertical->width(), qRound(6 * scale));
        EXPECT_EQ(window.vertical->pageStep(), 205 / qRound(20 * scale));
        EXPECT_EQ(window.horizontal->singleStep(), qRound(200 * scale));
    }
}
