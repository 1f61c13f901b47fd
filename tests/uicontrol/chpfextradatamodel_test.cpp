#include "model/chpfextradatamodel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <thread>

#include "model/chpfdata.h"
#include "testrecords.h"
#include "zb/cuiresource.h"

using namespace testrecords;

namespace {

constexpr double noSum = std::numeric_limits<double>::max();

const QColor *color(const char *key)
{
    return ZB::CUiResource::instance()->getColor(QLatin1String(key));
}

KV::CExtraColumnInfo info(const char *text, int precision = 2, utils::EFormatNumberFlag flag = utils::FormatNone)
{
    return KV::CExtraColumnInfo(QString::fromUtf8(text), precision, flag);
}

class HpfExtraDataModel : public testing::Test
{
protected:
    void add(const char *key, int column, const QVariant &value, const QColor *textColor = nullptr)
    {
        extra.addData(QLatin1String(key), column, value, textColor);
    }
    std::string text(const char *key, int column) const
    {
        return extra.getString(QLatin1String(key), column).toStdString();
    }
    bool has(const char *key, int column) const
    {
        QVariant value;
        return extra.getData(QLatin1String(key), column, value);
    }

    KV::CHpfExtraDataModel extra;
};

} // namespace

TEST_F(HpfExtraDataModel, NumbersTakeTheFormatOfTheirColumnAndEverythingElseStaysAsItIs)
{
    extra.addColumn(1, info("--", 1, utils::FormatSign));
    add("a", 1, 5);
    add("b", 1, qint64(4294967298));
    add("c", 1, 1.25);
    add("d", 1, QStringLiteral("说明"));
    add("e", 1, true);
    add("f", 1, 5u);
    add("g", 1, std::numeric_limits<double>::quiet_NaN());
    add("h", 1, std::numeric_limits<int>::max());
    EXPECT_EQ(text("a", 1), "+5");
    EXPECT_EQ(text("b", 1), "+2");
    EXPECT_EQ(text("c", 1), "+1.3");
    EXPECT_EQ(text("d", 1), "说明");
    EXPECT_EQ(text("e", 1), "true");
    EXPECT_EQ(text("f", 1), "5");
    EXPECT_EQ(text("g", 1), "非法值");
    EXPECT_EQ(text("h", 1), "-");
    EXPECT_EQ(text("nobody", 1), "--");
    EXPECT_EQ(extra.getLonglong(QStringLiteral("b"), 1), 4294967298);
    EXPECT_EQ(extra.getInt(QStringLiteral("c"), 1), 1);
    EXPECT_EQ(extra.getDouble(QStringLiteral("c"), 1), 1.25);
    EXPECT_EQ(extra.getInt(QStringLiteral("nobody"), 1) + extra.getLonglong(QStringLiteral("nobody"), 1), 0);
    EXPECT_EQ(extra.getDouble(QStringLiteral("nobody"), 1), 0);
}

TEST_F(HpfExtraDataModel, AColumnWithoutADescriptionKeepsValuesInTheDefaultFormat)
{
    EXPECT_EQ(text("a", 4), "");
    add("a", 4, 1.6, color("clr_global_rise"));
    EXPECT_EQ(text("a", 4), "2");
    EXPECT_EQ(colorName(extra.getColor(QStringLiteral("a"), 4)), "rise");
    EXPECT_FALSE(extra.exist(4));
    extra.addColumn(4, info("x", 3));
    EXPECT_EQ(text("a", 4), "1.600");
    EXPECT_TRUE(extra.exist(4));
}

