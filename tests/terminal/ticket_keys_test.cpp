#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QShortcut>
#include <algorithm>

#include "kv/cstockcodelineedit.h"
#include "loggedlines.h"
#include "terminal/ticketwindow.h"
#include "theme/themeservice.h"
#include "utils/clogcenter.h"
#include "window/pricefield.h"
#include "window/quantityfield.h"
#include "window/ticketform.h"

using namespace terminal;

namespace {

/// Presses until a field has the keyboard.
void pressUntil(TicketWindow &window, const char *field, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    for (int presses = 0; window.focus() != QString::fromUtf8(field); ++presses) {
        ASSERT_LT(presses, 30) << field;
        window.press(key, modifiers);
    }
}

/// Two pixels around a field, where it shows that it has the keyboard; the caret blinks further inside.
QImage frameOf(QWidget &field)
{
    constexpr int width = 2;
    QPixmap picture = field.grab();
    QPainter(&picture).fillRect(field.rect().adjusted(width, width, -width, -width), Qt::black);
    return picture.toImage();
}

/// The fields that a key leads through, until it is back.
QStringList stops(TicketWindow &window, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QStringList names;
    do {
        names << window.focus();
        window.press(key, modifiers);
    } while (window.focus() != names.first() && names.size() < 30);
    return names;
}

} // namespace

TEST(TicketByKeyboard, AStockIsBoughtFromTheFirstKeyToTheLogLine)
{
    TicketWindow window;
    const auto lines = std::make_shared<LoggedLines>();
    utils::getStdLogger()->addAppender(lines);
    window.pickAccount();
    EXPECT_EQ(window.focus(), QStringLiteral("股票账号"));
    window.press(Qt::Key_Tab);
    window.enterCode(QStringLiteral("600519"));
    EXPECT_EQ(window.focus(), QStringLiteral("价格"));
    window.type(QStringLiteral("10.0"));
    window.press(Qt::Key_Up);
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.focus(), QStringLiteral("数量"));
    window.press(Qt::Key_Up, Qt::ShiftModifier);
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.focus(), QStringLiteral("委托"));
    EXPECT_EQ(window.sendText(), QStringLiteral("买入 贵州茅台 1000 股"));
    window.press(Qt::Key_Return);
    utils::getStdLogger()->removeAppender(lines);
    EXPECT_EQ(lines->text('\n'), "委托 买入 600519.SH 贵州茅台 价格 10.01 数量 1000 账号 600001 金额 10,010.00");
    EXPECT_EQ(window.form->message(), QStringLiteral("已发出：买入 贵州茅台 1000 股"));
    EXPECT_EQ(window.focus(), QStringLiteral("证券代码")); // ready for the next
}

TEST(TicketByKeyboard, AFutureIsClosedWithKeysOnly)
{
    TicketWindow window;
    window.takeOrders();
    window.form->setFundsSource([](const OrderDraft &) { return TicketFunds{1e6, 2e6, 7}; });
    pressUntil(window, "股票", Qt::Key_Backtab, Qt::ShiftModifier);
    window.press(Qt::Key_Right);
    window.press(Qt::Key_Right);
    EXPECT_EQ(window.focus(), QStringLiteral("期货"));
    window.press(Qt::Key_Space);
    window.press(Qt::Key_Tab);
    EXPECT_EQ(window.focus(), QStringLiteral("期货账号"));
    window.pickAccount();
    window.press(Qt::Key_Tab);
    window.enterCode(QStringLiteral("rb24"));
    pressUntil(window, "开", Qt::Key_Backtab, Qt::ShiftModifier);
    window.press(Qt::Key_Space);
    window.press(Qt::Key_F2); // sells, what closes a long position
    window.press(Qt::Key_Tab);
    window.type(QStringLiteral("3500"));
    window.press(Qt::Key_1, Qt::AltModifier);
    EXPECT_EQ(window.quantity->quantity(), 7);
    window.press(Qt::Key_2, Qt::AltModifier);
    EXPECT_EQ(window.quantity->quantity(), 3);
    window.press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(window.sent.value(0),
              QStringLiteral("委托 卖出平仓 rb2410 螺纹钢2410 价格 3500 数量 3 账号 800001 金额 105,000.00"));
}

