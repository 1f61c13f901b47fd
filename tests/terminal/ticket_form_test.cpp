#include <gtest/gtest.h>

#include <algorithm>

#include "account/caccountscombobox.h"
#include "kv/cstockcodelineedit.h"
#include "records/record.h"
#include "services/instruments.h"
#include "terminal/ticketwindow.h"
#include "window/pricefield.h"
#include "window/quantityfield.h"
#include "window/ticketform.h"
#include "zb/clineedit.h"
#include "zb/csimpletextwidget.h"
#include "zb/cuiresource.h"

using namespace terminal;
using feed::absent;

namespace {

constexpr auto alt = Qt::AltModifier;

/// Price, quantity and what the fraction says.
QString fields(const TicketWindow &window)
{
    return window.price->text() + QLatin1Char('/') + window.quantity->text();
}

void giveFunds(TicketWindow &window, const TicketFunds &funds)
{
    window.form->setFundsSource([funds](const OrderDraft &) { return funds; });
}

} // namespace

TEST(TicketForm, TakesPriceTypeAndQuantityFromTheLadder)
{
    TicketWindow window;
    TicketForm &form = *window.form;
    form.setCode(QStringLiteral("600519.SH"));
    EXPECT_TRUE(form.takeLadderEvent(1128, 0, QStringLiteral("10.0600")));
    EXPECT_EQ(fields(window), QStringLiteral("10.06/"));
    EXPECT_TRUE(form.takeLadderEvent(1129, 0, QStringLiteral("1250.0000")));
    EXPECT_EQ(fields(window), QStringLiteral("10.06/1200")) << "whole lots";
    EXPECT_TRUE(form.takeLadderEvent(1129, 0, QStringLiteral("37.0000")));
    EXPECT_EQ(fields(window), QStringLiteral("10.06/37")) << "a rest that can be sold";
    for (const char *bad : {"", "-", "nan", "inf", "-5", "0.0000", "非法值"}) {
        EXPECT_TRUE(form.takeLadderEvent(1128, 0, QString::fromUtf8(bad)));
        EXPECT_TRUE(form.takeLadderEvent(1129, 0, QString::fromUtf8(bad)));
    }
    for (const int type : {-1, 4, 99})
        EXPECT_TRUE(form.takeLadderEvent(1127, type, QString()));
    EXPECT_EQ(fields(window), QStringLiteral("10.06/37"));
    EXPECT_TRUE(form.takeLadderEvent(1127, KV::PriceBestFive, QString()));
    EXPECT_EQ(fields(window), QStringLiteral("最优五档/37"));
    EXPECT_EQ(form.draft().priceType, KV::PriceBestFive);
    EXPECT_TRUE(form.takeLadderEvent(1128, 0, QStringLiteral("10.0500")));
    EXPECT_EQ(form.draft().priceType, KV::PriceLimit);
    EXPECT_TRUE(form.takeLadderEvent(1129, 0, QStringLiteral("1e300")));
    EXPECT_EQ(window.quantity->quantity(), 1'000'000'000);
    EXPECT_FALSE(form.takeLadderEvent(1243, 1, QStringLiteral("600519.SH")));
}

TEST(TicketForm, FractionsSizeTheOrderAtOnceAndFollowThePriceUntilAQuantityIsTyped)
{
    TicketWindow window;
    giveFunds(window, {100'000, 300'000, 1'350});
    window.form->setCode(QStringLiteral("600519.SH"));
    window.click(window.button("1/2"));
    EXPECT_EQ(window.form->message(), QStringLiteral("输入价格后计算数量"));
    EXPECT_EQ(fields(window), QStringLiteral("/"));
    window.form->takeLadderEvent(1128, 0, QStringLiteral("10"));
    EXPECT_EQ(fields(window), QStringLiteral("10.00/5000"));
    window.click(window.button("1/4"));
    EXPECT_EQ(fields(window), QStringLiteral("10.00/2500"));
    window.click(window.button("可　用"));
    EXPECT_EQ(fields(window), QStringLiteral("10.00/7500"));
    window.click(window.button("多"));
    EXPECT_EQ(fields(window), QStringLiteral("10.00/300"));
    window.click(window.button("全部"));
    EXPECT_EQ(fields(window), QStringLiteral("10.00/1350"));
    window.click(window.button("空"));
    window.price->setFocus();
    window.press(Qt::Key_PageUp);
    EXPECT_EQ(fields(window), QStringLiteral("10.10/9900"));
    window.quantity->setFocus();
    window.type(QStringLiteral("500"));
    window.price->setFocus();
    window.press(Qt::Key_PageUp);
    EXPECT_EQ(fields(window), QStringLiteral("10.20/500"));
    EXPECT_FALSE(window.button("全部")->isChecked());
}

TEST(TicketForm, TheQuantityOfAStockIsCountedInSharesOrInLots)
{
    TicketWindow window;
    giveFunds(window, {100'000, 300'000, 1'350});
    TicketForm &form = *window.form;
    const auto unit = [&form]() -> QAbstractButton * {
        for (QAbstractButton *button : form.findChildren<QAbstractButton *>())
            if (button->accessibleName().startsWith(QStringLiteral("数量按")))
                return button;
        return nullptr;
    };
    ASSERT_NE(unit(), nullptr);
    const auto shown = [&] {
        return window.quantity->text() + QLatin1Char(' ') + unit()->text() + QLatin1Char(' ') +
               QString::number(form.draft().quantity);
    };
    form.setCode(QStringLiteral("600519.SH"));
    form.setPrice(10);
    window.quantity->setFocus();
    window.type(QStringLiteral("300"));
    EXPECT_EQ(shown(), QStringLiteral("300 股 300"));
    window.click(unit());
    EXPECT_EQ(shown(), QStringLiteral("3 手 300")) << "the quantity stays";
    window.price->setFocus();
    window.quantity->setFocus();
    window.type(QStringLiteral("12"));
    EXPECT_EQ(shown(), QStringLiteral("12 手 1200"));
    EXPECT_EQ(window.sendText(), QStringLiteral("买入 贵州茅台 1200 股"));
    window.press(Qt::Key_Up);
    EXPECT_EQ(shown(), QStringLiteral("13 手 1300"));
    form.takeLadderEvent(1129, 0, QStringLiteral("1250"));
    EXPECT_EQ(shown(), QStringLiteral("12 手 1200"));
    window.press(Qt::Key_2, Qt::AltModifier);
    EXPECT_EQ(shown(), QStringLiteral("50 手 5000"));

    window.press(Qt::Key_F2);
    window.press(Qt::Key_1, Qt::AltModifier);
    EXPECT_EQ(shown(), QStringLiteral("1350 股 1350")) << "an odd rest is no number of lots";
    form.setCode(QStringLiteral("rb2410"));
    form.setQuantity(7);
    EXPECT_EQ(shown(), QStringLiteral("7 手 7"));
    EXPECT_FALSE(unit()->isEnabled());
    form.setCode(QStringLiteral("600519.SH"));
    form.setQuantity(700);
    EXPECT_EQ(shown(), QStringLiteral("7 手 700")) << "as the user wanted it";
    window.press(Qt::Key_U, Qt::AltModifier);
    EXPECT_EQ(shown(), QStringLiteral("700 股 700"));
}

TEST(TicketForm, SaysWhatCouldBeBoughtOrSoldAtMost)
{
    TicketWindow window;
    const auto said = [&window](const char *text) {
        const auto all = window.form->findChildren<ZB::CSimpleTextWidget *>();
        return std::any_of(all.begin(), all.end(),
                           [text](const auto *each) { return each->text() == QString::fromUtf8(text); });
    };
    window.form->setCode(QStringLiteral("600519.SH"));
    giveFunds(window, {100'000, 300'000, 1'350});
    window.form->setLastPrice(10);
    window.form->refresh();
    EXPECT_TRUE(said("可买 10,000"));
    window.form->takeLadderEvent(1128, 0, QStringLiteral("9.01"));
    EXPECT_TRUE(said("可买 11,000"));
    window.press(Qt::Key_F2);
    EXPECT_TRUE(said("可卖 1,350"));
    window.form->setCode(QStringLiteral("rb2410"));
    window.form->takeLadderEvent(1128, 0, QStringLiteral("3500"));
    EXPECT_TRUE(said("可开 2"));
    window.click(window.button("开"));
    EXPECT_TRUE(said("可平 1,350"));
    window.form->setFundsSource(nullptr);
    window.form->refresh();
    EXPECT_FALSE(said("可平 1,350"));
}

TEST(TicketForm, AFractionThatCannotBeToldSaysWhy)
{
    TicketWindow window;
    window.form->setCode(QStringLiteral("600519.SH"));
    window.form->setLastPrice(10);
    window.click(window.button("全部"));
    EXPECT_EQ(window.form->message(), QStringLiteral("没有资金数据，无法计算数量"));
    EXPECT_FALSE(window.button("全部")->isChecked());
    giveFunds(window, {});
    window.press(Qt::Key_1, alt);
    EXPECT_EQ(window.form->message(), QStringLiteral("没有资金数据，无法计算数量"));
    giveFunds(window, {999, 999, 0});
    window.press(Qt::Key_1, alt);
    EXPECT_EQ(window.form->message(), QStringLiteral("可用资金不够一手"));
    EXPECT_EQ(fields(window), QStringLiteral("/0"));
    window.press(Qt::Key_F2);
    window.press(Qt::Key_1, alt);
    EXPECT_EQ(window.form->message(), QStringLiteral("没有可卖出的数量"));
    giveFunds(window, {5000, 20'000, 0});
    window.press(Qt::Key_F1);
    window.press(Qt::Key_2, alt);
    EXPECT_EQ(fields(window), QStringLiteral("/200")) << "at the last price";
    window.press(Qt::Key_0, alt); // of everything, as far as it is there
    EXPECT_EQ(fields(window), QStringLiteral("/500"));
    EXPECT_EQ(window.form->message(), QString());
}

TEST(TicketForm, RefusesEveryMistakeInWordsAndGoesToTheField)
{
    TicketWindow window;
    window.takeOrders();
    const auto refusal = [&window] {
        window.sendNow();
        return window.form->message() + QStringLiteral(" -> ") + window.focus();
    };
    const auto isFramed = [](QWidget *field) {
        const QImage picture = field->grab().toImage();
        return picture.pixelColor(picture.width() / 2, 0) ==
               *ZB::CUiResource::instance()->getColor(QStringLiteral("clr_text_error"));
    };
    auto *accounts = window.form->findChild<KV::CAccountsComboBox *>();
    auto *code = window.form->findChild<KV::CStockCodeLineEdit *>();
    EXPECT_EQ(refusal(), QStringLiteral("请选择账号 -> 股票账号"));
    EXPECT_TRUE(isFramed(accounts));
    window.pickAccount();
    EXPECT_FALSE(isFramed(accounts));
    EXPECT_EQ(refusal(), QStringLiteral("请输入证券代码 -> 证券代码"));
    EXPECT_TRUE(isFramed(code));
    window.type(QStringLiteral("6"));
    EXPECT_FALSE(isFramed(code));
    window.form->setCode(QStringLiteral("999999.SH"));
    EXPECT_EQ(refusal(), QStringLiteral("没有证券 999999.SH -> 证券代码"));
    window.form->setCode(QStringLiteral("000300.SH"));
    EXPECT_EQ(refusal(), QStringLiteral("股票业务不能买卖 000300.SH -> 证券代码"));
    EXPECT_TRUE(isFramed(code));
    window.form->setTrade(kdservice::TraderFuture);
    EXPECT_FALSE(isFramed(code));
    window.form->setCode(QStringLiteral("600519.SH"));
    EXPECT_EQ(refusal(), QStringLiteral("请输入价格 -> 价格"));
    window.type(QStringLiteral("11.01"));
    EXPECT_EQ(window.form->message(), QString()) << "mended, so no longer said";
    EXPECT_EQ(refusal(), QStringLiteral("价格高于涨停价 11.00 -> 价格"));
    EXPECT_TRUE(isFramed(window.price->edit()));
    window.type(QStringLiteral("10"));
    EXPECT_EQ(refusal(), QStringLiteral("请输入数量 -> 数量"));
    window.type(QStringLiteral("150"));
    EXPECT_EQ(refusal(), QStringLiteral("买入数量须为 100 的整数倍 -> 数量"));
    EXPECT_EQ(window.sent.size(), 0);
    window.press(Qt::Key_Up);
    EXPECT_EQ(refusal(), QStringLiteral("已发出：买入 贵州茅台 200 股 -> 证券代码"));
    EXPECT_EQ(window.sent.size(), 1);
}

TEST(TicketForm, NeverSendsAnOrderForTheCodeBeforeTheOneThatTheUserTyped)
{
    TicketWindow window;
    window.takeOrders();
    window.pickAccount();
    window.enterCode(QStringLiteral("600519"));
    window.takePriceAndQuantity("10", "100");
    ZB::CLineEdit *code = window.form->findChild<KV::CStockCodeLineEdit *>()->getLineEdit();
    code->setFocus();
    code->selectAll();
    window.type(QStringLiteral("zzz"));
    window.press(Qt::Key_Escape); // closes the list; and the entry is gone
    code->selectAll();
    window.press(Qt::Key_Delete);
    window.press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(window.form->message(), QStringLiteral("请先选定证券"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.send->isEnabled(); }));
    window.type(QStringLiteral("zzz"));
    window.click(window.send); // takes the keyboard first, and with it the entry
    EXPECT_EQ(window.form->message(), QStringLiteral("没有证券 zzz，仍是 600519.SH"));
    EXPECT_EQ(window.focus(), QStringLiteral("证券代码"));
    EXPECT_EQ(window.sent.size(), 0);
    window.sendNow(); // knowing that
    EXPECT_EQ(window.sent.size(), 1);
    code->setFocus();
    code->selectAll();
    window.type(QStringLiteral("zzz"));
    window.click(window.price->edit()); // elsewhere: said, and the next click is the user's
    EXPECT_EQ(window.form->message(), QStringLiteral("没有证券 zzz，仍是 600519.SH"));
    window.sendNow();
    EXPECT_EQ(window.sent.size(), 2);
}

TEST(TicketForm, AnotherCodeTakesPriceQuantityAndContractAwayTheSameOneDoesNot)
{
    TicketWindow window;
    QStringList chosen;
    QObject::connect(window.form, &TicketForm::codeChosen, [&chosen](const QString &code) { chosen << code; });
    window.enterCode(QStringLiteral("600519"));
    EXPECT_EQ(chosen.join(QLatin1Char(' ')), QStringLiteral("600519.SH"));
    window.takePriceAndQuantity("10", "100");
    window.form->setCode(QStringLiteral("600519.SH"));
    window.enterCode(QStringLiteral("600519"));
    EXPECT_EQ(fields(window), QStringLiteral("10.00/100"));
    window.form->setCode(QStringLiteral("510050.SH"));
    EXPECT_EQ(fields(window), QStringLiteral("/"));
    window.press(Qt::Key_Up);
    EXPECT_EQ(fields(window), QStringLiteral("2.250/"));
    window.form->setCode(QStringLiteral("rb2410")); // chosen elsewhere: the business goes with it
    EXPECT_EQ(window.form->draft().trade, kdservice::TraderFuture);
    window.form->setCode(QStringLiteral("600519.SH"));
    EXPECT_EQ(window.form->draft().trade, kdservice::TraderStock);
    window.form->setTrade(kdservice::TraderCredit);
    window.click(window.button("指定"));
    window.type(QStringLiteral("C1"));
    ASSERT_EQ(window.form->draft().contractId, QStringLiteral("C1"));
    window.form->setCode(QStringLiteral("510050.SH"));
    EXPECT_EQ(window.form->draft().trade, kdservice::TraderCredit);
    EXPECT_FALSE(window.form->draft().namesContract);
    EXPECT_EQ(window.form->draft().contractId, QString());
    EXPECT_EQ(chosen.join(QLatin1Char(' ')), QStringLiteral("600519.SH 600519.SH")) << "only what the user chose here";
}

TEST(TicketForm, ACodeThatIsTypedInFullIsChosenLikeAnyOther)
{
    for (const auto &[business, code, price] :
         {std::tuple("股票", "600519.SH", "10"), std::tuple("期货", "rb2410", "3500")}) {
        TicketWindow window;
        window.takeOrders();
        window.click(window.button(business));
        window.pickAccount();
        window.enterCode(QString::fromLatin1(code));
        ASSERT_EQ(window.form->code(), QString::fromLatin1(code));
        window.takePriceAndQuantity(price, "100");
        window.sendNow();
        EXPECT_EQ(window.sent.size(), 1) << window.form->message().toStdString();
    }
}

TEST(TicketForm, AQuantityThatAnotherAccountSizedIsNotKept)
{
    TicketWindow window;
    giveFunds(window, {100'000, 300'000, 1'350});
    window.pickAccount();
    window.form->setCode(QStringLiteral("600519.SH"));
    window.form->setPrice(10);
    window.click(window.button("全部"));
    ASSERT_EQ(fields(window), QStringLiteral("10.00/10000"));
    giveFunds(window, {}); // nobody knows what the next one has
    window.pickAccount();
    EXPECT_EQ(fields(window), QStringLiteral("10.00/"));
    EXPECT_FALSE(window.button("全部")->isChecked());
}

TEST(TicketForm, ACreditOrderIsSizedInTheWordsOfAStockOrder)
{
    TicketWindow window;
    window.form->setTrade(kdservice::TraderFuture);
    window.form->setTrade(kdservice::TraderCredit);
    giveFunds(window, {100'000, 300'000, 1'350});
    window.form->setCode(QStringLiteral("600519.SH"));
    window.form->takeLadderEvent(1128, 0, QStringLiteral("10"));
    window.click(window.button("1/4"));
    EXPECT_EQ(fields(window), QStringLiteral("10.00/2500"));
    QAbstractButton *amount = window.button("可　用");
    ASSERT_NE(amount, nullptr);
    window.press(Qt::Key_0, alt);
    EXPECT_EQ(fields(window), QStringLiteral("10.00/7500"));
    EXPECT_NE(amount->text(), QStringLiteral("可　用")) << "the words go with the amount";
}

TEST(TicketForm, EveryBusinessKeepsItsAccount)
{
    TicketWindow window;
    QStringList accounts;
    for (const char *business : {"股票", "信用", "期货"}) {
        window.click(window.button(business));
        accounts << window.form->draft().account;
        window.pickAccount();
    }
    for (const char *business : {"股票", "信用", "期货"}) {
        window.click(window.button(business));
        accounts << window.form->draft().account;
    }
    EXPECT_EQ(accounts.join(QLatin1Char(' ')), QStringLiteral("   600001 700001 800001"));
}

TEST(TicketForm, LimitsThatComeLaterCount)
{
    TicketWindow window;
    const auto record = refhost::makePlain(refhost::MetaInstrument, "600000.SH");
    record->setData(refhost::InstrumentCode, std::string("600000.SH"));
    record->setData(refhost::InstrumentLot, 0);
    record->setData(refhost::InstrumentPriceTick, 0.0);
    refhost::Instruments::put(record);
    window.pickAccount();
    window.form->setCode(QStringLiteral("600000.SH"));
    EXPECT_EQ(window.form->draft().terms.lot, 100) << "no lot of nothing";
    EXPECT_EQ(window.form->draft().terms.tick, 0.01);
    window.takePriceAndQuantity("20", "100");
    EXPECT_EQ(window.form->draft().fault().text, QString());
    record->setData(refhost::InstrumentUpperLimit, 11.0);
    window.sendNow();
    EXPECT_EQ(window.form->message(), QStringLiteral("价格高于涨停价 11.00"));
}

TEST(TicketForm, WhatTheSenderAnswersIsSaidAndASecondClickIsHeldBack)
{
    TicketWindow window;
    int asked = 0;
    window.form->setSender([&asked](const OrderDraft &) {
        ++asked;
        return QStringLiteral("可用资金不足");
    });
    window.pickAccount();
    window.form->setCode(QStringLiteral("600519.SH"));
    window.takePriceAndQuantity("10", "100");
    QTest::mouseDClick(window.send, Qt::LeftButton);
    window.press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(window.form->message(), QStringLiteral("可用资金不足"));
    EXPECT_EQ(asked, 1);
    window.form->setSender([&window](const OrderDraft &) {
        delete std::exchange(window.form, nullptr);
        return QString();
    });
    window.sendNow();
    EXPECT_EQ(window.form, nullptr);
}