TEST_F(HpfExtraDataModel, DescriptionsAreFoundForAnyColumnNumber)
{
    for (const int column : {0, 62, 63, 64, 1000, -3})
        EXPECT_FALSE(extra.exist(column)) << column;
    for (const int column : {0, 63, 1000})
        extra.addColumn(column, info(QByteArray::number(column)));
    for (const int column : {1, 62, 64, 999, -3})
        EXPECT_FALSE(extra.exist(column)) << column;
    KV::CExtraColumnInfo found;
    for (const int column : {0, 63, 1000}) {
        EXPECT_TRUE(extra.exist(column)) << column;
        EXPECT_TRUE(extra.getColumnInfo(column, found));
        EXPECT_EQ(found.text.toInt(), column);
    }
    EXPECT_FALSE(extra.getColumnInfo(64, found));
    EXPECT_EQ(found.text, QStringLiteral("1000"));
    extra.removeColumn(63);
    EXPECT_FALSE(extra.exist(63));
    EXPECT_TRUE(extra.exist(1000));
}

TEST_F(HpfExtraDataModel, AValueThatLooksLikeAnEmptyCellEmptiesTheCell)
{
    extra.addColumn(1, info("0"));
    add("a", 1, 0, color("clr_text_default"));
    EXPECT_FALSE(has("a", 1));
    add("a", 1, 0, color("clr_global_rise"));
    EXPECT_TRUE(has("a", 1));
    add("a", 1, QStringLiteral("0"), color("clr_text_default"));
    EXPECT_FALSE(has("a", 1));
    EXPECT_EQ(colorName(extra.getColor(QStringLiteral("a"), 1)), "default");
    add("a", 1, 0, nullptr); // no colour is not the default colour
    EXPECT_TRUE(has("a", 1));
    EXPECT_EQ(colorName(extra.getColor(QStringLiteral("a"), 1)), "default");
    add("a", 2, QStringLiteral("0"), color("clr_text_default")); // not registered
    EXPECT_TRUE(has("a", 2));
}

TEST_F(HpfExtraDataModel, ClearingEndsStatisticsOnlyAndClearingColumnsForgetsEverything)
{
    extra.addColumn(1, info("空"));
    extra.setColumnStatEnable(1, true);
    add("a", 1, 2.5);
    EXPECT_EQ(extra.getStatData(1), 2.5);
    extra.clear();
    EXPECT_EQ(extra.getStatData(1), noSum);
    EXPECT_FALSE(extra.columnStatEnable(1) || extra.hasStatistics());
    EXPECT_EQ(text("a", 1), "2.50");
    EXPECT_TRUE(extra.exist(1));
    extra.setColumnStatEnable(1, true);
    EXPECT_EQ(extra.getStatData(1), 0);
    extra.clearColumn();
    EXPECT_EQ(text("a", 1), "");
    EXPECT_FALSE(extra.exist(1) || has("a", 1) || extra.hasStatistics());
}

TEST_F(HpfExtraDataModel, SumsLeaveOutWhatIsNoNumber)
{
    extra.setColumnStatEnable(1, true);
    add("a", 1, 0.1);
    add("b", 1, std::numeric_limits<double>::max());
    add("c", 1, std::numeric_limits<qint64>::max());
    add("d", 1, std::numeric_limits<int>::max());
    add("e", 1, QStringLiteral("说明"));
    add("f", 1, QStringLiteral("0.2"));
    EXPECT_EQ(extra.getStatData(1), 0.1 + 0.2);
    add("g", 1, std::numeric_limits<double>::infinity());
    EXPECT_EQ(extra.getStatData(1), std::numeric_limits<double>::infinity());
    extra.removeData(QStringLiteral("g"));
    EXPECT_EQ(extra.getStatData(1), 0.1 + 0.2);
    EXPECT_EQ(extra.getStatData(2), noSum);
}

TEST_F(HpfExtraDataModel, EveryChangeIsAnnouncedWithoutTheLock)
{
    int changes = 0;
    extra.setChangeListener([&] {
        ++changes;
        has("a", 1);
    });
    extra.addColumn(1, info("x"));
    add("a", 1, 1);
    extra.setColumnStatEnable(1, true);
    extra.removeData(QStringLiteral("a"));
    extra.removeData(QStringLiteral("a"));
    extra.clear();
    extra.clearColumn();
    EXPECT_EQ(changes, 6);
}

