#include "stats/exactsum.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

#include "stats/exactintegersum.h"

using core::ExactIntegerSum;
using core::ExactSum;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

double sumOf(const std::vector<double> &values)
{
    ExactSum sum;
    for (const double value : values)
        sum.add(value);
    return sum.value();
}

quint64 bitsOf(double value)
{
    quint64 bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

double anyFinite(std::mt19937_64 &random)
{
    for (;;) {
        const quint64 bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        if (std::isfinite(value))
            return value;
    }
}

} // namespace

TEST(ExactSum, RoundsTheTrueSumOnce)
{
    const double ulp = std::ldexp(1.0, -52);
    const struct
    {
        const char *what;
        std::vector<double> values;
        double sum;
    } cases[] = {
        {"nothing", {}, 0.0},
        {"a negative zero", {-0.0}, 0.0},
        {"cancellation that plain doubles lose", {1e100, 1.0, -1e100}, 1.0},
        {"ten tenths are slightly more than one, and round to it", std::vector<double>(10, 0.1), 1.0},
        {"half an ulp goes to the even neighbour below", {1.0, ulp / 2}, 1.0},
        {"half an ulp goes to the even neighbour above", {1.0 + ulp, ulp / 2}, 1.0 + 2 * ulp},
        {"the smallest bit breaks the tie", {1.0, ulp / 2, smallest}, 1.0 + ulp},
        {"and from below", {1.0 + ulp, ulp / 2, -smallest}, 1.0 + ulp},
        {"rounding carries into the next power of two", {2.0 - ulp, ulp / 2}, 2.0},
        {"a negative smallest", {smallest, -3 * smallest}, -2 * smallest},
        {"across the border of the normal range",
         {std::numeric_limits<double>::min(), -smallest},
         std::numeric_limits<double>::min() - smallest},
        {"the largest", {largest, -largest, largest}, largest},
        {"more than the largest in between", {largest, largest, -largest}, largest},
        {"more than the largest", {largest, largest}, infinity},
        {"less than half an ulp above the largest", {largest, std::ldexp(1.0, 969)}, largest},
        {"half an ulp above the largest", {largest, std::ldexp(1.0, 970)}, infinity},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(test.what);
        EXPECT_EQ(bitsOf(sumOf(test.values)), bitsOf(test.sum)) << sumOf(test.values) << " for " << test.sum;
    }
}

TEST(ExactSum, NansAndInfinitiesLeaveNoTraceOnceRemoved)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    ExactSum sum;
    sum.add(1.5);
    sum.add(infinity);
    EXPECT_EQ(sum.value(), infinity);
    sum.add(-infinity);
    EXPECT_TRUE(std::isnan(sum.value()));
    sum.subtract(infinity);
    EXPECT_EQ(sum.value(), -infinity);
    sum.add(nan);
    EXPECT_TRUE(std::isnan(sum.value()));
    sum.subtract(-infinity);
    EXPECT_TRUE(std::isnan(sum.value()));
    sum.subtract(-nan);
    EXPECT_EQ(sum.value(), 1.5);
}

TEST(ExactSum, EqualsARecountAfterAnyAdditionsAndRemovals)
{
    const quint64 seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    ExactSum sum;
    std::vector<double> present;
    for (int step = 0; step < 20000; ++step) {
        const bool remove = !present.empty() && random() % 5 < 2;
        if (remove) {
            std::swap(present[random() % present.size()], present.back());
            sum.subtract(present.back());
            present.pop_back();
        } else {
            present.push_back(random() % 2 == 0 ? anyFinite(random) : static_cast<double>(random() % 100000) * 0.01);
            sum.add(present.back());
        }
        if (step % 500 == 0) {
            ASSERT_EQ(bitsOf(sum.value()), bitsOf(sumOf(present))) << "step " << step;
        }
    }
    while (!present.empty()) {
        sum.subtract(present.back());
        present.pop_back();
    }
    EXPECT_EQ(bitsOf(sum.value()), bitsOf(0.0));
}

TEST(ExactSum, AgreesWithIntegerArithmetic)
{
    const quint64 seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    ExactSum sum;
    qint64 cents = 0;
    for (int i = 0; i < 100000; ++i) {
        const auto value = static_cast<qint64>(random() % 2000000001) - 1000000000;
        cents += value;
        sum.add(static_cast<double>(value) / 1024);
    }
    EXPECT_EQ(sum.value(), static_cast<double>(cents) / 1024);
}

TEST(ExactSum, KeepsEveryBitThroughMillionsOfLargeAdditions)
{
    ExactSum sum;
    sum.add(smallest);
    for (int i = 0; i < 3000000; ++i)
        sum.add(1.7e308);
    for (int i = 0; i < 3000000; ++i)
        sum.add(-1.7e308);
    EXPECT_EQ(sum.value(), smallest);
}

TEST(ExactIntegerSum, SaturatesOnReadingOnlyAndNeverAtTheAbsentValue)
{
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    constexpr qint64 least = std::numeric_limits<qint64>::min();
    ExactIntegerSum sum;
    sum.add(most);
    EXPECT_EQ(sum.value(), most - 1);
    sum.add(-2);
    EXPECT_EQ(sum.value(), most - 2);
    for (int i = 0; i < 1000; ++i)
        sum.add(most);
    EXPECT_EQ(sum.value(), most - 1);
    EXPECT_EQ(sum.toDouble(), 1001 * std::ldexp(1.0, 63));
    for (int i = 0; i < 1000; ++i)
        sum.subtract(most);
    sum.subtract(most - 2);
    EXPECT_EQ(sum.value(), 0);

    sum.add(least);
    sum.add(-1);
    EXPECT_EQ(sum.value(), least);
    EXPECT_EQ(sum.toDouble(), -std::ldexp(1.0, 63));
    sum.subtract(-7);
    EXPECT_EQ(sum.value(), least + 6);
    sum.subtract(least);
    sum.subtract(7);
    EXPECT_EQ(sum.toDouble(), -1.0);
}
