#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include "pagerulesmodel.h"

using namespace pagetest;

TEST(PageModelRules, ResultsTellWhatEntersAndLeavesThePage)
{
    RulesModel model;
    model.setPageCount(2);
    model.sortByColumnID(DoubleColumn, 0);
    for (const auto &[key, price] : {std::pair{"B", 2.0}, {"D", 4.0}, {"F", 6.0}, {"H", 8.0}})
        model.put(key, priced(price));
    model.setStartIndex(1);
    ASSERT_EQ(model.shown(), "B D F H");

    struct Case
    {
        const char *what;
        const char *key;
        double price;
        const char *result;
        const char *shown;
    };
    const Case cases[] = {
        {"in front of the page", "A", 1, "+B -F", "A B D F H"},
        {"inside the page", "C", 3, "+C -D", "A B C D F H"},
        {"behind the page", "I", 9, "+ -", "A B C D F H I"},
        {"an update that stays", "C", 3.5, "+C -", "A B C D F H I"},
        {"out of the page to the front", "C", 0.5, "+A -C", "C A B D F H I"},
        {"out of the page to the end", "A", 10, "+D -A", "C B D F H I A"},
        {"into the page from the end", "A", 3, "+A -D", "C B A D F H I"},
        {"into the page from the front", "C", 2.5, "+C -B", "B C A D F H I"},
        {"past the page to the end", "B", 11, "+D -C", "C A D F H I B"},
        {"past the page to the front", "B", 0, "+C -D", "B C A D F H I"},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(model.put(c.key, priced(c.price)), c.result) << c.what;
        EXPECT_EQ(model.shown(), c.shown) << c.what;
    }
    EXPECT_FALSE(model.addData(boost::shared_ptr<kdservice::IData>()));
    EXPECT_FALSE(model.addData(boost::make_shared<KV::CHpfPageData>(nullptr)));
}

TEST(PageModelRules, ARecordThatNoLongerPassesLeavesAndTheNextMovesUp)
{
    RulesModel model;
    model.setPageCount(2);
    model.setExFilterStatus(1);
    for (const char *key : {"A", "B", "C"})
        model.put(key);
    EXPECT_EQ(model.put("A", withStatus('8')), "+C -A");
    EXPECT_EQ(model.shown(), "B C");
    EXPECT_EQ(model.everything(), "A B C");
    // Hidden now: coming back is an add to the visible list, over the hidden record.
    model.totalCountChange();
    EXPECT_EQ(model.put("A"), "+ -");
    EXPECT_EQ(model.shown(), "B C A");
    EXPECT_FALSE(model.totalCountChange());
    // In front of the page all of it moves; what comes in is told where the record went into the page before it went.
    model.sortByColumnID(DoubleColumn, 0);
    model.setStartIndex(1);
    const char *keys[] = {"A", "B", "C", "D", "E"};
    for (int i = 0; i < 5; ++i)
        model.put(keys[i], priced(i));
    Values closed = priced(1.5);
    closed.status = '8';
    EXPECT_EQ(model.put("A", closed), "+D -A");
    EXPECT_EQ(model.shown(), "B C D E");
    closed.price = 1;
    EXPECT_EQ(model.put("B", closed), "+ -B");
    EXPECT_EQ(model.shown(), "C D E");
}

TEST(PageModelRules, DealsKnowNoStatusAndAreFoundByTheirOwnCodeAndOtherRecordsByNone)
{
    RulesModel deals(true, 16203);
    const auto deal = refhost::makeDeal(refhost::MetaMarketDeal, "D");
    deal->setData(refhost::DealCode, "600000.SH");
    deals.addData(deal);
    deals.setExFilterStatus(1);
    deals.filterColumn({});
    EXPECT_EQ(deals.shown(), "D");
    deals.setExFilterSource(7); // asks nothing
    deals.filterColumn({});
    EXPECT_EQ(std::to_string(deals.exFilterSource()) + deals.shown(), "7D");
    deals.setFilter("sh"); // the search is case-sensitive
    deals.filterColumn({});
    EXPECT_EQ(deals.shown(), "");
    RulesModel others(true, 16205);
    others.setFilter("6");
    others.put("A");
    EXPECT_EQ(others.shown(), "");
}

