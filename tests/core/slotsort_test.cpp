#include "rows/slotsort.h"

#include <gtest/gtest.h>
#include <limits>
#include <numeric>
#include <random>

#include "rows/sortkey.h"

namespace SlotSort = core::SlotSort;
namespace SortKey = core::SortKey;

namespace {

const SlotSort::CancelFlag goOn{false};

std::vector<quint32> slotsTo(std::size_t count)
{
    std::vector<quint32> slots(count);
    std::iota(slots.begin(), slots.end(), 0u);
    return slots;
}

QString randomText(std::mt19937_64 &random, int shape)
{
    static const QString prefix = QStringLiteral("20230711-600519-");
    QString text;
    switch (shape) {
    case 0: // order numbers: long, alike at the start
        return prefix + QString::number(random() % 100000);
    case 1: // few different codes
        return QString::number(600000 + random() % 5);
    case 2: // texts of every length that are prefixes of one another
        return QString(static_cast<int>(random() % 30), QLatin1Char('a'));
    case 3: // Chinese names, the last unit differing
        return QStringLiteral("贵州茅台") + QChar(static_cast<ushort>(0x4e00 + random() % 3000));
    default: // null characters and units above and below 256
        for (quint64 i = random() % 6; i > 0; --i)
            text += QChar(static_cast<ushort>(random() % 3 * 255));
        return text;
    }
}

} // namespace

TEST(SlotSort, SortsKeysAndKeepsTheOrderOfEqualOnes)
{
    const quint64 seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    for (const std::size_t count : {0u, 1u, 2u, 511u, 512u, 70000u, 140000u}) {
        for (const quint64 mask : {quint64(0), quint64(3), quint64(0xff00ff), ~quint64(0)}) {
            std::vector<quint64> keys(count);
            std::generate(keys.begin(), keys.end(), [&] { return random() & mask; });
            std::vector<quint32> slots = slotsTo(count);
            std::shuffle(slots.begin(), slots.end(), random);
            std::vector<quint32> expected = slots;
            std::stable_sort(expected.begin(), expected.end(), [&](quint32 a, quint32 b) { return keys[a] < keys[b]; });
            EXPECT_TRUE(SlotSort::byKey(
                slots, [&](quint32 slot) { return keys[slot]; }, goOn));
            EXPECT_TRUE(slots == expected) << count << " keys under mask " << mask;
        }
    }
}

TEST(SlotSort, SortsTextsOfEveryShapeLikeComparingThem)
{
    const quint64 seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    for (int shape = 0; shape < 6; ++shape) {
        for (const bool descending : {false, true}) {
            std::vector<QString> texts(5000);
            std::generate(texts.begin(), texts.end(),
                          [&] { return randomText(random, shape < 5 ? shape : static_cast<int>(random() % 5)); });
            std::vector<quint32> slots = slotsTo(texts.size());
            std::shuffle(slots.begin(), slots.end(), random);
            std::vector<quint32> expected = slots;
            std::stable_sort(expected.begin(), expected.end(), [&](quint32 a, quint32 b) {
                return descending ? texts[b] < texts[a] : texts[a] < texts[b];
            });
            const auto textOf = [&](quint32 slot) -> const QString & { return texts[slot]; };
            EXPECT_TRUE(SlotSort::byText(slots, textOf, descending, goOn));
            EXPECT_TRUE(slots == expected) << "shape " << shape << (descending ? " descending" : " ascending");
        }
    }
}

TEST(SlotSort, ComparesAndMerges)
{
    const quint64 seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    for (const std::size_t count : {0u, 1u, 2u, 3u, 1000u, 1025u}) {
        std::vector<int> values(count);
        std::generate(values.begin(), values.end(), [&] { return static_cast<int>(random() % 50); });
        const auto compare = [&](quint32 a, quint32 b) { return values[a] - values[b]; };
        const auto before = [&](quint32 a, quint32 b) { return values[a] < values[b]; };
        std::vector<quint32> slots = slotsTo(count);
        std::vector<quint32> expected = slots;
        std::stable_sort(expected.begin(), expected.end(), before);
        EXPECT_TRUE(SlotSort::byCompare(slots, compare, goOn));
        EXPECT_TRUE(slots == expected);

        std::vector<quint32> moved;
        std::copy_if(expected.begin(), expected.end(), std::back_inserter(moved), [](quint32 s) { return s % 3 == 1; });
        slots.erase(std::remove_if(slots.begin(), slots.end(), [](quint32 s) { return s % 3 == 1; }), slots.end());
        expected = slots;
        expected.insert(expected.end(), moved.begin(), moved.end());
        std::stable_sort(expected.begin(), expected.end(), before);
        EXPECT_TRUE(SlotSort::mergeByCompare(slots, moved, compare, goOn));
        EXPECT_TRUE(slots == expected);
    }
}

