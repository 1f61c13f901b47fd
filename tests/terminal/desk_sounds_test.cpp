#include <QtCore/QElapsedTimer>
#include <QtTest/QTest>
#include <gtest/gtest.h>

#include "desk/desksounds.h"

using namespace terminal;

TEST(DeskSounds, OneToneIsAFillAndTwoAreARejection)
{
    QElapsedTimer sinceTone;
    std::string heard; // tones as dots, rests as blanks
    int tones = 0;
    DeskSounds sounds([&] {
        constexpr int shortestRest = 450; // in the middle between the two pauses
        if (sinceTone.isValid() && sinceTone.elapsed() > shortestRest)
            heard += ' ';
        heard += '.';
        ++tones;
        sinceTone.start();
    });
    const auto waitFor = [&](int count) { return QTest::qWaitFor([&] { return tones == count; }); };
    sounds.play(true);
    EXPECT_EQ(heard, ".") << "at once";
    for (int i = 0; i < 20; ++i) {
        sounds.play(true);
        sounds.play(false);
    }
    EXPECT_TRUE(waitFor(3));
    sounds.play(true); // one waits already
    EXPECT_TRUE(waitFor(4));
    EXPECT_EQ(heard, ". .. .");
    QTest::qWait(1000);
    EXPECT_EQ(tones, 4);
    sounds.play(false);
    EXPECT_TRUE(waitFor(6));
    EXPECT_EQ(heard, ". .. . ..");
}
