#include <gtest/gtest.h>
#include <random>

#include "modelrows.h"
#include "table/hpfmodelaccess.h"

using namespace modeltest;
using SortColumns = QVector<QPair<int, int>>;

namespace {

QString conditionsText(const ZB::FilterConditions &conditions)
{
    QStringList all;
    for (const ZB::FilterCondition &condition : conditions) {
        QStringList texts = condition.second.values();
        texts.sort();
        all.append(QString::number(condition.first) + '(' + texts.join(' ') + ')');
    }
    return all.join(' ');
}

} // namespace

TEST(HpfModelFilter, OfAnUnknownTypeNothingPassesAndAnUnknownColumnHasEmptyTexts)
{
    ValueModel model;
    fillFour(model);
    const auto passing = [&model](int column, int type, const QSet<QString> &values) {
        model.clearFilter();
        model.filter(column, type, values);
        return shownKeys(model);
    };
    EXPECT_EQ(passing(Name, 5, {"xx"}), "");
    EXPECT_EQ(passing(99, 0, {"x"}), "");
    EXPECT_EQ(passing(99, 0, {""}), "a b c d");
}

TEST(HpfModelFilter, TellsAColumnsFiltersInConditionsThatPassTheSame)
{
    struct Case
    {
        ZB::FilterConditions set;
        const char *told;
    };
    const auto exact = ZB::FilterExact;
    const auto contains = ZB::FilterContains;
    const auto except = ZB::FilterExcept;
    const Case cases[] = {
        {{{exact, {"ax", "b", "bx"}}}, "0(ax b bx)"},
        {{{exact, {"ax", "b", "bx"}}, {exact, {"b", "bx", "c"}}}, "0(b bx)"},
        {{{exact, {"b"}}, {exact, {"c"}}}, "0()"},
        {{{exact, {"b", "bx"}}, {contains, {"X"}}}, "0(bx)"},
        {{{contains, {"X"}}, {exact, {"b", "bx"}}}, "0(bx)"},
        {{{except, {"b", "c"}}, {exact, {"b", "bx"}}}, "0(bx)"},
        {{{contains, {"b"}}, {contains, {"x", "y"}}}, "1(b) 1(x y)"},
        {{{contains, {"b"}}, {contains, {"x"}}, {contains, {"b"}}}, "1(b) 1(x)"},
        {{{except, {"b"}}, {contains, {"x"}}, {except, {"c", "d"}}}, "1(x) 2(b c d)"},
        {{{except, {"b"}}, {except, {"b", "c"}}}, "2(b c)"},
        {{{except, {"b"}}, {contains, {""}}}, "0()"},
        {{{contains, {"b"}}, {ZB::EFilterType(5), {"b"}}}, "0()"},
    };
    ValueModel model;
    for (const Case &each : cases) {
        for (int i = 0; i < each.set.size(); ++i) {
            const auto change = i == 0 ? &ValueModel::filter : &ValueModel::narrow;
            (model.*change)(Name, each.set[i].first, each.set[i].second);
        }
        EXPECT_EQ(conditionsText(model.columnFilters().value(Name)), QString(each.told));
    }
}

TEST(HpfModelFilter, WhatItTellsOfRandomConditionsLetsTheSameRowsPass)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto some = [&random](int count) { return int(random() % unsigned(count)); };
    const auto text = [&] { return QString("xYz").left(some(4)) + QString("ab").right(some(3)); };
    ValueModel model;
    ValueModel again;
    for (ValueModel *each : {&model, &again})
        for (int i = 0; i < 12; ++i)
            each->addData(
                makeRow("k" + std::to_string(i), 0, 0, 0, QString("xYz").left(i % 4) + QString("ab").right(i / 4)));
    for (int step = 0; step < 300; ++step) {
        model.clearFilter();
        again.clearFilter();
        QStringList set;
        for (int conditions = 1 + some(4); conditions > 0; --conditions) {
            QSet<QString> values{text(), text(), text()};
            const int type = some(20) == 0 ? 7 : some(3);
            model.narrow(Name, type, values);
            set.append(conditionsText({{ZB::EFilterType(type), values}}));
        }
        const ZB::FilterConditions told = model.columnFilters().value(Name);
        bool any = true;
        for (const ZB::FilterCondition &condition : told) {
            any = any && !(condition.first == ZB::FilterExact && condition.second.isEmpty());
            again.narrow(Name, condition.first, condition.second);
        }
        ASSERT_EQ(any ? shownKeys(again) : QString(), shownKeys(model)) << set.join(" and ").toStdString();
    }
}

TEST(HpfModelFilter, MakesTextOncePerValueAndNotPerRow)
{
    ValueModel model;
    std::vector<RowPtr> rows;
    for (int i = 0; i < 3000; ++i) {
        rows.push_back(makeRow(std::to_string(i), 1, i % 4 + 1));
        model.addData(rows.back());
    }
    model.filter(Status, 0, {"S2"});
    EXPECT_EQ(model.size(), 750);
    for (int i = 0; i < 500; ++i) {
        rows.push_back(makeRow(std::to_string(i), 1, i % 3 + 1));
        model.updateData(rows.back());
    }
    EXPECT_EQ(model.size(), 792);
    int textsMade = 0;
    for (const RowPtr &row : rows)
        textsMade += row->textsMade;
    EXPECT_EQ(textsMade, 4);
}

