#include <gtest/gtest.h>

#include <atomic>
#include <boost/thread/thread.hpp>
#include <tuple>

#include "kdservice/fielddes.h"
#include "pagerecords.h"
#include "records/fieldids.h"
#include "records/typecatalogue.h"

using namespace pagetest;

namespace {

class PageModelColumns : public ::testing::Test
{
protected:
    PageModelColumns() : model(metaId, kdservice::TraderStock, true)
    {
        setColumns(model);
        model.setExFilterStatus(0);
    }

    /// Quantities go up where prices go down; the codes are of several lengths.
    void fill()
    {
        const char *codes[] = {"600000.SH", "AP010", "IF2306", "AP009"};
        for (int number = 0; number < 4; ++number) {
            Values values;
            values.quantity = 100 * number;
            values.price = 10 - number;
            values.code = codes[number];
            model.addData(makeOrder(std::to_string(number), values));
        }
    }
    void swapNumbers()
    {
        QMap<int, kdservice::FieldDes *> fields = model.getColumnFieldDesMap();
        std::swap(fields[LongColumn], fields[DoubleColumn]);
        model.setColumnFieldDesMap(fields);
        model.setFieldColumnIDMap({{refhost::OrderQuantity, DoubleColumn}, {refhost::OrderPrice, LongColumn}});
    }
    std::string lists() const { return keysOf(model.getAllDatas()) + ", " + keysOf(model.getShowDatas()); }

    KV::CHpfPageDataModel model;
};

} // namespace

TEST_F(PageModelColumns, AChangeOfColumnsSortsAndSumsAgain)
{
    fill();
    model.setColumnStatEnable(LongColumn, true);
    model.sortByColumnID(LongColumn, 1);
    EXPECT_EQ(lists(), "3 2 1 0, 3 2 1 0");
    EXPECT_EQ(model.getStatColumnLongLong(LongColumn), 600);
    const quint64 revision = model.shownRevision();
    swapNumbers();
    EXPECT_NE(model.shownRevision(), revision) << "who shows the page sees that it is another one";
    EXPECT_EQ(lists(), "0 1 2 3, 0 1 2 3");
    EXPECT_EQ(model.getStatColumnDouble(LongColumn), 34);
    EXPECT_EQ(model.getStatColumnLongLong(LongColumn), std::numeric_limits<qint64>::max());
    Values dear;
    dear.price = 9.5;
    model.addData(makeOrder("4", dear));
    EXPECT_EQ(lists(), "0 4 1 2 3, 0 4 1 2 3");
    model.setColumnFieldDesMap({});
    EXPECT_EQ(lists(), "0 4 1 2 3, 0 4 1 2 3") << "nothing to sort by leaves them where they are";
}

TEST_F(PageModelColumns, UnderTheCodeColumnOrdersCompareByTheirCode)
{
    fill();
    model.setCodeSortColumn(IntColumn);
    model.sortByColumnID(LongColumn, 0);
    EXPECT_EQ(lists(), "0 1 2 3, 0 1 2 3") << "another column than that one";
    model.setCodeSortColumn(LongColumn);
    EXPECT_EQ(lists(), "3 1 2 0, 3 1 2 0") << "shorter codes first";
    Values values;
    values.code = "AP0100";
    model.addData(makeOrder("4", values));
    EXPECT_EQ(lists(), "3 1 4 2 0, 3 1 4 2 0");
    model.reverseSortByColumn(LongColumn);
    EXPECT_EQ(lists(), "0 2 4 1 3, 0 2 4 1 3");
    model.setCodeSortColumn(-1);
    EXPECT_EQ(lists(), "3 2 4 1 0, 3 2 4 1 0") << "by quantity, descending; two are 100, told apart by their keys";

    // Records of other kinds have the column's values.
    kdservice::FieldDes price;
    price.fieldId = refhost::DealPrice;
    price.dataType = kdservice::ExtDouble;
    KV::CHpfPageDataModel deals(refhost::MetaMarketDeal, kdservice::TraderStock, true);
    deals.setColumnFieldDesMap({{0, &price}});
    deals.setCodeSortColumn(0);
    deals.sortByColumnID(0, 0);
    for (const auto &[key, value] : {std::pair{"dear", 2.0}, {"cheap", 1.0}}) {
        const auto deal = refhost::makeDeal(refhost::MetaMarketDeal, key);
        deal->setData(refhost::DealPrice, value);
        deal->setData(refhost::DealCode, std::string(key));
        deals.addData(deal);
    }
    EXPECT_EQ(keysOf(deals.getAllDatas()), "cheap dear");
}

