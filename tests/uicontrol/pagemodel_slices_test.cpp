#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <boost/make_shared.hpp>
#include <boost/thread/thread.hpp>
#include <cmath>
#include <deque>
#include <random>
#include <set>

#include "kdservice/fielddes.h"
#include "kdservice/keyhash.h"
#include "plainrecord.h"
#include "records/fieldids.h"
#include "slowpagemodel.h"

using namespace pagetest;

namespace {

constexpr int recordCount = 2000; ///< more than one slice reads
constexpr int metaWithoutFilter = 16205;

/// A model whose sorts and filters go on in slices, and a plain one that does them when they have come to their end.
class SlicedPages : public ::testing::Test
{
protected:
    explicit SlicedPages(bool append = true) : model(metaId, kdservice::TraderStock, append)
    {
        setColumns(model);
        slow.append = append;
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
        boost::shared_ptr<refhost::OrderRecord> &record = objects[key];
        if (record && draw(0, 3) == 0)
            fill(*record, values); // the host changes its record in place
        else
            record = makeOrder(key, values);
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
    std::map<std::string, boost::shared_ptr<refhost::OrderRecord>> objects;
};

/// Anything in any order: what is asked for waits in a queue of the test's own and is done to the plain model when the
/// model shows it.
class SlicedPagesRandom : public SlicedPages, public ::testing::WithParamInterface<unsigned>
{
protected:
    /// What decides which records are shown.
    struct Filter
    {
        std::map<int, std::pair<int, std::vector<std::string>>> columns;
        int status = 0;
        std::string search;
    };
    struct Work
    {
        bool isFilter;
        Filter filter;
        bool everything;
        int column;
        int order;
    };

    SlicedPagesRandom() : SlicedPages(GetParam() % 2 == 0) { random.seed(GetParam()); }

    bool filterWaits() const
    {
        return std::any_of(works.begin(), works.end(), [](const Work &work) { return work.isFilter; });
    }
    void use(const Filter &filter)
    {
        slow.filters = filter.columns;
        slow.status = filter.status;
        slow.search = filter.search;
    }
    Filter used() const { return {slow.filters, slow.status, slow.search}; }

    /// The later of two neighbours of a kind counts; records are tested as they were when the list was made until then.
    void ask(const Work &work)
    {
        if (!works.empty() && works.back().isFilter == work.isFilter)
            works.pop_back();
        if (work.isFilter)
            use(listed);
        works.push_back(work);
    }
    void publish()
    {
        ASSERT_FALSE(works.empty());
        const Work work = works.front();
        works.pop_front();
        if (!work.isFilter)
            return slow.sort(work.column, work.order);
        use(work.filter);
        if (work.everything)
            slow.dropFilters();
        else
            slow.rebuild();
        listed = work.filter;
        use(filterWaits() ? work.filter : asked);
    }
    void step(int milliseconds)
    {
        const quint64 before = model.shownRevision();
        model.step(milliseconds);
        for (quint64 changes = model.shownRevision() - before; changes > 0; --changes)
            ASSERT_NO_FATAL_FAILURE(publish());
        refillView();
    }
    void finish()
    {
        ASSERT_NO_FATAL_FAILURE(step(100000));
        ASSERT_TRUE(works.empty());
        EXPECT_FALSE(model.isPending());
        expectSame();
    }