TEST_F(HpfExtraDataModel, SumsFollowAnySequenceOfChanges)
{
    const Guarded<> model;
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&random](unsigned end) { return static_cast<int>(random() % end); };
    constexpr int columns = 3;
    constexpr int keys = 6;

    std::map<std::pair<int, int>, int> values; // by key and column
    std::map<int, std::set<int>> counted;      // keys in the sum of each column that has one
    std::set<int> judged;                      // columns whose rows were named since their sum began
    for (int step = 0; step < 3000; ++step) {
        const int key = below(keys);
        const int column = below(columns);
        const QString keyText = QStringLiteral("k%1").arg(key);
        switch (below(8)) {
        case 0:
            extra.setColumnStatEnable(column, true);
            counted[column].clear();
            judged.erase(column);
            break;
        case 1:
            extra.removeData(keyText);
            for (int other = 0; other < columns; ++other) {
                values.erase({key, other});
                if (counted.count(other))
                    counted[other].erase(key);
            }
            break;
        case 2: {
            QList<ZB::IBaseHpfTableModel::Row> rows{nullptr};
            for (auto &sum : counted)
                sum.second.clear();
            for (int shown = 0; shown < keys; ++shown) {
                if (below(2) == 0)
                    continue;
                rows.append(makeRow(model.pointer(), makeTicket("k" + std::to_string(shown))));
                for (auto &[summed, members] : counted)
                    if (values.count({shown, summed}))
                        members.insert(shown);
            }
            for (const auto &sum : counted)
                judged.insert(sum.first);
            extra.reCalcStatOnFilter(rows);
            break;
        }
        case 3:
            if (below(20) == 0) {
                extra.clear();
                counted.clear();
                judged.clear();
            }
            break;
        default:
            if (counted.count(column) && (judged.count(column) == 0 || values.count({key, column}) == 0))
                counted[column].insert(key);
            values[{key, column}] = below(1000) - 500;
            extra.addData(keyText, column, values[{key, column}], nullptr);
        }
        for (int summed = 0; summed < columns; ++summed) {
            double expected = counted.count(summed) ? 0 : noSum;
            if (counted.count(summed))
                for (const int member : counted[summed])
                    expected += values[{member, summed}];
            ASSERT_EQ(extra.getStatData(summed), expected) << "step " << step << " column " << summed;
        }
    }
}

TEST_F(HpfExtraDataModel, ValuesThatChangeDuringACountAreInTheSum)
{
    const Guarded<> model;
    constexpr int rows = 4000;
    extra.setColumnStatEnable(1, true);
    QList<ZB::IBaseHpfTableModel::Row> shown;
    for (int row = 0; row < rows; ++row) {
        const std::string key = "k" + std::to_string(row);
        add(key.c_str(), 1, 1);
        if (row % 2 == 0)
            shown.append(makeRow(model.pointer(), makeTicket(key)));
    }
    std::atomic<bool> ends{false};
    std::thread counting([&] {
        for (int round = 0; round < 20; ++round)
            extra.reCalcStatOnFilter(shown);
        ends = true;
    });
    int turns = 0;
    do {
        add(("k" + std::to_string(turns * 37 % rows)).c_str(), 1, turns % 5);
        const double sum = extra.getStatData(1);
        EXPECT_TRUE(sum > 500 && sum < 8100) << "half a sum is told: " << sum;
        ++turns;
    } while (!ends);
    counting.join();
    double expected = 0;
    for (const auto &row : shown)
        expected += extra.getInt(row->qsKey(), 1);
    EXPECT_EQ(extra.getStatData(1), expected);
    extra.reCalcStatOnFilter({});
    EXPECT_EQ(extra.getStatData(1), 0);
}
