#include <gtest/gtest.h>

#include <QtGui/QCursor>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <functional>

#include "picturesinlooks.h"
#include "uicontrol/accountwindow.h"
#include "zb/cstylesheetcenter.h"
#include "zb/cuiresource.h"

TEST(AccountsTree, HoldsGroupsAndAccountsOfItsTraderTypeAndComposedOnesWhenAsked)
{
    AccountWindow window;
    window.combo->showPopup();
    const QStringList futures = {
        "0 套利 套利",     "  1 800001 800001 期货一号", "  1 900001 900001 全能", "1 800001 800001 期货一号",
        "1 800002 800002", "1 900001 900001 全能"};
    EXPECT_EQ(window.lines(), futures);
    window.combo->setTraderType(kdservice::TraderStock); // at once, also while it is open
    EXPECT_EQ(window.lines(),
              QStringList({"0 套利 套利", "  1 600001 600001 现货一号", "  1 900001 900001 全能", "0 股票组 股票组",
                           "  1 600001 600001 现货一号", "1 600001 600001 现货一号", "1 900001 900001 全能"}));
    window.combo->setTraderType(kdservice::TraderFuture);
    window.combo->setComposeAcct();
    QStringList composed = futures;
    composed.insert(3, "2 Z1 Z1 组合一");
    EXPECT_EQ(window.lines(), composed);
    window.combo->hidePopup();
    window.accounts->removeAccount("800002");
    window.combo->showPopup(); // made anew at every show
    composed.removeAt(5);
    EXPECT_EQ(window.lines(), composed);
    window.combo->setTraderType(kdservice::TraderCredit);
    EXPECT_EQ(window.lines(), QStringList({"1000  没有可选的账号"}));
    window.press(Qt::Key_Down);
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.taken(), QString()); // the message cannot be chosen
}

TEST(AccountsTree, IsASmallFramelessToolWindowOfTheTheme)
{
    AccountWindow window;
    EXPECT_EQ(window.popup->objectName(), QStringLiteral("basket_accounts_tree"));
    EXPECT_EQ(int(window.popup->windowFlags()), 0x80b);
    EXPECT_FALSE(window.popup->isVisible());
    EXPECT_EQ(window.popup->minimumSize(), QSize(200, 180));
    EXPECT_EQ(window.popup->maximumSize(), QSize(200, 180));
    EXPECT_EQ(window.tree->columnCount(), 1);
    EXPECT_TRUE(window.tree->isHeaderHidden());
    EXPECT_EQ(window.tree->focusPolicy(), Qt::NoFocus);
    window.combo->showPopup();
    EXPECT_EQ(window.tree->geometry().topLeft() + window.tree->parentWidget()->pos(), QPoint(1, 1));
    EXPECT_EQ(window.tree->size(), QSize(198, 178));
    EXPECT_EQ(window.popup->pos(), window.combo->mapToGlobal(QPoint(0, window.combo->height())));
    for (const char *id : {"套利", "800001"})
        EXPECT_FALSE(window.item(id)->icon(0).isNull()) << id;
    window.tree->setStyleSheet(QString());
    window.popup->themeChanged();
    EXPECT_EQ(window.tree->styleSheet(), ZB::CStyleSheetCenter::getStyle(ZB::ControlTree));
    EXPECT_FALSE(window.tree->styleSheet().isEmpty());
}

TEST(AccountsTree, TheCurrentRowIsOneBandAlsoWhileTheKeyboardIsTheBoxes)
{
    AccountWindow window;
    window.open();
    window.press(Qt::Key_Down);
    for (const int level : {0, 1}) {
        const QRect row = window.tree->visualItemRect(window.tree->currentItem());
        const QImage picture = window.tree->viewport()->grab().toImage();
        const QColor color = *ZB::CUiResource::instance()->getColor(QStringLiteral("clr_table_background_selected"));
        EXPECT_EQ(picture.pixelColor(1, row.top() + 2).name(), color.name()) << level;
        EXPECT_EQ(picture.pixelColor(picture.width() - 2, row.top() + 2).name(), color.name()) << level;
        window.press(Qt::Key_Down);
    }
}