TEST(TicketByKeyboard, ACreditOrderNamesItsContract)
{
    TicketWindow window;
    window.takeOrders();
    window.form->setTrade(kdservice::TraderCredit);
    window.pickAccount();
    window.enterCode(QStringLiteral("600519"));
    pressUntil(window, "指定", Qt::Key_Backtab, Qt::ShiftModifier);
    window.press(Qt::Key_Space);
    EXPECT_EQ(window.focus(), QStringLiteral("合约号"));
    window.press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(window.form->message(), QStringLiteral("请输入价格"));
    EXPECT_EQ(window.focus(), QStringLiteral("价格"));
    window.type(QStringLiteral("10"));
    window.press(Qt::Key_Return);
    window.type(QStringLiteral("100"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.send->isEnabled(); }));
    window.press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(window.form->message(), QStringLiteral("请输入合约号"));
    EXPECT_EQ(window.focus(), QStringLiteral("合约号"));
    window.type(QStringLiteral("C7"));
    EXPECT_EQ(window.form->message(), QString());
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.send->isEnabled(); }));
    window.press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(window.sent.value(0), QStringLiteral("委托 融资买入 600519.SH 贵州茅台 价格 10.00 数量 100 账号 700001 "
                                                   "金额 1,000.00 合约类型 普通头寸 合约号 C7"));
}

TEST(TicketByKeyboard, TabGoesThroughEverythingAsItStandsAndBack)
{
    TicketWindow window;
    const QStringList stock = stops(window, Qt::Key_Tab);
    EXPECT_EQ(stock.join(QLatin1Char(' ')), QStringLiteral("证券代码 多 价格 数量 全部 委托 股票 股票账号"));
    QStringList back = stops(window, Qt::Key_Backtab, Qt::ShiftModifier);
    std::reverse(back.begin() + 1, back.end());
    EXPECT_EQ(back, stock);
}

TEST(TicketByKeyboard, ItIsSeenWhereTheKeyboardIs)
{
    TicketWindow window;
    window.form->setTrade(kdservice::TraderCredit);
    window.click(window.button("指定")); // so that the contract's id is a stop too
    for (const char *theme : {"dark", "light"}) {
        refhost::ThemeService::instance().setTheme(QLatin1String(theme));
        QCoreApplication::processEvents(); // lays the rows of the business out
        pressUntil(window, "证券代码", Qt::Key_Tab);
        QStringList seen;
        for (const QString &stop : stops(window, Qt::Key_Tab)) {
            pressUntil(window, stop.toUtf8(), Qt::Key_Tab);
            QWidget *field = window.focusWidget();
            if (auto *code = qobject_cast<KV::CStockCodeLineEdit *>(field->parentWidget()))
                field = code; // which paints the frame
            const QImage with = frameOf(*field);
            window.focusWidget()->clearFocus();
            if (frameOf(*field) != with)
                seen << stop;
            field->setFocus(Qt::TabFocusReason);
        }
        EXPECT_EQ(seen.join(QLatin1Char(' ')),
                  QStringLiteral("证券代码 多 开 合约类型 合约号 指定 价格 数量 全部 委托 信用 信用账号"))
            << theme;
    }
    refhost::ThemeService::instance().setTheme(QStringLiteral("dark"));
}

TEST(TicketByKeyboard, TheSourceOfTheContractIsChosenWithKeys)
{
    TicketWindow window;
    window.form->setTrade(kdservice::TraderCredit);
    pressUntil(window, "合约类型", Qt::Key_Tab);
    const auto openList = [] {
        QWidget *popup = QApplication::activePopupWidget();
        return popup == nullptr ? nullptr : popup->findChild<QListWidget *>();
    };
    for (const auto &[open, move, leave] :
         {std::tuple(Qt::Key_Down, Qt::Key_Down, Qt::Key_Space), std::tuple(Qt::Key_F4, Qt::Key_Up, Qt::Key_Escape)}) {
        window.press(open);
        ASSERT_NE(openList(), nullptr);
        QTest::keyClick(openList(), move);
        QTest::keyClick(openList(), leave);
        ASSERT_TRUE(QTest::qWaitFor([&] { return openList() == nullptr; }));
        EXPECT_EQ(window.form->draft().contractSource, QStringLiteral("专项头寸"));
        EXPECT_EQ(window.focus(), QStringLiteral("合约类型"));
    }
}

TEST(TicketByKeyboard, EnterGoesFromFieldToFieldAndTheDirectionHasKeysOfItsOwn)
{
    TicketWindow window;
    QShortcut ofTheWindow(Qt::Key_F1, &window); // means something else outside the ticket
    window.enterCode(QStringLiteral("600519"));
    window.press(Qt::Key_F2);
    EXPECT_EQ(window.sendText(), QStringLiteral("卖出 贵州茅台"));
    window.press(Qt::Key_F1);
    EXPECT_EQ(window.sendText(), QStringLiteral("买入 贵州茅台"));
    window.press(Qt::Key_Return);
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.focus(), QStringLiteral("委托"));
    window.form->setTrade(kdservice::TraderFuture);
    window.press(Qt::Key_F2);
    EXPECT_EQ(window.sendText(), QStringLiteral("卖出开仓 贵州茅台"));
    window.click(window.button("开"));
    EXPECT_EQ(window.sendText(), QStringLiteral("买入平仓 贵州茅台"));
    window.press(Qt::Key_F2);
    EXPECT_EQ(window.sendText(), QStringLiteral("卖出平仓 贵州茅台"));
}
