#include <gtest/gtest.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QListWidget>

#include "eventwindow.h"
#include "zb/ccombobox.h"
#include "zb/ccombopushbutton.h"

namespace {

/// A drop-down button with three items.
struct Combo
{
    Combo()
    {
        button.setEventId(8);
        for (const char *text : {"普通", "专项", "一个长得多的来源名称"})
            button.addItem(QString::fromUtf8(text), QByteArray(text));
        button.setGeometry(20, 20, 90, 24);
        window.showNow();
    }
    QListWidget *list() const { return button.popup() ? button.popup()->findChild<QListWidget *>() : nullptr; }
    void open()
    {
        QTest::mouseClick(&button, Qt::LeftButton);
        ASSERT_NE(list(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(button.popup()));
    }
    bool isClosed()
    {
        return QTest::qWaitFor([this] { return button.popup() == nullptr; });
    }

    EventWindow window;
    ZB::CComboPushButton button{QStringLiteral("kv_img_combo_btn_small_nonormal"), 32, 10, 24, 3, 20, &window};
};

} // namespace

TEST(ComboPushButton, HoldsItemsAndTheChosenOne)
{
    Combo combo;
    EXPECT_EQ(combo.button.currentIndex(), 0);
    combo.button.setCurrentItem(2);
    EXPECT_EQ(combo.button.currentText(), QStringLiteral("一个长得多的来源名称"));
    for (const int beyond : {-1, 3, 32})
        combo.button.setCurrentItem(beyond);
    EXPECT_EQ(combo.button.currentIndex(), 2);
    EXPECT_EQ(combo.button.itemData(1).toByteArray(), QByteArray("专项"));
    EXPECT_EQ(combo.window.take(), "");
    combo.button.clear();
    EXPECT_EQ(combo.button.currentIndex(), -1);
    combo.button.setCurrentItem(0);
    EXPECT_EQ(combo.button.currentIndex(), -1);
    QTest::mouseClick(&combo.button, Qt::LeftButton);
    EXPECT_EQ(combo.button.popup(), nullptr);
}

TEST(ComboPushButton, AClickInTheListPicks)
{
    Combo combo;
    combo.open();
    EXPECT_EQ(combo.list()->currentRow(), 0);
    const QPoint second = combo.list()->visualItemRect(combo.list()->item(1)).center();
    QTest::mouseClick(combo.list()->viewport(), Qt::LeftButton, {}, second);
    EXPECT_TRUE(combo.isClosed());
    EXPECT_EQ(combo.button.currentIndex(), 1);
    EXPECT_EQ(combo.window.take(), "7 8 1 专项"); // and no event 5
    combo.open();
    EXPECT_EQ(combo.list()->currentRow(), 1);
    QTest::mouseClick(combo.list()->viewport(), Qt::LeftButton, {}, second);
    EXPECT_EQ(combo.window.take(), "7 8 1 专项");
}

TEST(ComboPushButton, KeysOpenChooseTakeAndClose)
{
    Combo combo;
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Down, Qt::Key_F4}) {
        QTest::keyClick(&combo.button, key);
        ASSERT_NE(combo.list(), nullptr) << key;
        QTest::keyClick(combo.list(), Qt::Key_Down);
        QTest::keyClick(combo.list(), Qt::Key_Escape);
        EXPECT_TRUE(combo.isClosed()) << key;
    }
    combo.open();
    QWidget *popup = combo.button.popup();
    QTest::mouseClick(popup, Qt::LeftButton, Qt::NoModifier,
                      popup->mapFromGlobal(combo.window.mapToGlobal(QPoint(380, 280)))); // elsewhere
    EXPECT_TRUE(combo.isClosed());
    EXPECT_EQ(combo.button.currentIndex(), 0);
    EXPECT_EQ(combo.window.take(), "");
    combo.open();
    QTest::keyClick(combo.list(), Qt::Key_Down);
    QTest::keyClick(combo.list(), Qt::Key_Down);
    QTest::keyClick(combo.list(), Qt::Key_Up);
    QTest::keyClick(combo.list(), Qt::Key_Return);
    EXPECT_TRUE(combo.isClosed());
    EXPECT_EQ(combo.window.take(), "7 8 1 专项");
}

TEST(ComboPushButton, OpensAgainAtOnce)
{
    Combo combo;
    QTest::keyClick(&combo.button, Qt::Key_Down);
    QTest::keyClick(combo.list(), Qt::Key_Escape);
    EXPECT_EQ(combo.button.popup(), nullptr);
    QTest::keyClick(&combo.button, Qt::Key_Down);
    ASSERT_NE(combo.list(), nullptr);
    QTest::keyClick(combo.list(), Qt::Key_Down);
    QTest::keyClick(combo.list(), Qt::Key_Return);
    EXPECT_EQ(combo.window.take(), "7 8 1 专项");
}

TEST(ComboPushButton, ItsListFitsTheTextsWhenItMay)
{
    Combo combo;
    combo.open();
    EXPECT_EQ(combo.button.popup()->width(), combo.button.width());
    EXPECT_EQ(combo.button.popup()->height(), 3 * 24 + 2 * 3);
    combo.button.popup()->close();
    ASSERT_TRUE(combo.isClosed());
    combo.button.setAdjustPopupWidth(true);
    combo.open();
    EXPECT_GT(combo.button.popup()->width(), combo.button.width());
    EXPECT_LE(combo.list()->sizeHintForColumn(0), combo.list()->viewport()->width());
    combo.button.popup()->close();
    ASSERT_TRUE(combo.isClosed());
    for (int more = 3; more < 40; ++more)
        combo.button.addItem(QString::number(more));
    combo.open();
    EXPECT_EQ(combo.button.popup()->height(), 32 * 24 + 2 * 3);
}

TEST(ComboPushButton, ItsListGoesWithIt)
{
    Combo combo;
    combo.open();
    combo.button.hide();
    EXPECT_TRUE(combo.isClosed());
    combo.button.show();
    combo.open();
    combo.button.clear();
    EXPECT_TRUE(combo.isClosed());
    EXPECT_EQ(combo.window.take(), "");
}

TEST(ComboPushButton, MayBeDestroyedByWhoHearsOfTheChoice)
{
    EventWindow window;
    auto *button = new ZB::CComboPushButton(QString(), 32, 10, 24, 3, 20, &window);
    button->addItem(QStringLiteral("甲"));
    window.showNow();
    QPointer<ZB::CComboPushButton> alive(button);
    window.answer = [button](int) { delete button; };
    QTest::mouseClick(button, Qt::LeftButton);
    QTest::keyClick(button->popup()->findChild<QListWidget *>(), Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.take(), "7 0 0 甲");
    EXPECT_TRUE(alive.isNull());
}

TEST(ComboBox, TellsWhatTheUserPicksAndLeavesTheWheelToOthers)
{
    EventWindow window;
    ZB::CComboBox box(6, &window);
    box.addItems({QStringLiteral("甲"), QStringLiteral("乙"), QStringLiteral("丙")});
    window.showNow();
    QTest::keyClick(&box, Qt::Key_Down);
    ASSERT_TRUE(box.view()->isVisible());
    QTest::keyClick(box.view(), Qt::Key_Down);
    QTest::keyClick(box.view(), Qt::Key_Return);
    EXPECT_EQ(window.take(), "7 6 1 乙");
    box.setCurrentIndex(2);
    QWheelEvent wheel(QPointF(5, 5), box.mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&box, &wheel);
    EXPECT_EQ(box.currentIndex(), 2);
    EXPECT_EQ(window.take(), "");
}