TEST_F(PageModelColumns, FlagsSortFalseBeforeTrueAndHaveTieBreaksToo)
{
    const refhost::RecordType *type = refhost::TypeCatalogue::instance().registerType(
        {990016,
         refhost::RecordKind::Order,
         {{1, kdservice::ExtBool, "标志"}, {2, kdservice::ExtInt, "序号"}},
         -1,
         -1,
         2});
    KV::CHpfPageDataModel flags(type->metaId(), kdservice::TraderStock, true);
    flags.setColumnFieldDesMap({{0, type->fields().at(1)}});
    const auto put = [&](const char *key, bool flag, int sequence) {
        const auto order = refhost::makeOrder(*type, key);
        order->setData(1, flag);
        order->setData(2, sequence);
        flags.addData(order);
    };
    for (const auto &[key, flag, sequence] :
         {std::tuple{"d", true, 2}, {"c", false, 2}, {"b", true, 1}, {"a", false, 1}})
        put(key, flag, sequence);
    EXPECT_EQ(flags.columnType(0), QVariant::Bool);
    flags.sortByColumnID(0, 0);
    EXPECT_EQ(keysOf(flags.getAllDatas()), "a c b d");
    flags.sortByColumnID(0, 1);
    EXPECT_EQ(keysOf(flags.getAllDatas()), "d b c a");
    put("e", false, 3);
    EXPECT_EQ(keysOf(flags.getAllDatas()), "d b e c a");
}

TEST_F(PageModelColumns, TextsFollowTheTraderType)
{
    refhost::TypeCatalogue::instance().registerEnum(
        "pageside", {{1, "买"}, {2, "融券", refhost::StockTraders}, {2, "卖空", refhost::FutureTraders}});
    kdservice::FieldDes side;
    side.fieldId = refhost::OrderChannel;
    side.dataType = kdservice::ExtInt;
    side.funcs[kdservice::DisplayEnum] = "pageside";
    model.setColumnFieldDesMap({{IntColumn, &side}});
    Values values;
    values.channel = 2;
    model.addData(makeOrder("A", values));
    EXPECT_EQ(model.getMenuItems(IntColumn), QStringList{QStringLiteral("融券")});
    model.setTraderType(kdservice::TraderFuture);
    EXPECT_EQ(model.getMenuItems(IntColumn), QStringList{QStringLiteral("卖空")});
    model.filterColumn({{IntColumn, {ZB::FilterExact, {QStringLiteral("融券")}}}});
    EXPECT_EQ(model.size(), 0);
}

TEST_F(PageModelColumns, AColumnWithoutAFieldHasTheTypeOfItsProperties)
{
    kdservice::FieldDes untouched;
    kdservice::FieldDes *field = &untouched;
    for (const int unknown : {-1, 5, 63, 64, 71}) {
        EXPECT_FALSE(model.getFieldDesID(unknown, &field)) << unknown;
        EXPECT_EQ(model.getFiledIdByColumn(unknown), 0) << unknown;
        EXPECT_EQ(model.columnType(unknown), QVariant::Invalid) << unknown;
    }
    EXPECT_EQ(field, &untouched);
    EXPECT_TRUE(model.getFieldDesID(NestedColumn, &field));
    EXPECT_EQ(field->fieldId, model.getFiledIdByColumn(NestedColumn));
    EXPECT_FALSE(model.getFieldDesID(IntColumn, nullptr));
    KV::CHpfDataColumnProperty property;
    property.type = QVariant::LongLong;
    model.setColumnIDPropertyMap({{63, property}, {IntColumn, property}});
    EXPECT_EQ(model.columnType(63), QVariant::LongLong);
    EXPECT_EQ(model.columnType(IntColumn), QVariant::Int);
}

