#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <boost/thread/thread.hpp>
#include <random>

#include "kdservice/keyhash.h"
#include "slowpagemodel.h"

using namespace pagetest;

namespace {

constexpr int recordCount = 2000; ///< more than one slice reads

/// A model whose sorts and filters go on in slices, and a plain one that does them when they have come to their end.
class SlicedPages : public ::testing::Test
{
protected:
    SlicedPages() : model(metaId, kdservice::TraderStock, true)
    {
        setColumns(model);
        slow.append = true;
        slow.status = 0;
        model.setExFilterStatus(0);
        model.setColumnStatEnable(LongColumn, true);
        model.setPageCount(40);
        model.setWorkPerCall(0);
    }

    int draw(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

    template <typename T>
    T pick(std::initializer_list<T> list)
    {
        return *(list.begin() + draw(0, static_cast<int>(list.size()) - 1));
    }

    /// Many equal values, which only the sequence and the key tell apart.
    Values drawValues()
    {
        Values v;
        v.channel = draw(0, 9) == 0 ? noInt : draw(1, 5);
        v.quantity = pick<qint64>({100, 200, -5, noLong});
        v.price = pick({10.0, 10.01, 9.5, noDouble});
        v.code = pick<const char *>({"600000.SH", "000001.SZ", "AP010", "600001.SH"});
        v.status = pick({'0', '2', '5', '8'});
        v.sequence = pick({1, 2, 3, noInt});
        return v;
    }

    void put(const std::string &key)
    {
        const Values values = drawValues();
        const auto record = makeOrder(key, values);
        const auto result = model.addData(record);
        slow.add({key, values, record.get(), 0});
        ASSERT_TRUE(result);
        applyToView(*result);
    }
    void remove(const std::string &key)
    {
        model.removeDataByKey(key);
        slow.remove(key);
        refillView();
    }
    void fillModel()
    {
        for (int i = 0; i < recordCount; ++i)
            put("K" + std::to_string(i));
    }
    void changeSome()
    {
        for (int count = draw(0, 4); count > 0; --count) {
            const std::string key = "K" + std::to_string(draw(0, recordCount + 50));
            if (draw(0, 3) == 0)
                remove(key);
            else
                put(key);
        }
    }

    void refillView() { view = shownKeys(); }
    /// A view of the page to which results alone are applied.
    void applyToView(const KV::CUpdatePageDataResult &result)
    {
        const auto at = [this](const std::string &key) { return std::find(view.begin(), view.end(), key); };
        if (!result.leaveKey.empty() && at(result.leaveKey) == view.end())
            return refillView();
        if (!result.leaveKey.empty())
            view.erase(at(result.leaveKey));
        if (!result.enterKey.empty() && at(result.enterKey) == view.end())
            view.push_back(result.enterKey);
    }
    std::vector<std::string> shownKeys() const
    {
        std::vector<std::string> keys;
        for (const auto &page : model.getShownPage())
            keys.push_back(page->getIData()->getKey());
        return keys;
    }
    static std::vector<std::string> sorted(std::vector<std::string> keys)
    {
        std::sort(keys.begin(), keys.end());
        return keys;
    }

    void expectSame()
    {
        ASSERT_EQ(keysOf(model.getAllDatas()), SlowPageModel::keys(slow.all));
        ASSERT_EQ(keysOf(model.getShowDatas()), SlowPageModel::keys(slow.visible));
        ASSERT_TRUE(model.checkConsistency());
        ASSERT_EQ(model.getStatColumnLongLong(LongColumn), static_cast<qint64>(slow.sum(LongColumn)));
    }

    std::mt19937 random{1};
    KV::CHpfPageDataModel model;
    SlowPageModel slow;
    std::vector<std::string> view;
};

class SlicedPagesRandom : public SlicedPages, public ::testing::WithParamInterface<unsigned>
{
protected:
    SlicedPagesRandom() { random.seed(GetParam()); }

