#include "slicedpages.h"

#include <algorithm>
#include <deque>

using namespace pagetest;

namespace {

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

    SlicedPagesRandom() : SlicedPages(GetParam() % 2 == 0, GetParam()) {}

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
        ASSERT_TRUE(askedColumn < 0 || model.sortOrder() == askedOrder);
        ASSERT_EQ(model.columnFilters().isEmpty(), asked.columns.empty());
        ASSERT_EQ(model.exFilterStatus(), asked.status);
        ASSERT_EQ(model.codeSearch().toStdString(), asked.search);
        ASSERT_LE(model.progress(), 1000);
    }
    finish();
}

INSTANTIATE_TEST_SUITE_P(Seeds, SlicedPagesRandom, ::testing::Range(1u, 9u));
