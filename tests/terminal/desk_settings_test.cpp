#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QDialog>
#include <QtWidgets/QMenu>
#include <gtest/gtest.h>

#include "desk/deskcontrol.h"
#include "desk/feesbox.h"
#include "desk/limitsbox.h"
#include "deskwindow.h"
#include "order/cquotesgraphwidget.h"
#include "window/barbutton.h"
#include "window/mainwindow.h"
#include "window/ticketform.h"
#include "window/tradepage.h"
#include "zb/cradiobuttongroup.h"

using namespace terminal;

namespace {

class DeskSettingsMenu : public DeskWindow
{
protected:
    /// Opens the menu by a click on its button, and chooses an entry by its first letters.
    void choose(const QString &entry)
    {
        QTest::mouseClick(&control->orders().settingsButton(), Qt::LeftButton);
        QMenu *menu = openMenu();
        ASSERT_NE(menu, nullptr);
        for (QAction *action : menu->actions())
            if (action->text().startsWith(entry)) {
                ASSERT_TRUE(action->isEnabled());
                QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
                return;
            }
        FAIL() << "no entry " << entry.toStdString();
    }
    QMenu *openMenu() const
    {
        for (QMenu *menu : control->orders().settingsButton().findChildren<QMenu *>())
            if (menu->isVisible())
                return menu;
        return nullptr;
    }
    /// "text on|off enabled|disabled" a line.
    std::string menuText()
    {
        QTest::mouseClick(&control->orders().settingsButton(), Qt::LeftButton);
        QMenu *menu = openMenu();
        std::string text;
        for (const QAction *action : menu->actions())
            if (!action->isSeparator())
                text += action->text().toStdString() + (action->isChecked() ? " on" : " off") +
                        (action->isEnabled() ? "\n" : " disabled\n");
        menu->close();
        return text;
    }
    void setNumber(const QDialog &box, const char *field, const char *keys)
    {
        auto *edit = box.findChild<QAbstractSpinBox *>(QLatin1String(field));
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, QLatin1String(keys));
    }
    template <typename Box>
    Box *openBox() const
    {
        Box *open = nullptr;
        const auto find = [&] {
            for (Box *box : page().findChildren<Box *>())
                if (box->isVisible())
                    open = box;
            return open != nullptr;
        };
        return QTest::qWaitFor(find) ? open : nullptr;
    }
};

} // namespace

TEST_F(DeskSettingsMenu, SwitchesQuestionsAndSoundsAndKeepsThem)
{
    open();
    EXPECT_EQ(
        menuText(),
        "委托前确认 on\n提示音（成交一声，废单两声） on\n单笔上限... off\n费率和保证金... off\n结束交易日... off\n");
    choose(QStringLiteral("委托前确认"));
    choose(QStringLiteral("提示音（成交一声，废单两声）"));
    EXPECT_FALSE(DeskSettings::load().confirms);
    EXPECT_FALSE(DeskSettings::load().sounds);

    enterOrder();
    send(); // would hang in the question
    settle();
    EXPECT_EQ(orderRows(), "1 买入 10.00 100 100 已成 \n");
    EXPECT_EQ(fillSounds, 0);

    choose(QStringLiteral("提示音（成交一声，废单两声）"));
    const auto sendAgain = [&](qint64 quantity) {
        ticket().setQuantity(quantity);
        QTest::qWait(600); // the button rests after a click
        send();
        settle();
    };
    sendAgain(100);
    EXPECT_EQ(fillSounds, 1);
    sendAgain(900'000'000);
    EXPECT_EQ(rejectSounds, 1) << ticket().message().toStdString();
    EXPECT_EQ(orderRows().substr(0, 2), "2 ");
}

TEST_F(DeskSettingsMenu, LimitsAreTypedIntoABoxAndCountFromThenOn)
{
    open();
    withoutQuestions();
    choose(QStringLiteral("单笔上限"));
    auto *box = openBox<LimitsBox>();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->settings().mostShares, DeskSettings().mostShares);
    setNumber(*box, "shares", "200");
    setNumber(*box, "lots", "3");
    setNumber(*box, "amount", "5000");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(control->settings().mostShares, 200);
    EXPECT_EQ(DeskSettings::load().mostLots, 3);
    EXPECT_EQ(DeskSettings::load().mostAmount, 5000);
    EXPECT_FALSE(control->settings().confirms) << "what is not in the box stays";

    choose(QStringLiteral("单笔上限"));
    box = openBox<LimitsBox>();
    ASSERT_NE(box, nullptr);
    setNumber(*box, "shares", "700");
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_EQ(control->settings().mostShares, 200) << "given up";

    enterOrder(300);
    send();
    EXPECT_EQ(ticket().message().toStdString(), "委托数量 300 股超过您设定的单笔上限 200 股，请减少数量或改设置");
}