TEST(HpfModelFilter, AsksAnewWhenTheSameValuesHaveOtherTexts)
{
    /// Shows its price with decimals of its own.
    class PriceRow : public ValueRow
    {
    public:
        PriceRow(const char *rowKey, int shownDecimals)
            : ValueRow(rowKey, {0, 0, 10.5, {}, false}), decimals(shownDecimals)
        {
        }
        QString getFilterQString(int) override { return QString::number(10.5, 'f', decimals); }
        std::atomic<int> decimals;
    };
    const auto two = boost::make_shared<PriceRow>("two", 2);
    const auto three = boost::make_shared<PriceRow>("three", 3);
    for (const bool reversed : {false, true}) {
        ValueModel model;
        model.context = -1;
        model.updateDatas(reversed ? QVector<ZB::IBaseHpfTableModel::Row>{three, two}
                                   : QVector<ZB::IBaseHpfTableModel::Row>{two, three});
        model.filter(Price, 0, {"10.50"});
        EXPECT_EQ(shownKeys(model), "two");
        model.clearFilter();
        ZB::HpfDistinctTexts texts(model, Price);
        texts.step(1000);
        EXPECT_EQ(texts.values().size(), 2u);
    }
    ValueModel model;
    model.filter(Price, 0, {"10.50"});
    model.updateDatas({two, makeRow("other", 0, 0, 1)});
    EXPECT_EQ(shownKeys(model), "two");
    two->decimals = 1;
    model.context = 1;
    model.updateData(makeRow("other", 0, 0, 1));
    EXPECT_EQ(shownKeys(model), "");
}

TEST(HpfModelFilter, TellsAZeroFromACellWithoutAValue)
{
    ValueModel model;
    const auto blank = [] { return boost::make_shared<ValueRow>("blank", Record{0, 0, 0, {}, true}); };
    model.updateDatas({makeRow("zero", 0), blank(), makeRow("one", 1)});
    model.filter(Quantity, 0, {"0"});
    EXPECT_EQ(shownKeys(model), "zero");
    model.filter(Quantity, 0, {"~"});
    EXPECT_EQ(shownKeys(model), "blank");
    model.addData(makeRow("blank", 0));
    EXPECT_EQ(shownKeys(model), "");
    model.addData(blank());
    EXPECT_EQ(shownKeys(model), "blank");
    model.filter(Quantity, 0, {});
    model.filter(Price, 0, {"0.00"});
    EXPECT_EQ(shownKeys(model), "zero one");
}

TEST(HpfModelFilter, DistinctTextsCountWhatTheOtherFiltersLetPass)
{
    ValueModel model;
    fillFour(model);
    model.addData(makeRow("e", 3, 0, 1.501, "xx"));
    model.addData(makeRow("f", noQuantity, 0, 0, "xx"));
    const auto texts = [&model](int column) {
        ZB::HpfDistinctTexts gatherer(model, column);
        while (!gatherer.step(1)) {
        }
        EXPECT_EQ(gatherer.progress(), 1000);
        EXPECT_FALSE(gatherer.isTruncated());
        QStringList lines;
        for (const auto &value : gatherer.values())
            lines.append(value.text + ':' + QString::number(value.count));
        return lines.join(' ');
    };
    EXPECT_EQ(texts(Quantity), "1:1 2:1 3:2 -:2");
    EXPECT_EQ(texts(Price), "-0.50:1 0.00:1 1.50:3 -:1");
    EXPECT_EQ(texts(Name), ":1 xx:3 y:1 zzz:1");
    EXPECT_EQ(texts(77), ":6");
    model.filter(Name, 0, {"xx", "zzz"});
    model.filter(Status, 0, {"S1"});
    EXPECT_EQ(texts(Name), "xx:1 zzz:1");
    EXPECT_EQ(texts(Status), "S0:2 S1:2");
    EXPECT_EQ(texts(Quantity), "1:1 3:1");
    model.size();
    EXPECT_EQ(texts(Status), "S0:2 S1:2");
    model.clearFilter();
    EXPECT_EQ(texts(Quantity), "1:1 2:1 3:2 -:2");
    model.clear();
    EXPECT_EQ(texts(Name), "");
}

TEST(HpfModelFilter, GivesUpCollectingDistinctTextsAtTheirMaximum)
{
    ValueModel model;
    QVector<ZB::IBaseHpfTableModel::Row> rows;
    for (int i = 0; i < ZB::HpfDistinctTexts::maximumValues + 10; ++i)
        rows.append(makeRow(std::to_string(i), i));
    model.updateDatas(rows);
    ZB::HpfDistinctTexts gatherer(model, Quantity);
    EXPECT_FALSE(gatherer.step(0));
    EXPECT_LT(gatherer.progress(), 1000);
    while (!gatherer.step(50)) {
    }
    EXPECT_TRUE(gatherer.isTruncated());
    EXPECT_EQ(gatherer.values().size(), static_cast<std::size_t>(ZB::HpfDistinctTexts::maximumValues));
}
