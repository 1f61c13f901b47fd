#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QFocusEvent>

#include "uicontrol/logwindow.h"
#include "zb/cuiresource.h"

namespace {

/// A log of 20 rows of which a page shows 5, the last line being 103 characters wide.
class LogInput : public ::testing::Test
{
protected:
    LogInput() : window(310, 100)
    {
        QStringList lines;
        for (int i = 0; i < 19; ++i)
            lines << QString::number(i);
        window.add(lines << QStringLiteral("19").leftJustified(103, QLatin1Char('.')));
    }

    /// Top row and copied text, "top:text".
    std::string state()
    {
        return std::to_string(window.vertical->value()) + ":" + window.copied().left(2).toStdString();
    }

    std::string after(int key, int times = 1)
    {
        window.press(key, Qt::NoModifier, times);
        return state();
    }
    int sidewaysAfter(int key)
    {
        window.press(key);
        return window.horizontal->value();
    }

    LogWindow window;
};

} // namespace

TEST_F(LogInput, UpMovesTheSelectionAndTheTopRowFollowsIt)
{
    EXPECT_EQ(after(Qt::Key_Up), "15:19") << "nothing selected: the last visible row";
    EXPECT_EQ(after(Qt::Key_Up, 4), "15:15");
    EXPECT_EQ(after(Qt::Key_Up), "14:14");
    EXPECT_EQ(after(Qt::Key_Up, 30), "0:0");
    window.vertical->setSliderPosition(10);
    EXPECT_EQ(after(Qt::Key_Up), "10:14") << "the selected row was out of sight";
}

TEST_F(LogInput, DownMovesTheSelectionAndThePageFollowsIt)
{
    window.press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(after(Qt::Key_Down), "0:0") << "nothing selected: the top row";
    EXPECT_EQ(after(Qt::Key_Down, 4), "0:4");
    EXPECT_EQ(after(Qt::Key_Down), "1:5");
    EXPECT_EQ(after(Qt::Key_Down, 30), "15:19");
    window.vertical->setSliderPosition(3);
    EXPECT_EQ(after(Qt::Key_Down), "3:3");
}

TEST_F(LogInput, PagesAndEndsMoveTheTopRowOnly)
{
    window.click(1);
    const struct
    {
        int key;
        Qt::KeyboardModifiers modifiers;
        int top;
    } steps[] = {{Qt::Key_PageUp, Qt::NoModifier, 10},     {Qt::Key_PageUp, Qt::NoModifier, 5},
                 {Qt::Key_PageDown, Qt::NoModifier, 10},   {Qt::Key_Home, Qt::ControlModifier, 0},
                 {Qt::Key_PageUp, Qt::NoModifier, 0},      {Qt::Key_End, Qt::ControlModifier, 15},
                 {Qt::Key_PageDown, Qt::NoModifier, 15},   {Qt::Key_Home, Qt::NoModifier, 15},
                 {Qt::Key_PageUp, Qt::ShiftModifier, 15},  {Qt::Key_Home, Qt::AltModifier, 15},
                 {Qt::Key_PageUp, Qt::KeypadModifier, 10}, {Qt::Key_A, Qt::NoModifier, 10}};
    for (const auto &step : steps) {
        window.press(step.key, step.modifiers);
        EXPECT_EQ(window.vertical->value(), step.top) << step.key;
    }
    EXPECT_EQ(window.copied(), QStringLiteral("16"));
    EXPECT_EQ(window.keysSeen, 4) << "keys without effect go on to the parent";
}

TEST_F(LogInput, MovingEndsSelectAllButSidewaysDoesNot)
{
    const struct
    {
        int key;
        Qt::KeyboardModifiers modifiers;
        bool ends;
    } keys[] = {{Qt::Key_Left, Qt::NoModifier, false},     {Qt::Key_Right, Qt::NoModifier, false},
                {Qt::Key_Up, Qt::NoModifier, true},        {Qt::Key_Down, Qt::NoModifier, true},
                {Qt::Key_PageUp, Qt::NoModifier, true},    {Qt::Key_PageDown, Qt::NoModifier, true},
                {Qt::Key_Home, Qt::ControlModifier, true}, {Qt::Key_End, Qt::ControlModifier, true}};
    for (const auto &key : keys) {
        window.press(Qt::Key_A, Qt::ControlModifier);
        EXPECT_GE(window.markedRows().size(), 5U);
        window.press(key.key, key.modifiers);
        EXPECT_EQ(window.markedRows().size() < 5U, key.ends) << key.key;
    }
}