TEST_F(PageModelColumns, SumsAreSwitchedWithoutEndingWhatIsUnderWay)
{
    for (int number = 0; number < 1000; ++number) {
        Values values;
        values.quantity = number;
        values.price = number % 2 ? 0.5 : 2.0;
        values.code = number % 4 ? "600000.SH" : "AP010";
        model.addData(makeOrder(std::to_string(number), values));
    }
    model.setWorkPerCall(0);
    model.setColumnStatEnable(LongColumn, true);
    model.filterColumn({{TextColumn, {ZB::FilterExact, {"AP010"}}}});
    model.step(0);
    model.setColumnStatEnable(DoubleColumn, true);
    model.setColumnStatEnable(LongColumn, false);
    EXPECT_TRUE(model.isPending());
    EXPECT_EQ(model.getStatColumnDouble(DoubleColumn), 500) << "over what passes";
    EXPECT_FALSE(model.isPending());
    EXPECT_EQ(model.getStatColumnLongLong(LongColumn), std::numeric_limits<qint64>::max());
    model.clearFilter(true);
    EXPECT_EQ(model.getStatColumnDouble(DoubleColumn), 1250);
    for (const int other : {int(TextColumn), 99, -1}) {
        model.setColumnStatEnable(other, true);
        EXPECT_EQ(model.getStatColumnDouble(other), noDouble) << "only numbers have a sum";
    }
}

TEST_F(PageModelColumns, ASumThatIsWantedWaitsForItsColumn)
{
    fill();
    const QMap<int, kdservice::FieldDes *> fields = model.getColumnFieldDesMap();
    model.setColumnFieldDesMap({});
    model.setColumnStatEnable(LongColumn, true);
    EXPECT_EQ(model.getStatColumnLongLong(LongColumn), std::numeric_limits<qint64>::max());
    model.setColumnFieldDesMap(fields);
    EXPECT_EQ(model.getStatColumnLongLong(LongColumn), 600);
    model.setColumnFieldDesMap({{LongColumn, fields[TextColumn]}});
    EXPECT_EQ(model.getStatColumnLongLong(LongColumn), std::numeric_limits<qint64>::max());
    model.filterColumn({});
    model.setColumnFieldDesMap(fields);
    EXPECT_EQ(model.getStatColumnLongLong(LongColumn), 600);
    model.setColumnStatEnable(LongColumn, false);
    model.setColumnFieldDesMap(fields);
    EXPECT_EQ(model.getStatColumnLongLong(LongColumn), std::numeric_limits<qint64>::max());
}

TEST_F(PageModelColumns, ColumnsChangeWhileOthersRead)
{
    for (int number = 0; number < 400; ++number) {
        Values values;
        values.channel = number % 5;
        values.price = number % 7;
        model.addData(makeOrder(std::to_string(number), values));
    }
    model.setColumnStatEnable(LongColumn, true);
    model.sortByColumnID(DoubleColumn, 1);
    std::atomic<bool> done{false};
    std::atomic<int> rounds{0};
    boost::thread_group others;
    others.create_thread([&] {
        const auto record = makeOrder("X", {});
        for (; !done; ++rounds) {
            for (const int column : {IntColumn, LongColumn, DoubleColumn, NestedColumn}) {
                ASSERT_LE(model.getMenuItems(column).size(), 12);
                QVariant value;
                QString text;
                KV::OriginData origin;
                model.getValue(column, record, value);
                model.getIDataStringByColID(column, record, text, origin);
                kdservice::FieldDes *field = nullptr;
                const bool known = model.getFieldDesID(column, &field);
                ASSERT_EQ(field != nullptr, known);
                model.getFiledIdByColumn(column);
                model.columnType(column);
            }
            ASSERT_EQ(model.getShowDatas().size(), 400);
            model.getStatColumnLongLong(LongColumn);
        }
    });
    others.create_thread([&] {
        for (int i = 0; !done; ++i, ++rounds) {
            Values values;
            values.price = i % 11;
            model.addData(makeOrder(std::to_string(i % 400), values));
        }
    });
    const QMap<int, kdservice::FieldDes *> fields = model.getColumnFieldDesMap();
    for (int round = 0; round < 40 || rounds < 100; ++round) {
        if (round % 3 == 0)
            model.setColumnFieldDesMap({});
        else
            swapNumbers();
        model.setTraderType(round % 2 ? kdservice::TraderFuture : kdservice::TraderStock);
        model.setCodeSortColumn(round % 5 ? -1 : DoubleColumn);
        model.setColumnIDPropertyMap({{99, KV::CHpfDataColumnProperty()}});
        model.setColumnFieldDesMap(fields);
        model.setColumnStatEnable(LongColumn, round % 4 != 0);
    }
    done = true;
    others.join_all();
    EXPECT_TRUE(model.checkConsistency());
    setColumns(model);
    model.setCodeSortColumn(-1);
    double last = noDouble;
    for (const auto &page : model.getShowDatas()) {
        const double price = page->getIData()->getDouble(refhost::OrderPrice);
        EXPECT_LE(price, last);
        last = price;
    }
}
