#include "filter/valuefilter.h"

#include <gtest/gtest.h>

using core::ValueFilter;

TEST(ValueFilter, EachTypeMatchesItsWay)
{
    const struct
    {
        int type;
        QSet<QString> values;
        QString text;
        bool passes;
    } cases[] = {
        {0, {"已成", "Abc"}, "Abc", true},
        {0, {"已成", "Abc"}, "abc", false},
        {0, {"已成", "Abc"}, "Abcd", false},
        {0, {"已成"}, "", false},
        {0, {""}, "", true},
        {0, {""}, " ", false},
        {1, {"6005"}, "600519", true},
        {1, {"B", "x"}, "sub", true},
        {1, {"é"}, "CAFÉ", true},
        {1, {"茅台"}, "贵州茅台", true},
        {1, {"茅台"}, "贵州 茅 台", false},
        {1, {"", "z"}, "abc", false},
        {1, {""}, "abc", false},
        {1, {""}, "", false},
        {2, {"abc", "x"}, "abc", false},
        {2, {"abc", "x"}, "ABC", true},
        {2, {""}, "", false},
        {3, {"abc"}, "abc", false},
        {-1, {"abc"}, "abc", false},
        {0, {}, "abc", true},
        {1, {}, "", true},
        {7, {}, "abc", true},
    };
    for (const auto &test : cases) {
        EXPECT_EQ(ValueFilter(test.type, test.values).passes(test.text), test.passes)
            << test.type << ' ' << qPrintable(QStringList(test.values.values()).join('|')) << " on "
            << qPrintable(test.text);
    }
}

TEST(ValueFilter, ConditionsOnOneColumnMustAllBeMet)
{
    ValueFilter filter;
    EXPECT_TRUE(filter.isEmpty());
    filter.narrow(0, {});
    EXPECT_TRUE(filter.isEmpty());
    EXPECT_TRUE(filter.passes(QString()));

    filter.narrow(1, {"60"});
    filter.narrow(0, {"600000", "300060", "1"});
    EXPECT_FALSE(filter.isEmpty());
    EXPECT_TRUE(filter.passes("600000"));
    EXPECT_TRUE(filter.passes("300060"));
    EXPECT_FALSE(filter.passes("1"));
    EXPECT_FALSE(filter.passes("600001"));
    filter.narrow(9, {"600000"});
    EXPECT_FALSE(filter.passes("600000"));
}