TEST(AccountsTree, FollowsThemeAndScale)
{
    AccountWindow window;
    window.combo->setComposeAcct();
    window.open();
    window.press(Qt::Key_Down);
    window.press(Qt::Key_Down);
    const QList<QImage> pictures = picturesInLooks(*window.popup, "accounts", [&window](double scale) {
        EXPECT_EQ(window.popup->size(), QSize(200, 180) * scale);
        EXPECT_EQ(window.tree->iconSize(), QSize(16, 16) * scale);
        for (const char *id : {"套利", "800001", "Z1"})
            EXPECT_EQ(window.item(id)->icon(0).actualSize(window.tree->iconSize()), window.tree->iconSize()) << id;
        EXPECT_EQ(window.popup->grab().toImage().pixelColor(0, 0),
                  *ZB::CUiResource::instance()->getColor(QStringLiteral("clr_border")));
    });
    for (int i = 0; i < pictures.size(); ++i)
        EXPECT_EQ(pictures.indexOf(pictures[i]), i);
}

TEST(AccountsTree, AClickReportsOnceADoubleClickAgainWhenItHides)
{
    AccountWindow window;
    window.combo->showPopup();
    window.combo->hidePopup();
    EXPECT_EQ(window.taken(), QString()); // nothing is current
    window.combo->showPopup();
    window.click("800002");
    EXPECT_EQ(window.taken(), QStringLiteral("1137 0 1 800002"));
    EXPECT_TRUE(window.isOpen());
    window.click("套利");
    EXPECT_EQ(window.taken(), QStringLiteral("1137 0 0 套利"));
    window.combo->hidePopup(); // closed without a click: reports what is current
    EXPECT_EQ(window.taken(), QStringLiteral("1137 0 0 套利"));

    window.combo->setComposeAcct();
    window.combo->showPopup();
    window.click("Z1", true);
    EXPECT_EQ(window.taken(), QStringLiteral("1137 0 2 Z1, 1137 0 2 Z1"));
    EXPECT_FALSE(window.isOpen());
    EXPECT_EQ(window.combo->getSelection(), qMakePair(KV::SelectedComposedAccount, QStringLiteral("Z1")));
}

TEST(AccountsTree, ADoubleClickAsWindowSystemsMakeItReportsTwice)
{
    AccountWindow window;
    window.open();
    const QPoint at =
        window.tree->viewport()->mapTo(window.popup, window.tree->visualItemRect(window.item("800002")).center());
    QTest::mouseDClick(window.popup->windowHandle(), Qt::LeftButton, Qt::NoModifier, at); // four events
    QCoreApplication::processEvents();
    EXPECT_FALSE(window.isOpen());
    EXPECT_EQ(window.taken(), QStringLiteral("1137 0 1 800002, 1137 0 1 800002"));
}

TEST(AccountsTree, TheKeyboardChoosesAndEscapeTakesAnUnconfirmedMoveBack)
{
    AccountWindow window;
    window.press(Qt::Key_Down); // opens
    ASSERT_TRUE(window.isOpen());
    window.press(Qt::Key_Down);
    window.press(Qt::Key_Down);
    EXPECT_EQ(window.taken(), QString());
    window.press(Qt::Key_Return);
    EXPECT_FALSE(window.isOpen());
    EXPECT_EQ(window.taken(), QStringLiteral("1137 0 1 800001"));
    EXPECT_TRUE(window.combo->hasFocus());

    window.press(Qt::Key_Return);
    ASSERT_TRUE(window.isOpen());
    EXPECT_TRUE(window.tree->currentItem() == nullptr);
    EXPECT_EQ(window.tree->selectedItems().size(), 1); // the chosen one is marked
    window.press(Qt::Key_End);
    window.press(Qt::Key_Escape);
    EXPECT_FALSE(window.isOpen());
    EXPECT_EQ(window.taken(), QString());
    EXPECT_EQ(window.combo->getSelection().second, QStringLiteral("800001"));

    window.press(Qt::Key_F4);
    ASSERT_TRUE(window.isOpen());
    window.click("套利");
    window.press(Qt::Key_Left); // folds the group
    window.press(Qt::Key_Down);
    EXPECT_EQ(window.tree->currentItem()->data(0, Qt::UserRole).toString(), QStringLiteral("800001"));
    EXPECT_TRUE(window.tree->currentItem()->parent() == nullptr);
    window.press(Qt::Key_F5); // means nothing here
    window.press(Qt::Key_Escape);
    EXPECT_EQ(window.taken(), QStringLiteral("1137 0 0 套利, 1137 0 0 套利")); // the click, and hiding with it current
}