TEST(SlotSort, LosesNoSlotToAComparisonThatContradictsItself)
{
    std::mt19937_64 random(7);
    std::vector<quint32> slots = slotsTo(3000);
    const auto compare = [&](quint32, quint32) { return static_cast<int>(random() % 3) - 1; };
    EXPECT_TRUE(SlotSort::byCompare(slots, compare, goOn));
    EXPECT_TRUE(SlotSort::mergeByCompare(slots, {3000, 3001, 3002}, compare, goOn));
    std::sort(slots.begin(), slots.end());
    EXPECT_TRUE(slots == slotsTo(3003));
}

TEST(SlotSort, StopsWhenItIsCalledOffAndKeepsEverySlot)
{
    SlotSort::CancelFlag cancelled{false};
    std::vector<quint32> slots = slotsTo(5000);
    int comparisons = 0;
    const auto compare = [&](quint32 a, quint32 b) {
        cancelled = ++comparisons == 100;
        return static_cast<int>(b) - static_cast<int>(a);
    };
    EXPECT_FALSE(SlotSort::byCompare(slots, compare, cancelled));
    EXPECT_EQ(comparisons, 100);
    EXPECT_FALSE(SlotSort::byKey(
        slots, [](quint32 slot) { return quint64(0) - slot; }, cancelled));
    EXPECT_FALSE(SlotSort::byText(
        slots, [text = QString("x")](quint32) -> const QString & { return text; }, false, cancelled));
    std::sort(slots.begin(), slots.end());
    EXPECT_TRUE(slots == slotsTo(5000));
}

TEST(SortKey, OrdersValuesBothWaysWithAbsentOnesLast)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double absent = std::numeric_limits<double>::max();
    const std::vector<double> reals = {-infinity,
                                       -absent,
                                       -1.5,
                                       -1e-300,
                                       -0.0,
                                       5e-324,
                                       0.01,
                                       std::nextafter(15.93, 0.0),
                                       15.93,
                                       1e300,
                                       std::nextafter(absent, 0.0),
                                       infinity};
    const std::vector<qint64> integers = {std::numeric_limits<qint64>::min(),    -2, -1, 0, 1, 2147483647,
                                          std::numeric_limits<qint64>::max() - 1};
    for (std::size_t i = 0; i + 1 < reals.size(); ++i) {
        EXPECT_LT(SortKey::ofReal(reals[i], false), SortKey::ofReal(reals[i + 1], false)) << reals[i];
        EXPECT_GT(SortKey::ofReal(reals[i], true), SortKey::ofReal(reals[i + 1], true)) << reals[i];
    }
    for (std::size_t i = 0; i + 1 < integers.size(); ++i) {
        EXPECT_LT(SortKey::ofInteger(integers[i], false), SortKey::ofInteger(integers[i + 1], false)) << integers[i];
        EXPECT_GT(SortKey::ofInteger(integers[i], true), SortKey::ofInteger(integers[i + 1], true)) << integers[i];
    }
    EXPECT_EQ(SortKey::ofReal(-0.0, false), SortKey::ofReal(0.0, false));
    for (const bool descending : {false, true}) {
        for (const double none : {absent, std::nan(""), -std::nan("")})
            EXPECT_EQ(SortKey::ofReal(none, descending), SortKey::noValue);
        EXPECT_EQ(SortKey::ofInteger(std::numeric_limits<qint64>::max(), descending), SortKey::noValue);
        for (const double value : reals)
            EXPECT_LT(SortKey::ofReal(value, descending), SortKey::noValue) << value;
        for (const qint64 value : integers)
            EXPECT_LT(SortKey::ofInteger(value, descending), SortKey::noValue) << value;
    }
}