TEST(PageModelRules, AFilterOfAnUnknownTypeRejectsAndAnUnknownColumnHasNoText)
{
    RulesModel model;
    model.put("A");
    const auto shownWith = [&](int column, int type, const QSet<QString> &values) {
        model.filterColumn({{column, {ZB::EFilterType(type), values}}});
        return model.shown();
    };
    const QString code = QStringLiteral("600000.SH");
    EXPECT_EQ(shownWith(TextColumn, ZB::FilterExact, {code}), "A");
    EXPECT_EQ(shownWith(TextColumn, ZB::FilterContains, {QStringLiteral("sh")}), "A") << "whatever the case";
    for (const int type : {2, 7, -1})
        for (const QString &text : {code, QStringLiteral("another")})
            EXPECT_EQ(shownWith(TextColumn, type, {text}), "") << type;
    EXPECT_EQ(shownWith(TextColumn, 2, {}), "A") << "nothing is asked for";
    EXPECT_EQ(shownWith(99, ZB::FilterExact, {code}), "");
    EXPECT_EQ(shownWith(99, ZB::FilterExact, {QString()}), "A");
    EXPECT_EQ(model.put("B"), "+B -") << "a new record is tested likewise";
    model.filterColumn({{99, {ZB::FilterExact, {code}}}});
    EXPECT_EQ(model.put("C"), "+ -");
    EXPECT_EQ(model.everything(), "A B C");
}

TEST(PageModelRules, ClearingTheFiltersMayLeaveTheListAsItIs)
{
    RulesModel model;
    for (const auto &[key, code] : {std::pair{"A", "600000.SH"}, {"B", "AP010"}})
        model.put(key, withStatus('0', code));
    model.filterColumn({{TextColumn, {ZB::FilterExact, {"AP010"}}}});
    model.totalCountChange();
    model.clearFilter(false);
    EXPECT_TRUE(model.columnFilters().isEmpty());
    EXPECT_EQ(model.shown(), "B");
    EXPECT_TRUE(model.totalCountChange());
    model.put("C");
    EXPECT_EQ(model.shown(), "B C") << "but the next record passes";
    model.setFilter("AP");
    model.clearFilter(true);
    EXPECT_EQ(model.shown(), "A B C") << "every record, whatever is searched for";
    model.clearFilter(true);
    EXPECT_EQ(model.shown(), "A B C");
}

TEST(PageModelRules, APageWithoutRowsReportsNothingAndOddPagesAreHarmless)
{
    RulesModel model;
    model.setPageCount(0);
    EXPECT_EQ(model.put("A"), "+ -");
    EXPECT_FALSE(model.isIndexAtShowRegion(0));
    model.setPageCount(std::numeric_limits<int>::max());
    model.setStartIndex(std::numeric_limits<int>::max());
    EXPECT_EQ(model.put("B"), "+ -");
    model.setStartIndex(-3);
    EXPECT_EQ(model.put("C"), "+C -");
    EXPECT_FALSE(model.getData(-1));
    EXPECT_FALSE(model.getData(3));
    EXPECT_FALSE(model.getDataFromAll(3));
    EXPECT_EQ(model.getDataKeyByIndex(7), "");
}

TEST(PageModelRules, MenuItemsAreTheTextsOfAllRecordsAndCellsTellTheirValue)
{
    RulesModel model;
    for (const auto &[key, code] : {std::pair{"A", "600001.SH"}, {"B", "AP010"}, {"C", "600001.SH"}}) {
        Values values;
        values.code = code;
        model.put(key, values);
    }
    model.filterColumn({{TextColumn, {ZB::FilterExact, {"AP010"}}}});
    EXPECT_EQ(model.shown(), "B");
    EXPECT_EQ(model.getMenuItems(TextColumn), QStringList({"600001.SH", "AP010"}));

    QVariant value;
    EXPECT_TRUE(model.getValue(DoubleColumn, makeOrder("X", priced(12.5)), value));
    EXPECT_EQ(value.toDouble(), 12.5);
    EXPECT_FALSE(model.getValue(NestedColumn, makeOrder("X", {}), value));
    QString text;
    KV::OriginData origin;
    EXPECT_TRUE(model.getIDataStringByColID(DoubleColumn, makeOrder("X", priced(15.929999999999999)), text, origin));
    EXPECT_EQ(text, "15.93");
}