TEST(AccountsTree, AClickIntoThePopupKeepsItOpenFocusElsewhereClosesIt)
{
    AccountWindow window;
    window.combo->showPopup();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window.popup));
    QApplication::processEvents();
    EXPECT_TRUE(window.isOpen());
    window.clickLikeAWindowSystem("800002");
    EXPECT_FALSE(window.combo->hasFocus());
    EXPECT_TRUE(window.isOpen());
    EXPECT_EQ(window.taken(), QStringLiteral("1137 0 1 800002"));
    QTest::keyClick(window.popup, Qt::Key_Escape); // the popup has the keyboard now
    EXPECT_FALSE(window.isOpen());
    EXPECT_EQ(window.taken(), QStringLiteral("1137 0 1 800002"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &window; })); // and gives it back
    EXPECT_TRUE(window.combo->hasFocus());

    window.combo->showPopup();
    QCursor::setPos(window.mapToGlobal(QPoint(3, 3)));
    window.button->setFocus();
    EXPECT_FALSE(window.isOpen());
    EXPECT_EQ(window.taken(), QString());
}

TEST(AccountsTree, APopupLeftForAnotherWindowCloses)
{
    AccountWindow window;
    window.combo->showPopup();
    window.clickLikeAWindowSystem("800002");
    window.taken();
    QCursor::setPos(window.mapToGlobal(QPoint(3, 3)));
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isOpen(); }));
    EXPECT_EQ(window.taken(), QStringLiteral("1137 0 1 800002"));
}

TEST(AccountsTree, FocusThatLeavesTheBoxWithTheCursorInThePopupKeepsItOpen)
{
    AccountWindow window;
    window.open();
    QCursor::setPos(window.popup->mapToGlobal(window.popup->rect().bottomRight() - QPoint(1, 1)));
    window.button->setFocus();
    EXPECT_TRUE(window.isOpen());
    window.combo->setFocus();
    EXPECT_TRUE(window.isOpen()); // focus that comes opens and closes nothing
    QCursor::setPos(window.popup->mapToGlobal(window.popup->rect().bottomRight() + QPoint(1, 1)));
    window.button->setFocus();
    EXPECT_FALSE(window.isOpen());
    window.combo->setFocus();
    EXPECT_FALSE(window.isOpen());
    EXPECT_EQ(window.taken(), QString());
}

TEST(AccountsTree, ClosesWhenItsBoxIsTakenFromItsPlace)
{
    AccountWindow window;
    const auto closesBy = [&window](const std::function<void()> &action) {
        window.open();
        action();
        return QTest::qWaitFor([&window] { return !window.isOpen(); }, 2000);
    };
    EXPECT_TRUE(closesBy([&window] { window.move(window.pos() + QPoint(30, 0)); }));
    EXPECT_TRUE(closesBy([&window] { window.resize(window.size() + QSize(0, 10)); }));
    EXPECT_TRUE(closesBy([&window] { window.combo->move(window.combo->pos() + QPoint(0, 3)); }));
    EXPECT_TRUE(closesBy([&window] { window.combo->resize(window.combo->width(), window.combo->height() + 3); }));
    EXPECT_TRUE(closesBy([&window] { window.combo->hide(); }));
    window.combo->show();
    window.combo->showPopup();
    window.button->resize(window.button->width() - 1, window.button->height()); // another's place
    EXPECT_TRUE(window.isOpen());
    EXPECT_EQ(window.taken(), QString());
}

TEST(AccountsTree, ClosesWhenAnotherWindowIsActivatedWhereverTheCursorIs)
{
    AccountWindow window;
    QWidget other;
    other.setGeometry(500, 300, 100, 100);
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    window.combo->setFocus();
    window.combo->showPopup();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.popup));
    window.click("套利");
    EXPECT_EQ(window.taken(), QStringLiteral("1137 0 0 套利"));
    QCursor::setPos(window.popup->mapToGlobal(window.popup->rect().center()));
    other.activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([&window] { return !window.isOpen(); }, 2000));
    EXPECT_EQ(window.taken(), QStringLiteral("1137 0 0 套利"));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&other)); // and stays so
}
