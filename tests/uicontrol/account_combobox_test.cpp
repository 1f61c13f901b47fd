#include <gtest/gtest.h>

#include <QtTest/QTest>

#include "kv/cuserconfig.h"
#include "uicontrol/accountwindow.h"

using Selection = QPair<KV::ESelectedAccountType, QString>;

namespace {

void tell(const QMap<QString, bool> &groups)
{
    Q_EMIT KV::getUserConfig()->sigAccountGroupChanged(groups);
}

} // namespace

TEST(AccountsComboBox, StartsWithAPlaceholderForFuturesAndTakesNoSelectionButTheTrees)
{
    AccountWindow window;
    EXPECT_EQ(window.combo->count(), 1);
    EXPECT_EQ(window.combo->itemText(0), QStringLiteral("请选择账号"));
    EXPECT_EQ(window.combo->itemData(0).toString(), QString());
    EXPECT_EQ(window.combo->getTraderType(), kdservice::TraderFuture);
    EXPECT_FALSE(window.combo->setSelection(KV::SelectedAccount, "800001"));
    EXPECT_EQ(window.combo->getSelection(), Selection(KV::SelectedAccountGroup, QString()));
    window.combo->setTraderType(kdservice::TraderStock);
    EXPECT_EQ(window.combo->getTraderType(), kdservice::TraderStock);
}

TEST(AccountsComboBox, AReportOfTheTreeIsStoredShownAndPassedOn)
{
    AccountWindow window;
    const QImage before = window.combo->grab().toImage();
    window.combo->showPopup();
    window.click("800001");
    EXPECT_EQ(window.taken(), QStringLiteral("1137 0 1 800001"));
    EXPECT_EQ(window.combo->getSelection(), Selection(KV::SelectedAccount, "800001"));
    EXPECT_EQ(window.combo->itemText(0), QStringLiteral("请选择账号")); // the item stays, the box shows the name
    EXPECT_NE(window.combo->grab().toImage(), before);
    EXPECT_FALSE(window.combo->handleEvent(4711, 1, 2, "x", nullptr));
    EXPECT_FALSE(window.combo->handleEvent(1137, 0, 0, QStringLiteral("套利"), nullptr));
    EXPECT_EQ(window.combo->getSelection(), Selection(KV::SelectedAccountGroup, QStringLiteral("套利")));
}

TEST(AccountsComboBox, LooksPressedWhileTheTreeIsOpen)
{
    AccountWindow window;
    const auto closed = window.combo->grab().toImage();
    window.press(Qt::Key_Down);
    EXPECT_NE(window.combo->grab().toImage(), closed);
    window.press(Qt::Key_Escape);
    EXPECT_EQ(window.combo->grab().toImage(), closed);
    QTest::mouseClick(window.combo, Qt::LeftButton);
    EXPECT_NE(window.combo->grab().toImage(), closed);
}

TEST(AccountsComboBox, HearsOfChangesOfTheChosenGroupOnly)
{
    AccountWindow window;
    window.combo->showPopup();
    window.click("套利");
    window.combo->hidePopup();
    window.taken();
    tell({{"股票组", true}});
    EXPECT_EQ(window.taken(), QString());
    tell({{"套利", false}, {"股票组", true}});
    EXPECT_EQ(window.taken(), QStringLiteral("1167 31 0 套利"));
    EXPECT_EQ(window.combo->itemText(0), QStringLiteral("请选择账号"));
    window.accounts->renameGroup("套利", "对冲");
    EXPECT_EQ(window.taken(), QStringLiteral("1167 31 0"));
    EXPECT_EQ(window.combo->getSelection(), Selection(KV::SelectedAccountGroup, QString()));
    EXPECT_EQ(window.combo->itemText(0), QStringLiteral("请选择账号(组)"));

    window.combo->showPopup();
    window.click("800001");
    window.combo->hidePopup();
    window.taken();
    tell({{"800001", true}}); // an account's name is no group's
    EXPECT_EQ(window.taken(), QString());
    EXPECT_EQ(window.combo->getSelection(), Selection(KV::SelectedAccount, "800001"));
}

TEST(AccountsComboBox, AnEmptyNameAnswersOnlyToAGroupOfThatName)
{
    AccountWindow window;
    tell({{"套利", true}});
    EXPECT_EQ(window.taken(), QString());
    tell({{QString(), false}});
    EXPECT_EQ(window.taken(), QStringLiteral("1167 31 0"));
}

TEST(AccountsComboBox, APressOpensAndClosesAndTheMinimumHintIsNeverBelowTheSize)
{
    AccountWindow window;
    QTest::mouseClick(window.combo, Qt::LeftButton);
    EXPECT_TRUE(window.isOpen());
    QTest::mouseClick(window.combo, Qt::LeftButton);
    EXPECT_FALSE(window.isOpen());
    QTest::mouseClick(window.combo, Qt::RightButton);
    EXPECT_FALSE(window.isOpen());
    window.combo->resize(321, 77);
    EXPECT_EQ(window.combo->minimumSizeHint(), QSize(321, 77));
    window.combo->resize(1, 1);
    EXPECT_GT(window.combo->minimumSizeHint().width(), 20);
    EXPECT_GT(window.combo->minimumSizeHint().height(), 10);
}

TEST(AccountsComboBox, WorksWithoutAnybodyLoggedIn)
{
    refhost::setAccountData(nullptr);
    refhost::setUserConfig(nullptr);
    KV::CAccountsComboBox combo(5, nullptr);
    combo.setComposeAcct();
    combo.showPopup();
    combo.hidePopup();
    combo.handleEvent(1137, 0, 1, "800001", nullptr);
    EXPECT_EQ(combo.getSelection(), Selection(KV::SelectedAccount, "800001"));
    EXPECT_FALSE(combo.grab().isNull());
}
