#include <functional>
#include <gtest/gtest.h>
#include <vector>

#include "soak/processfigures.h"

namespace {

/// A minute of samples that wander a little, each changed by `change`.
std::string grown(const std::function<void(int, soak::Figures &)> &change)
{
    constexpr int count = 240;
    std::vector<soak::Figures> samples;
    for (int i = 0; i < count; ++i) {
        soak::Figures figures{i / 4.0, 150.0 + i % 7, 7, 6, 8.0 + i % 5};
        change(i, figures);
        samples.push_back(figures);
    }
    return soak::growth(samples).toStdString();
}

} // namespace

TEST(SoakGrowth, IsToldOfEverythingThatIsMoreInTheLastThird)
{
    EXPECT_EQ(grown([](int, soak::Figures &) {}), "");
    EXPECT_EQ(grown([](int i, soak::Figures &figures) { figures.megabytes += i < 80 ? 0 : 100; }), "")
        << "the first third warms up";
    EXPECT_EQ(grown([](int i, soak::Figures &figures) { figures.megabytes += i * 0.3; }),
              "memory by 23.9 MB from 189.1 MB");
    EXPECT_EQ(grown([](int i, soak::Figures &figures) { figures.threads += i > 150; }), "threads from 7 to 8");
    EXPECT_EQ(grown([](int i, soak::Figures &figures) { figures.descriptors += i / 20; }), "descriptors from 10 to 14");
    EXPECT_EQ(grown([](int i, soak::Figures &figures) { figures.descriptors += i % 9 == 0 ? i / 50 : 0; }), "")
        << "a file that is open for a moment";
    EXPECT_EQ(grown([](int i, soak::Figures &figures) { figures.worstStall *= i < 160 ? 1 : 3; }),
              "stalls from 10 to 30 ms");
}

TEST(SoakGrowth, OneStallIsNoGrowthUnlessTheWindowStoodStill)
{
    EXPECT_EQ(grown([](int i, soak::Figures &figures) { figures.worstStall = i == 200 ? 500 : 8; }), "");
    EXPECT_EQ(grown([](int i, soak::Figures &figures) { figures.worstStall = i % 100 == 99 ? 2500 : 8; }),
              "the window stood still for 2500 ms");
    EXPECT_EQ(grown([](int i, soak::Figures &figures) {
                  figures.worstStall = i % 100 == 99 ? 2500 : 8;
                  figures.waited = i % 100 == 99 ? 700 : 1;
              }),
              "")
        << "others had the cores";
}

TEST(SoakGrowth, AShortRunIsNoProofAndThisProcessHasFigures)
{
    EXPECT_FALSE(soak::growth(std::vector<soak::Figures>(8)).isEmpty());
    const soak::Figures here = soak::presentFigures();
    EXPECT_GT(here.megabytes, 1);
    EXPECT_GE(here.threads, 1);
    EXPECT_GE(here.descriptors, 3);
}