    void askForSort()
    {
        slow.sortColumn = pick<int>({IntColumn, LongColumn, DoubleColumn, TextColumn});
        slow.sortOrder = draw(0, 1);
        model.sortByColumnID(slow.sortColumn, slow.sortOrder);
    }
    void askForFilter()
    {
        slow.status = draw(0, 2);
        slow.search = pick<const char *>({"", "600"});
        slow.filters.clear();
        KV::CHpfPageDataModel::ColumnFilters filters;
        if (draw(0, 1) == 0) {
            filters[TextColumn] = {ZB::FilterContains, {"6000", "AP"}};
            slow.filters[TextColumn] = {1, {"6000", "AP"}};
        }
        model.setExFilterStatus(slow.status);
        model.setFilter(QString::fromStdString(slow.search));
        model.filterColumn(filters);
    }
};

} // namespace

TEST_P(SlicedPagesRandom, ChangesInBetweenAreInTheNewOrderAndResultsTellOfTheOldOneUntilThen)
{
    fillModel();
    for (int round = 0; round < 25; ++round) {
        SCOPED_TRACE("seed " + std::to_string(GetParam()) + ", round " + std::to_string(round));
        model.setStartIndex(draw(0, 300));
        refillView();
        // The plain model goes on in its old order until the work is done.
        const SlowPageModel before = slow;
        const bool sorts = draw(0, 2) != 0;
        const bool filters = !sorts || draw(0, 2) == 0;
        if (sorts)
            askForSort();
        if (filters)
            askForFilter();
        SlowPageModel asked = slow;
        slow = before;
        EXPECT_TRUE(model.isPending());
        quint64 revision = model.shownRevision();
        const int mostSlices = draw(0, 1) == 0 ? 10000 : draw(1, 60);
        for (int slice = 0; slice < mostSlices && !model.step(0); ++slice) {
            if (std::exchange(revision, model.shownRevision()) != model.shownRevision())
                refillView(); // one of two is carried out
            ASSERT_NO_FATAL_FAILURE(changeSome());
            ASSERT_EQ(sorted(view), sorted(shownKeys()));
            ASSERT_LE(model.progress(), 1000);
        }
        const int sizeOfAll = model.originalSize();
        model.getData(0); // a read finishes what is left
        EXPECT_FALSE(model.isPending());
        EXPECT_EQ(model.originalSize(), sizeOfAll);
        if (sorts)
            slow.sort(asked.sortColumn, asked.sortOrder);
        if (filters) {
            slow.status = asked.status;
            slow.search = asked.search;
            slow.filters = asked.filters;
            slow.rebuild();
        }
        ASSERT_NO_FATAL_FAILURE(expectSame());
        ASSERT_NO_FATAL_FAILURE(changeSome());
        ASSERT_NO_FATAL_FAILURE(expectSame());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, SlicedPagesRandom, ::testing::Range(1u, 9u));

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

TEST_F(SlicedPages, TakingWorkBackRestoresWhatTheModelSaysAndShows)
{
    fillModel();
    model.sortByColumnID(IntColumn, 0);
    slow.sort(IntColumn, 0);
    model.setFilter(QStringLiteral("600"));
    model.filterColumn({{LongColumn, {ZB::FilterExact, {"100"}}}});
    const std::string all = keysOf(model.getAllDatas());
    const std::string shown = keysOf(model.getShowDatas());

    model.sortByColumnID(DoubleColumn, 1);
    model.setExFilterStatus(2);
    model.setFilter(QStringLiteral("AP"));
    model.filterColumn({});
    EXPECT_EQ(model.sortColumn(), DoubleColumn);
    EXPECT_EQ(model.exFilterStatus(), 2);
    EXPECT_FALSE(model.step(0));
    EXPECT_TRUE(model.cancel());
    EXPECT_FALSE(model.isPending());
    EXPECT_EQ(model.sortColumn(), IntColumn);
    EXPECT_EQ(model.sortOrder(), 0);
    EXPECT_EQ(model.exFilterStatus(), 0);
    EXPECT_EQ(model.codeSearch(), QStringLiteral("600"));
    EXPECT_EQ(model.columnFilters().keys(), QList<int>{LongColumn});
    EXPECT_EQ(keysOf(model.getAllDatas()), all);
    EXPECT_EQ(keysOf(model.getShowDatas()), shown);
    EXPECT_FALSE(model.cancel());
    model.reverseSortByColumn(DoubleColumn);
    model.reverseSortByColumn(DoubleColumn);
    EXPECT_EQ(model.sortOrder(), 0) << "a click counts from what was asked for last";
}

TEST_F(SlicedPages, WhatIsAskedForLaterTakesThePlaceOfWhatIsNotDone)
{
    fillModel();
    model.filterColumn({{TextColumn, {ZB::FilterContains, {"AP"}}}});
    model.step(0);
    model.clearFilter(true);
    EXPECT_EQ(model.size(), recordCount);
    EXPECT_TRUE(model.columnFilters().isEmpty());

    model.sortByColumnID(LongColumn, 1);
    model.filterColumn({{TextColumn, {ZB::FilterContains, {"AP"}}}});
    model.step(0);
    model.clearSort(); // the lists keep their order, the filter is still wanted
    slow.filters[TextColumn] = {1, {"AP"}};
    slow.rebuild();
    expectSame();
    EXPECT_EQ(model.sortColumn(), -1);

    model.sortByColumnID(IntColumn, 0);
    model.step(0);
    model.clear();
    slow.clear();
    slow.sortColumn = IntColumn;
    EXPECT_FALSE(model.isPending());
    EXPECT_EQ(model.sortColumn(), IntColumn) << "for the records to come";
    for (int i = 0; i < 50; ++i)
        put("N" + std::to_string(i));
    expectSame();
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
