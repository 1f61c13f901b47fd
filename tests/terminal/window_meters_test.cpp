#include <QtTest/QTest>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "window/framemeter.h"
#include "window/stallmeter.h"

using namespace terminal;

TEST(WindowMeters, PercentilesAreThoseOfTheNewestFramesOnly)
{
    FrameMeter meter;
    EXPECT_EQ(meter.percentile(0.99), 0);

    const unsigned seed = 7;
    std::mt19937 random(seed);
    std::vector<float> all;
    for (int i = 0; i < 3 * FrameMeter::capacity; ++i) {
        all.push_back(static_cast<float>(random() % 1000) / 10);
        meter.add(static_cast<double>(all.back()));
        if (i % 997 != 0)
            continue;
        for (const int frames : {1, 100, FrameMeter::capacity}) {
            std::vector<float> newest(all.end() - std::min<std::ptrdiff_t>(frames, i + 1), all.end());
            std::sort(newest.begin(), newest.end());
            for (const double share : {0.0, 0.5, 0.99, 1.0}) {
                const double rank = std::max(1.0, std::ceil(share * static_cast<double>(newest.size())));
                EXPECT_EQ(meter.percentileOfNewest(share, frames), static_cast<double>(newest[size_t(rank) - 1]))
                    << "seed " << seed << ", after " << i + 1 << " frames, newest " << frames << ", share " << share;
            }
        }
    }
    EXPECT_EQ(meter.count(), 3 * FrameMeter::capacity);
    EXPECT_EQ(meter.worst(), static_cast<double>(*std::max_element(all.begin(), all.end())));
    meter.clear();
    EXPECT_EQ(meter.count(), 0);
    EXPECT_EQ(meter.percentile(1), 0);
}

TEST(WindowMeters, AStallIsSeenWhileItLastsAndAfterwards)
{
    StallMeter meter;
    EXPECT_EQ(meter.worst(), 0);
    meter.restart();
    QTest::qSleep(60);
    EXPECT_GE(meter.worst(), 50);
    QTest::qWait(20);
    EXPECT_GE(meter.worst(), 50);
    EXPECT_GE(meter.takeRecentWorst(), 50);
    EXPECT_LT(meter.takeRecentWorst(), 50);

    meter.restart();
    EXPECT_LT(meter.worst(), 50);
    meter.stop();
    QTest::qSleep(60);
    EXPECT_LT(meter.worst(), 50);
}