    void sort()
    {
        askedColumn = pick<int>({IntColumn, LongColumn, DoubleColumn, TextColumn});
        askedOrder = draw(0, 1);
        model.sortByColumnID(askedColumn, askedOrder);
        ask({false, {}, false, askedColumn, askedOrder});
    }
    void clearSort()
    {
        model.clearSort();
        askedColumn = slow.sortColumn = -1;
        std::deque<Work> dropped;
        dropped.swap(works);
        for (const Work &work : dropped)
            if (work.isFilter)
                ask(work);
    }
    void setStatusAndSearch()
    {
        asked.status = draw(0, 2);
        asked.search = pick<const char *>({"", "600"});
        model.setExFilterStatus(asked.status);
        model.setFilter(QString::fromStdString(asked.search));
        if (!filterWaits())
            use(asked);
    }
    void filter()
    {
        setStatusAndSearch();
        asked.columns.clear();
        KV::CHpfPageDataModel::ColumnFilters filters;
        if (draw(0, 1) == 0) {
            filters[TextColumn] = {ZB::FilterContains, {"6000", "AP"}};
            asked.columns[TextColumn] = {1, {"6000", "AP"}};
        }
        model.filterColumn(filters);
        ask({true, asked, false, 0, 0});
    }
    void clearFilter(bool rebuild)
    {
        const bool same = works.empty() && SlowPageModel::keys(slow.all) == SlowPageModel::keys(slow.visible);
        model.clearFilter(rebuild);
        asked.columns.clear();
        if (rebuild && !same) {
            ask({true, asked, true, 0, 0});
        } else if (!filterWaits()) {
            listed = asked;
            use(asked);
        }
    }
    void cancel()
    {
        EXPECT_EQ(model.cancel(), !works.empty());
        works.clear();
        askedColumn = slow.sortColumn;
        askedOrder = slow.sortOrder;
        asked = used();
    }
    void clearAll()
    {
        model.clear();
        slow.clear();
        works.clear();
        slow.sortColumn = askedColumn;
        slow.sortOrder = askedOrder;
        listed = asked;
        use(asked);
        for (int i = 0; i < recordCount / 2; ++i)
            putAndTest("K" + std::to_string(i));
    }
    /// A record that is tested makes the present filter that of the list.
    void putAndTest(const std::string &key)
    {
        if (slow.find(slow.visible, key) < 0)
            listed = used();
        put(key);
    }
    void change()
    {
        for (int count = draw(0, 4); count > 0; --count) {
            const std::string key = "K" + std::to_string(draw(0, recordCount + 50));
            if (draw(0, 3) == 0)
                remove(key);
            else
                putAndTest(key);
        }
    }

    void doSomething()
    {
        switch (draw(0, 39)) {
        case 0:
        case 1:
            return sort();
        case 2:
        case 3:
            return filter();
        case 4:
            clearSort();
            break;
        case 5:
            clearFilter(draw(0, 1) == 0);
            break;
        case 6:
            return setStatusAndSearch();
        case 7:
            return cancel();
        case 8:
            if (draw(0, 9) == 0)
                clearAll();
            break;
        case 9:
            model.setStartIndex(draw(0, 300));
            break;
        case 10:
            return finish();
        default:
            ASSERT_NO_FATAL_FAILURE(step(0));
            return change();
        }
        refillView();
    }

    std::deque<Work> works;
    Filter asked;
    Filter listed; ///< what the visible list was made with
    int askedColumn = -1;
    int askedOrder = 0;
};

} // namespace

TEST_P(SlicedPagesRandom, WhatIsAskedForComesWholeAndChangesInBetweenAreInTheListsAsTheyAreShown)
{
    fillModel();
    for (int i = 0; i < 700; ++i) {
        SCOPED_TRACE("seed " + std::to_string(GetParam()) + ", step " + std::to_string(i));
        ASSERT_NO_FATAL_FAILURE(doSomething());
        std::string page;
        for (std::size_t index = static_cast<std::size_t>(model.startIndex());
             index < slow.visible.size() && index < static_cast<std::size_t>(model.startIndex() + model.pageCount());
             ++index)
            page += (page.empty() ? "" : " ") + slow.visible[index].key;
        ASSERT_EQ(keysOf(model.getShownPage()), page);
        ASSERT_EQ(sorted(view), sorted(shownKeys())) << "results alone keep a view right";
        ASSERT_EQ(model.shownSize(), static_cast<int>(slow.visible.size()));
        ASSERT_EQ(model.originalSize(), static_cast<int>(slow.all.size()));
        ASSERT_EQ(model.isPending(), !works.empty());
        ASSERT_EQ(model.sortColumn(), askedColumn);
        ASSERT_EQ(model.columnFilters().isEmpty(), asked.columns.empty());
        ASSERT_EQ(model.exFilterStatus(), asked.status);
        ASSERT_EQ(model.codeSearch().toStdString(), asked.search);
        ASSERT_LE(model.progress(), 1000);
    }
    finish();
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
