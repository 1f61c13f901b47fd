#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <boost/make_shared.hpp>
#include <boost/thread/thread.hpp>
#include <set>

#include "kdservice/fielddes.h"
#include "kdservice/keyhash.h"
#include "plainrecord.h"
#include "records/fieldids.h"
#include "slicedpages.h"

using namespace pagetest;

/// A new record is made where one lay that has just gone, so that addresses tell nothing about who is who.
TEST_F(SlicedPages, RecordsThatLieWhereOthersLayAreStillToldApart)
{
    const auto update = [this](int number) {
        Values values;
        values.price = draw(0, 999);
        model.addData(makeOrder("K" + std::to_string(number), values));
    };
    for (int number = 0; number < 300; ++number)
        update(number);
    for (int round = 0; round < 1000; ++round) {
        model.sortByColumnID(DoubleColumn, round % 2);
        model.step(0);
        for (int change = 0; change < 6 && model.isPending(); ++change) {
            const int again = draw(0, 299);
            update(again);
            model.step(0);
            for (int more = 0; more < 4 && model.isPending(); ++more)
                for (const int number : {again, draw(0, 299), again})
                    update(number);
        }
        while (!model.step(1000)) {
        }
        std::vector<double> prices;
        for (const auto &page : model.getAllDatas()) {
            QVariant price;
            ASSERT_TRUE(model.getValue(DoubleColumn, page->getIData(), price));
            prices.push_back(round % 2 == 0 ? price.toDouble() : -price.toDouble());
        }
        ASSERT_TRUE(std::is_sorted(prices.begin(), prices.end())) << "round " << round;
    }
}

/// Where "equal" does not carry over from one to the next no single order is right, but none of them may leave the
/// records that are equal to some of their kind.
TEST_F(SlicedPages, NearlyEqualValuesThatComeBetweenSlicesStayAmongTheirOwn)
{
    const auto update = [this](int number) {
        Values values;
        values.price = pick({9.5, 10.0, 10.000006, 10.000012, 10.5, noDouble});
        values.quantity = number;
        values.sequence = draw(0, 3);
        model.addData(makeOrder("K" + std::to_string(number), values));
    };
    for (int number = 0; number < 1000; ++number)
        update(number);
    for (int round = 0; round < 30; ++round) {
        const int order = round % 2;
        model.sortByColumnID(DoubleColumn, order);
        if (round % 3 == 0)
            model.filterColumn({});
        while (!model.step(0))
            for (int count = draw(0, 5); count > 0; --count)
                update(draw(0, 999));
        EXPECT_EQ(model.getStatColumnLongLong(LongColumn), 999 * 1000 / 2);
        ASSERT_TRUE(model.checkConsistency());
        for (const auto &list : {model.getAllDatas(), model.getShowDatas()}) {
            std::vector<double> kinds;
            for (const auto &page : list) {
                const double price = page->getIData()->getDouble(refhost::OrderPrice);
                const bool last = price == noDouble;
                kinds.push_back(last ? noDouble : std::round(price * 1000) * (order == 0 ? 1 : -1));
            }
            ASSERT_EQ(kinds.size(), 1000U);
            ASSERT_TRUE(std::is_sorted(kinds.begin(), kinds.end())) << "round " << round;
        }
    }
}

TEST_F(SlicedPages, ThreadsReadAndWriteWhileWorkGoesOn)
{
    fillModel();
    boost::thread_group others;
    std::atomic<bool> done{false};
    std::atomic<int> rounds{0};
    others.create_thread([&] { // feeds
        for (int i = 0; !done; ++i) {
            Values values;
            values.channel = i % 7;
            model.addData(makeOrder("K" + std::to_string(i * 37 % recordCount), values));
            if (i % 10 == 0)
                model.removeDataByKey("K" + std::to_string(i % recordCount));
        }
    });
    others.create_thread([&] { // reads lists, which finishes the work
        for (; !done; ++rounds) {
            for (const auto &page : model.getShowDatas())
                ASSERT_FALSE(page->getIData()->getKey().empty());
            model.getDataIndexByKey(kdservice::hashOfKey("K7"));
            model.getStatColumnLongLong(LongColumn);
            ASSERT_TRUE(model.checkConsistency());
        }
    });
    others.create_thread([&] { // reads what is there
        for (; !done; ++rounds) {
            ASSERT_LE(model.getShownPage().size(), 40);
            ASSERT_LE(model.getMenuItems(IntColumn).size(), 8);
            model.shownSize();
            model.progress();
            model.columnFilters();
        }
    });
    for (int round = 0; round < 60 || rounds < 20; ++round) {
        model.sortByColumnID(round % 2 ? IntColumn : LongColumn, round % 3);
        model.setExFilterStatus(round % 3);
        model.filterColumn({});
        for (int slice = 0; slice < 50 && !model.step(0); ++slice)
            model.setStartIndex(slice);
        if (round % 5 == 0)
            model.cancel();
    }
    done = true;
    others.join_all();
    EXPECT_TRUE(model.checkConsistency());
}

TEST(SlicedPagesAlone, OthersGetInWhileAReaderFinishesTheWork)
{
    static kdservice::FieldDes number;
    number.fieldId = 1;
    number.dataType = kdservice::ExtInt;
    /// Takes its time to be read.
    class SlowRecord : public PlainRecord
    {
    public:
        explicit SlowRecord(int value) : PlainRecord(std::to_string(value), kdservice::hashOfKey(std::to_string(value)))
        {
        }
        const kdservice::FieldDes *getFieldDes(int) const override { return &number; }
        int getInt(int) const override
        {
            boost::this_thread::sleep(boost::posix_time::microseconds(50));
            return 1;
        }
    };
    KV::CHpfPageDataModel model(metaWithoutFilter, kdservice::TraderStock, true);
    model.setColumnFieldDesMap({{0, &number}});
    for (int i = 0; i < 2500; ++i)
        model.addData(boost::make_shared<SlowRecord>(i));
    model.setWorkPerCall(0);
    model.sortByColumnID(0, 0);
    std::atomic<bool> done{false};
    std::set<int> seen;
    boost::thread other([&] {
        while (!done)
            seen.insert(model.progress());
    });
    EXPECT_EQ(model.size(), 2500);
    done = true;
    other.join();
    EXPECT_GE(seen.size(), 4U) << "how far the work was whenever the other thread had the lock";
}

TEST_F(SlicedPages, ACallWorksAsLongAsItMay)
{
    model.setWorkPerCall(-1);
    fillModel();
    model.sortByColumnID(IntColumn, 1);
    EXPECT_FALSE(model.isPending());
    EXPECT_EQ(model.progress(), 1000);
    slow.sort(IntColumn, 1);
    expectSame();
    model.setWorkPerCall(10000);
    model.sortByColumnID(LongColumn, 1);
    EXPECT_FALSE(model.isPending());
}
