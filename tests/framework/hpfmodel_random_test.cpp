#include <gtest/gtest.h>
#include <random>

#include "modeltwins.h"

using namespace modeltest;

TEST(HpfModelRandom, AgreesWithThePlainestModelAfterAnyOperations)
{
    const quint64 seed = std::random_device()();
    for (quint64 round = 0; round < 4; ++round) {
        SCOPED_TRACE(seed + round);
        std::mt19937_64 random(seed + round);
        ModelTwins twins([&random](int limit) { return choose(random, limit); }, 250);
        for (int step = 0; step < 1200; ++step) {
            twins.changeSomething();
            if (step % 3 == 0) {
                ASSERT_EQ(twins.difference().toStdString(), "") << "step " << step;
            }
        }
    }
}

TEST(HpfModelRandom, AgreesWithThePlainestModelAlsoWhereTwoThreadsRead)
{
    const quint64 seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    ModelTwins twins([&random](int limit) { return choose(random, limit); }, 250);
    twins.fill(24000);
    for (int step = 0; step < 120; ++step) {
        twins.changeSomething();
        if (step % 15 == 14) {
            ASSERT_EQ(twins.difference().toStdString(), "") << "step " << step;
        }
    }
}
