#include <gtest/gtest.h>

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLineEdit>

#include "eventwindow.h"
#include "order/coptypebutton.h"
#include "order/crateselectwidget.h"
#include "theme/themeservice.h"
#include "zb/cradiobuttongroup.h"
#include "zb/csmallnormalbutton.h"
#include "zb/cuiresource.h"

namespace {

QAbstractButton *buttonOf(QWidget &owner, const char *text)
{
    for (QAbstractButton *button : owner.findChildren<QAbstractButton *>())
        if (button->text() == QString::fromUtf8(text))
            return button;
    return nullptr;
}

QString words(int id)
{
    KV::COpTypeButton button(0, static_cast<KV::EOpParamWidgetID>(id), nullptr);
    QString text = button.text();
    button.setDirection(false);
    return text + button.text();
}

/// The text of the button that switches the amount.
std::string reference(const KV::CRateSelectWidget &rates)
{
    for (const auto *button : rates.findChildren<ZB::CPushButton *>())
        return button->text().toStdString();
    return {};
}

} // namespace

TEST(OpTypeButton, SaysLongAndShortForSomeFieldsAndOpenAndCloseForTheOthers)
{
    QStringList all;
    for (int id = 0; id <= 23; ++id)
        all << words(id);
    EXPECT_EQ(all.join(QLatin1Char(' ')).toStdString(), "开平 多空 多空 开平 开平 开平 开平 开平 开平 开平 开平 开平 "
                                                        "开平 开平 开平 开平 开平 开平 多空 多空 开平 开平 开平 开平");
}

TEST(OpTypeButton, IsRedForLongAndGreenForShortAndLeavesSwitchingToItsOwner)
{
    EventWindow window;
    KV::COpTypeButton button(6, KV::OpParamFirstLegLong, &window);
    window.showNow();
    EXPECT_TRUE(button.isLong());
    EXPECT_EQ(button.imageKey(), QStringLiteral("kv_img_btn_red_small"));
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(window.take(), "5 6 0");
    EXPECT_TRUE(button.isLong());
    button.switchDirection();
    EXPECT_FALSE(button.isLong());
    EXPECT_EQ(button.imageKey(), QStringLiteral("kv_img_btn_green_small"));
    button.switchDirection();
    EXPECT_TRUE(button.isLong());
    EXPECT_EQ(window.take(), "");
}

TEST(OpTypeButton, WritesInTheColourOfItsWordsInEveryState)
{
    EventWindow window;
    KV::COpTypeButton button(0, KV::OpParamFirstLegLong, &window);
    button.setGeometry(10, 10, 40, 24);
    window.showNow();
    const auto writesIn = [&button](const char *key) {
        const QColor color = *ZB::CUiResource::instance()->getColor(QLatin1String(key));
        const QImage picture = button.grab().toImage();
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (picture.pixelColor(x, y) == color)
                    return true;
        return false;
    };
    for (const bool isLong : {true, false})
        for (const char *state : {"normal", "hovered", "pressed", "disabled"}) {
            button.setDirection(isLong);
            button.setAttribute(Qt::WA_UnderMouse, qstrcmp(state, "hovered") == 0);
            button.setDown(qstrcmp(state, "pressed") == 0);
            button.setEnabled(qstrcmp(state, "disabled") != 0);
            EXPECT_TRUE(writesIn("clr_operation_direction_text")) << state;
        }
    button.setEnabled(true);
    const QString another = QStringLiteral("clr_global_equal");
    button.setTextColorKey(another, another, another, another);
    EXPECT_FALSE(writesIn("clr_operation_direction_text"));
}

TEST(RateSelectWidget, SwitchesTheAmountAndTellsOnEveryClick)
{
    EventWindow window;
    KV::CRateSelectWidget rates(&window);
    window.showNow();
    EXPECT_EQ(reference(rates), "可　用");
    QTest::mouseClick(buttonOf(rates, "可　用"), Qt::LeftButton);
    EXPECT_EQ(reference(rates), "总资产");
    EXPECT_EQ(rates.getRateReference(), KV::RateOfTotal);
    QTest::mouseClick(buttonOf(rates, "总资产"), Qt::LeftButton);
    EXPECT_EQ(reference(rates), "可　用");
    EXPECT_EQ(window.take(), "1073 0 0\n1073 0 0");
}

TEST(RateSelectWidget, PassesTheFractionsOnAndKeepsEveryClickOfAButton)
{
    EventWindow window;
    KV::CRateSelectWidget rates(&window);
    window.showNow();
    EXPECT_EQ(rates.getCheckedButtonID(), -1);
    for (const char *fraction : {"全部", "1/2", "1/3", "1/4", "1/4"})
        QTest::mouseClick(buttonOf(rates, fraction), Qt::LeftButton);
    EXPECT_EQ(window.take(), "6 0 1\n6 0 2\n6 0 3\n6 0 4\n6 0 4");
    EXPECT_EQ(rates.getCheckedButtonID(), 4);
    QTest::keyClick(buttonOf(rates, "1/4"), Qt::Key_Left);
    QTest::keyClick(buttonOf(rates, "1/3"), Qt::Key_Space);
    EXPECT_EQ(window.take(), "6 0 3\n6 0 3");
    ZB::CPushButton stranger(QString(), 3, &rates);
    stranger.setGeometry(0, 0, 10, 10);
    stranger.show();
    QTest::mouseClick(&stranger, Qt::LeftButton);
    EXPECT_EQ(window.take(), "");
    EXPECT_TRUE(rates.handleEvent(5, 3, 0, QString(), nullptr));
    EXPECT_EQ(rates.getRateReference(), KV::RateOfAvailable);
    EXPECT_FALSE(rates.handleEvent(6, 0, 0, QString(), nullptr));
    rates.setButtonCheckedByID(2);
    EXPECT_EQ(rates.getCheckedButtonID(), 2);
    rates.setButtonCheckedByID(-1);
    EXPECT_EQ(rates.getCheckedButtonID(), -1);
    EXPECT_EQ(window.take(), "");
}

