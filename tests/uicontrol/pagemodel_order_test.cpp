#include <gtest/gtest.h>

#include "pagerulesmodel.h"

using namespace pagetest;

TEST(PageModelOrder, TheOrderOfTwoDoesNotDependOnWhichCameFirst)
{
    const auto with = [](auto member, const auto &choices) {
        std::vector<Values> list;
        for (const auto &choice : choices) {
            list.emplace_back();
            list.back().*member = choice;
        }
        return list;
    };
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const std::map<int, std::vector<Values>> valuesOfColumn{
        {IntColumn, with(&Values::channel, std::vector<int>{std::numeric_limits<int>::min(), -1, 0, noInt - 1, noInt})},
        {LongColumn,
         with(&Values::quantity, std::vector<qint64>{std::numeric_limits<qint64>::min(), 0, 1, noLong - 1, noLong})},
        {DoubleColumn,
         with(&Values::price, std::vector<double>{-infinite, -noDouble, 10, 10.000006, 10.000012, infinite, noDouble,
                                                  std::numeric_limits<double>::quiet_NaN()})},
        {TextColumn, with(&Values::code, std::vector<std::string>{"", "9", "10", "AB", "\xff"})},
        {CharColumn, with(&Values::status, std::vector<int>{'0', '9', 'V', noInt})},
        {NestedColumn, with(&Values::lot, std::vector<int>{1, 100, 200})},
    };
    for (const auto &[column, values] : valuesOfColumn)
        for (const int order : {0, 1, 7})
            for (std::size_t i = 0; i < values.size(); ++i)
                for (std::size_t j = 0; j < values.size(); ++j) {
                    RulesModel sorted;
                    sorted.put("A", values[i]);
                    sorted.put("B", values[j]);
                    sorted.sortByColumnID(column, order);
                    RulesModel swapped;
                    swapped.put("B", values[j]);
                    swapped.put("A", values[i]);
                    swapped.sortByColumnID(column, order);
                    RulesModel placed;
                    placed.sortByColumnID(column, order);
                    placed.put("B", values[j]);
                    placed.put("A", values[i]);
                    EXPECT_EQ(sorted.shown(), swapped.shown()) << column << ' ' << order << ' ' << i << ' ' << j;
                    EXPECT_EQ(sorted.shown(), placed.shown()) << column << ' ' << order << ' ' << i << ' ' << j;
                }
}

TEST(PageModelOrder, ReversingTogglesTheCurrentColumnOnly)
{
    RulesModel model;
    const auto state = [&] { return std::to_string(model.sortColumn()) + ":" + std::to_string(model.sortOrder()); };
    model.reverseSortByColumn(DoubleColumn);
    EXPECT_EQ(state(), "2:1");
    model.reverseSortByColumn(DoubleColumn);
    EXPECT_EQ(state(), "2:0");
    model.reverseSortByColumn(DoubleColumn);
    EXPECT_EQ(state(), "2:1");
    model.reverseSortByColumn(IntColumn);
    EXPECT_EQ(state(), "0:1");
    model.sortByColumnID(IntColumn, 3);
    model.reverseSortByColumn(IntColumn);
    EXPECT_EQ(state(), "0:3");
    model.clearSort();
    EXPECT_EQ(model.sortColumn(), -1);
}

TEST(PageModelOrder, RecordsOfOtherKindsAndOfTwoKindsHaveNoTieBreak)
{
    const auto lots = [](const auto &record, int field, int lot) {
        const auto instrument = refhost::makePlain(refhost::MetaInstrument, "I");
        instrument->setData(refhost::InstrumentLot, lot);
        record->setNested(field, instrument);
        return record;
    };
    const auto order = [&](const char *key, int sequence) {
        const auto record = refhost::makeOrder(metaId, key);
        record->setData(refhost::OrderSequence, sequence);
        return lots(record, refhost::OrderInstrument, 100);
    };
    const auto deal = [&](const char *key, int sequence) {
        const auto record = refhost::makeDeal(refhost::MetaMarketDeal, key);
        record->setData(refhost::DealSequence, sequence);
        return lots(record, refhost::DealInstrument, 100);
    };
    const auto plain = [](const char *key, int lot) {
        const auto record = refhost::makePlain(refhost::MetaInstrument, key);
        record->setData(refhost::InstrumentLot, lot);
        return record;
    };
    const struct
    {
        const char *what;
        std::vector<boost::shared_ptr<kdservice::IData>> records;
        const char *shown;
    } cases[] = {
        {"equal records of no known kind", {plain("c", 100), plain("b", 100), plain("a", 1)}, "a c b"},
        {"an order and a deal", {order("9", 9), deal("1", 1)}, "9 1"},
        {"deals among themselves", {deal("9", 9), deal("1", 1), deal("10", 1)}, "1 10 9"},
    };
    for (const auto &each : cases) {
        RulesModel model(true, 16205);
        for (const auto &record : each.records)
            model.addData(record);
        model.sortByColumnID(NestedColumn, 0);
        EXPECT_EQ(model.shown(), each.shown) << each.what;
    }
}

TEST(PageModelOrder, MenuItemsStandInTheOrderOfTheirValues)
{
    RulesModel model;
    for (const int channel : {10, 9, noInt, -2, 100, 9}) {
        Values values;
        values.channel = channel;
        values.price = channel == noInt ? noDouble : channel / 4.0;
        values.lot = channel == 9 ? noInt : channel; // of noInt: without the field
        model.put(std::to_string(model.originalSize()), values);
    }
    const QStringList channels = model.getMenuItems(IntColumn);
    EXPECT_EQ(channels.mid(0, 4), QStringList({"-2", "9", "10", "100"})) << channels.join(' ').toStdString();
    EXPECT_EQ(channels.size(), 5) << "no value comes last";
    const QStringList prices = model.getMenuItems(DoubleColumn);
    EXPECT_EQ(prices.mid(0, 4), QStringList({"-0.50", "2.25", "2.50", "25.00"})) << prices.join(' ').toStdString();
    EXPECT_EQ(prices.size(), 5);
    EXPECT_EQ(model.getMenuItems(NestedColumn), QStringList({"-2", "10", "100", ""}));
}