TEST_F(DeskSettingsMenu, FeesAndMarginsAreTypedIntoABoxAndChargedFromThenOn)
{
    open();
    const auto buy = [&](qint64 quantity) {
        sendBuy(10, quantity);
        return trading::moneyText(desk->desk().broker().orders().rbegin()->second.charges.total()).toStdString();
    };
    EXPECT_EQ(buy(1000), "5.10");
    sendBuy(9.5, 1000);
    desk->send({{"88002", "rb2410", feed::Side::Buy, trading::Offset::Open, 3501, 1}});
    settle();
    const auto frozen = [&] { return trading::moneyText(desk->books().at("88001").funds().frozen).toStdString(); };
    const auto margin = [&] { return trading::moneyText(desk->books().at("88002").funds().margin).toStdString(); };
    EXPECT_EQ(frozen(), "9505.10");
    EXPECT_EQ(margin(), "4201.20");

    choose(QStringLiteral("费率"));
    auto *box = openBox<FeesBox>();
    ASSERT_NE(box, nullptr);
    setNumber(*box, "commission", "10");
    setNumber(*box, "leastCommission", "0");
    setNumber(*box, "transferFee", "0");
    setNumber(*box, "futuresFactor", "3");
    setNumber(*box, "extraMargin", "3");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(buy(1000), "10.00");
    EXPECT_EQ(frozen(), "9509.50") << "what is open sets aside what it will cost by now";
    EXPECT_EQ(margin(), "5251.50");
    desk->send({{"88002", "rb2410", feed::Side::Buy, trading::Offset::Open, 3501, 1}});
    settle();
    EXPECT_EQ(trading::moneyText(desk->desk().broker().orders().rbegin()->second.charges.total()).toStdString(),
              "10.50");

    close();
    open();
    EXPECT_EQ(buy(1000), "10.00") << "the next time too";
}

TEST_F(DeskSettingsMenu, TheDayOfTheSimulatedExchangeIsEndedAfterAQuestion)
{
    open(TradeDesk::Market::Simulated);
    pump->addListener(*desk);
    pump->setPaused(true);
    pump->start();
    sendBuy(9.5, 100);
    answerBox(false);
    choose(QStringLiteral("结束交易日"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !asked.isEmpty(); }));
    EXPECT_EQ(asked.toStdString(), "结束交易日|未成交的委托将自动撤单，账户结算，模拟交易所进入下一个交易日。");
    EXPECT_EQ(orderRows(), "1 买入 9.50 100 0 已报 \n");
    answerBox(true);
    choose(QStringLiteral("结束交易日"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return desk->books().at("88001").account().day == 20240319; }));
    settle();
    EXPECT_EQ(orderRows(), "");
    EXPECT_EQ(control->orders().summary().toStdString(), "0 笔 · 已进入交易日 20240319");
    pump->stop();
}

/// He is asked about the order, and thinks until nothing is heard of the market any more.
TEST_F(DeskSettingsMenu, AMarketThatFallsSilentWhileTheUserThinksIsToldBeforeTheOrderGoesOut)
{
    open();
    enterOrder();
    QStringList questions;
    int answers = 0;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, window.get(), [&] {
        auto *box = window->findChild<QDialog *>(QStringLiteral("confirmBox"));
        if (!box)
            return;
        questions += box->windowTitle();
        pump->setPaused(true);
        QTest::keyClick(box, ++answers == 1 ? Qt::Key_Return : Qt::Key_Escape);
    });
    user.start(5);
    send();
    EXPECT_EQ(questions, (QStringList{QStringLiteral("确认委托"), QStringLiteral("行情提醒")}));
    EXPECT_EQ(ticket().message().toStdString(), "已取消，没有委托");
    EXPECT_TRUE(desk->desk().broker().orders().empty());
}

TEST_F(DeskSettingsMenu, CreditIsRefusedAsSoonAsItIsChosen)
{
    open();
    const std::string refusal = "模拟交易没有融资融券，请改用股票业务";
    auto *trades = ticket().findChild<ZB::CRadioButtonGroup *>();
    ASSERT_NE(trades, nullptr);
    for (QAbstractButton *button : trades->findChildren<QAbstractButton *>())
        if (button->text() == QStringLiteral("信用"))
            QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(ticket().draft().trade, kdservice::TraderCredit);
    EXPECT_EQ(ticket().message().toStdString(), refusal);
    enterOrder();
    send();
    EXPECT_EQ(ticket().message().toStdString(), refusal);
    EXPECT_TRUE(desk->desk().broker().orders().empty());
    ticket().setTrade(kdservice::TraderStock);
    EXPECT_EQ(ticket().message().toStdString(), "");
}