TEST(RateSelectWidget, CallsTheTotalWhatTheAccountsCallIt)
{
    KV::CRateSelectWidget rates;
    QStringList shown;
    const auto tell = [&] { shown << QString::fromStdString(reference(rates)); };
    rates.setRateReference(KV::RateOfTotal);
    tell();
    for (const int type : {2, 0, 8, 128, 1}) {
        rates.setTradeType(static_cast<kdservice::EVxTraderType>(type));
        tell();
    }
    rates.setRateReference(static_cast<KV::ERateReference>(7)); // unknown: the text stays
    tell();
    rates.setRateReference(KV::RateOfAvailable);
    tell();
    rates.setTradeType(kdservice::TraderNone);
    rates.setRateReference(KV::RateOfTotal);
    tell();
    EXPECT_EQ(shown.join(QLatin1Char(' ')).toStdString(),
              "总资产 权　益 权　益 总资产 总资产 总资产 总资产 可　用 可　用");
}

TEST(RateSelectWidget, LeavesTheKeyboardToTheFractions)
{
    EventWindow window;
    KV::CRateSelectWidget rates(&window);
    QLineEdit other(&window);
    other.move(0, 100);
    window.showNow();
    other.setFocus();
    EXPECT_EQ(rates.focusPolicy(), Qt::NoFocus);
    QTest::mouseClick(buttonOf(rates, "可　用"), Qt::LeftButton);
    EXPECT_TRUE(other.hasFocus());
    QTest::mouseClick(buttonOf(rates, "1/3"), Qt::LeftButton);
    EXPECT_EQ(window.focusWidget(), buttonOf(rates, "1/3"));
}

TEST(RateSelectWidget, SwitchesTheAmountByAKeyOfItsFractions)
{
    EventWindow window;
    KV::CRateSelectWidget rates(&window);
    window.showNow();
    QAbstractButton *fraction = buttonOf(rates, "1/2");
    fraction->setFocus();
    QTest::keyClick(fraction, Qt::Key_Asterisk, Qt::ShiftModifier);
    EXPECT_EQ(reference(rates), "总资产");
    QTest::keyClick(fraction, Qt::Key_Asterisk, Qt::KeypadModifier);
    EXPECT_EQ(reference(rates), "可　用");
    EXPECT_EQ(window.take(), "1073 0 0\n1073 0 0");
    EXPECT_TRUE(fraction->hasFocus());
    EXPECT_EQ(rates.getCheckedButtonID(), -1) << "no fraction was chosen";
    auto *button = rates.findChild<ZB::CSmallNormalButton *>();
    EXPECT_TRUE(button->toolTip().contains(QStringLiteral("*"))) << button->toolTip().toStdString();
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Asterisk, Qt::ShiftModifier, QStringLiteral("*"), true);
    QCoreApplication::sendEvent(fraction, &held);
    QTest::keyClick(fraction, Qt::Key_Asterisk, Qt::ControlModifier);
    QTest::keyClick(fraction, Qt::Key_8);
    button->setEnabled(false);
    QTest::keyClick(fraction, Qt::Key_Asterisk);
    delete button;
    QTest::keyClick(fraction, Qt::Key_Asterisk);
    EXPECT_EQ(window.take(), "");
}

TEST(RateSelectWidget, DoesWithoutItsParts)
{
    EventWindow window;
    KV::CRateSelectWidget rates(&window);
    window.showNow();
    const auto *button = rates.findChild<ZB::CSmallNormalButton *>();
    rates.setBtnType(ZB::NormalButtonAccent);
    EXPECT_EQ(button->buttonType(), ZB::NormalButtonAccent);
    delete button;
    rates.setBtnType(ZB::NormalButtonPlain);
    EXPECT_TRUE(rates.handleEvent(5, 0, 0, QString(), nullptr));
    EXPECT_EQ(rates.getRateReference(), KV::RateOfTotal);
    rates.setTradeType(kdservice::TraderFuture);
    EXPECT_EQ(window.take(), "1073 0 0");
    delete rates.findChild<ZB::CRadioButtonGroup *>();
    rates.setButtonCheckedByID(2);
    EXPECT_EQ(rates.getCheckedButtonID(), -1);
    refhost::ThemeService::instance().setScale(1.5);
    EXPECT_EQ(rates.height(), 30);
    refhost::ThemeService::instance().setScale(1);
}

TEST(RateSelectWidget, FollowsTheScale)
{
    EventWindow window;
    KV::CRateSelectWidget rates(&window);
    window.showNow();
    const auto *button = rates.findChild<ZB::CPushButton *>();
    EXPECT_EQ(rates.height(), 20);
    EXPECT_EQ(button->size(), QSize(44, 20));
    refhost::ThemeService::instance().setScale(1.5);
    EXPECT_EQ(rates.height(), 30);
    EXPECT_EQ(button->size(), QSize(66, 30));
    rates.resize(rates.sizeHint());
    const auto *group = rates.findChild<ZB::CRadioButtonGroup *>();
    EXPECT_EQ(group->x(), 66 + 6);
    EXPECT_EQ(group->geometry().right() + 1, rates.width());
    refhost::ThemeService::instance().setScale(1);
}