TEST_F(LogInput, SidewaysKeysScrollBy200UpToTheWidestLine)
{
    const int overflow = 103 * 6 - 310;
    EXPECT_EQ(sidewaysAfter(Qt::Key_Left), 0);
    EXPECT_EQ(sidewaysAfter(Qt::Key_Right), 200);
    EXPECT_EQ(sidewaysAfter(Qt::Key_Right), overflow);
    EXPECT_EQ(sidewaysAfter(Qt::Key_Left), overflow - 200);
    EXPECT_EQ(sidewaysAfter(Qt::Key_Left), 0);
}

TEST_F(LogInput, AFocusThatCameByKeyboardIsFramedUntilTheMouseGoesOn)
{
    const QRgb accent = ZB::CUiResource::instance()->getColor(QStringLiteral("clr_accent"))->rgb();
    const auto isFramed = [&] { return window.picture().pixel(150, 0) == accent; };
    const auto send = [&](QEvent::Type type, Qt::FocusReason reason) {
        QFocusEvent event(type, reason);
        QCoreApplication::sendEvent(window.log, &event);
    };
    EXPECT_FALSE(isFramed());
    send(QEvent::FocusIn, Qt::TabFocusReason);
    EXPECT_TRUE(isFramed());
    send(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    EXPECT_FALSE(isFramed()) << "another window has the keyboard";
    send(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    EXPECT_TRUE(isFramed()) << "back where it was";
    window.click(1);
    EXPECT_FALSE(isFramed()) << "the selected row shows it";
    send(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    send(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    EXPECT_FALSE(isFramed()) << "and goes on showing it";
    send(QEvent::FocusIn, Qt::BacktabFocusReason);
    EXPECT_TRUE(isFramed());
    send(QEvent::FocusOut, Qt::TabFocusReason);
    EXPECT_FALSE(isFramed());
}

TEST_F(LogInput, NoKeySelectsARowOfAnEmptyLog)
{
    window.log->clear();
    for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Left, Qt::Key_Right})
        window.press(key);
    window.press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_TRUE(window.markedRows().empty());
    window.add({QStringLiteral("first"), QStringLiteral("second")});
    EXPECT_TRUE(window.markedRows().empty()) << "nor one that comes later";
}

TEST_F(LogInput, TheWheelScrollsRowsAndNeverReachesTheParent)
{
    window.wheel({0, -120});
    EXPECT_EQ(window.vertical->value(), 15) << "at the bottom already";
    window.wheel({0, 120});
    EXPECT_LT(window.vertical->value(), 15);
    window.press(Qt::Key_Home, Qt::ControlModifier);
    window.wheel({0, 120});
    EXPECT_EQ(window.vertical->value(), 0);
    window.resizeLog(310, 500);
    window.wheel({0, -120}); // everything fits
    window.wheel({-120, 0}); // less than a width to scroll
    EXPECT_EQ(window.horizontal->value(), 0);
    EXPECT_EQ(window.wheelsSeen, 0);
}

TEST_F(LogInput, TheWheelScrollsSidewaysWhereMoreThanAWidthIsHidden)
{
    window.resizeLog(200, 100);
    ASSERT_GT(window.horizontal->maximum(), 200);
    window.wheel({120, 0});
    EXPECT_EQ(window.horizontal->value(), 0) << "at the left already";
    window.wheel({-120, 0});
    const int scrolled = window.horizontal->value();
    EXPECT_GT(scrolled, 0);
    for (int i = 0; i < 10; ++i)
        window.wheel({-120, 0});
    EXPECT_EQ(window.horizontal->value(), window.horizontal->maximum());
    window.wheel({120, 0});
    EXPECT_LT(window.horizontal->value(), window.horizontal->maximum());
    EXPECT_EQ(window.wheelsSeen, 0);
}

TEST_F(LogInput, OnlyScrollEventsAreDealtWith)
{
    EXPECT_FALSE(window.log->handleEvent(18, 0, 0, QString(), nullptr));
    EXPECT_FALSE(window.log->handleEvent(1284, 0, 0, QString(), nullptr));
    EXPECT_TRUE(window.log->handleEvent(17, 0, 3, QString(), nullptr));
    EXPECT_TRUE(window.log->handleEvent(17, 5, 3, QString(), nullptr));
    EXPECT_TRUE(window.events.isEmpty()) << "the bars' events stay in the log";
}
