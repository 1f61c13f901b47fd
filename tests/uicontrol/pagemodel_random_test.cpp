#include <gtest/gtest.h>

#include <algorithm>
#include <boost/make_shared.hpp>

#include "kdservice/keyhash.h"
#include "randomdraws.h"
#include "slowpagemodel.h"

using namespace pagetest;

namespace {

/// What a host shows: applies nothing but results, and refills where a result cannot tell.
struct PageView
{
    std::vector<std::string> keys;

    void refill(const KV::CHpfPageDataModel &model)
    {
        keys.clear();
        for (int i = 0; i < model.pageCount(); ++i)
            if (const auto page = model.getData(model.startIndex() + i))
                keys.push_back(page->getIData()->getKey());
    }

    bool has(const std::string &key) const { return std::find(keys.begin(), keys.end(), key) != keys.end(); }

    /// False when the leaving row was not on the page: it went in front of it.
    bool apply(const KV::CUpdatePageDataResult &result)
    {
        if (!result.leaveKey.empty()) {
            if (!has(result.leaveKey))
                return false;
            keys.erase(std::find(keys.begin(), keys.end(), result.leaveKey));
        }
        if (!result.enterKey.empty() && !has(result.enterKey))
            keys.push_back(result.enterKey);
        return true;
    }

    /// The rows in the order of the indexes that the model tells.
    std::string ordered(const KV::CHpfPageDataModel &model) const
    {
        std::vector<std::pair<int, std::string>> list;
        for (const std::string &key : keys)
            list.emplace_back(model.getDataIndexByKey(kdservice::hashOfKey(key)), key);
        std::sort(list.begin(), list.end());
        std::string text;
        for (const auto &[index, key] : list)
            text += std::to_string(index) + ':' + key + ' ';
        return text;
    }
};

class PageModelRandom : public ::testing::TestWithParam<unsigned>, protected RandomDraws
{
protected:
    PageModelRandom() : RandomDraws(GetParam()), model(metaId, kdservice::TraderStock, GetParam() % 2 == 0)
    {
        setColumns(model);
        slow.append = GetParam() % 2 == 0;
        for (const int column : {IntColumn, LongColumn, DoubleColumn})
            model.setColumnStatEnable(column, true);
        model.setPageCount(5);
        model.setStartIndex(3);
    }

    Values drawValues()
    {
        Values v;
        v.channel = pick({1, 2, 3, noInt});
        v.quantity = pick<qint64>({100, 200, -5, noLong});
        // Neighbours are equal, neighbours of neighbours are not.
        v.price = pick({10.0, 10.000006, 10.000012, 9.5, noDouble, std::numeric_limits<double>::quiet_NaN(),
                        std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()});
        v.code = pick<const char *>({"600000.SH", "000001.SZ", "AP010", "600001.SH"});
        v.status = pick<int>({'0', '1', '2', '3', '4', '5', '6', '7', '8', '9', 'V', noInt});
        v.lot = pick({1, 100, noInt});
        v.sequence = pick({1, 2, 3, noInt});
        return v;
    }

    void addOrUpdate()
    {
        const std::string key = "K" + std::to_string(draw(0, 25));
        const Values values = drawValues();
        const auto known = objects.find(key);
        boost::shared_ptr<refhost::OrderRecord> record;
        Values stored = values;
        if (known != objects.end() && draw(0, 2) == 0) {
            record = known->second; // the host changes its record in place
            stored.lot = lots[key]; // the nested record stays
            fill(*record, values);
        } else {
            record = makeOrder(key, values);
        }
        objects[key] = record;
        lots[key] = stored.lot;
        result = model.addData(record);
        slow.add({key, stored, record.get(), 0});
        ASSERT_TRUE(result);
        if (!view.apply(*result))
            view.refill(model);
    }

    void remove()
    {
        const std::string key = "K" + std::to_string(draw(0, 25));
        model.removeDataByKey(kdservice::hashOfKey(key));
        slow.remove(key);
        view.refill(model);
    }

    void sort()
    {
        const int column = pick<int>({IntColumn, LongColumn, DoubleColumn, TextColumn, CharColumn, NestedColumn, -1});
        if (column < 0) {
            model.clearSort();
            slow.sortColumn = -1;
        } else {
            const int order = draw(0, 2);
            model.sortByColumnID(column, order);
            slow.sort(column, order);
        }
        view.refill(model);
    }

    void filter()
    {
        KV::CHpfPageDataModel::ColumnFilters filters;
        slow.filters.clear();
        if (draw(0, 1) == 0) {
            filters[TextColumn] = {ZB::FilterContains, {"6000", "AP"}};
            slow.filters[TextColumn] = {1, {"6000", "AP"}};
        }
        if (draw(0, 1) == 0) {
            filters[IntColumn] = {ZB::FilterExact, {"1", "3"}};
            slow.filters[IntColumn] = {0, {"1", "3"}};
        }
        slow.status = draw(0, 4);
        slow.search = pick<const char *>({"", "", "600", ".SZ"});
        model.setExFilterStatus(slow.status);
        model.setFilter(QString::fromStdString(slow.search));
        model.filterColumn(filters);
        slow.rebuild();
        view.refill(model);
    }

    /// They take effect with the next record.
    void setStatusAndSearch()
    {
        slow.status = draw(0, 4);
        slow.search = pick<const char *>({"", "600"});
        model.setExFilterStatus(slow.status);
        model.setFilter(QString::fromStdString(slow.search));
    }

    void step()
    {
        switch (draw(0, 20)) {
        case 0:
            return sort();
        case 1:
            return filter();
        case 2:
        case 3:
            return remove();
        case 4:
            model.setStartIndex(draw(0, 12));
            model.setPageCount(draw(0, 6));
            return view.refill(model);
        case 5:
            if (draw(0, 9) == 0) {
                model.clear();
                slow.clear();
            } else {
                model.clearFilter(true);
                slow.dropFilters();
            }
            return view.refill(model);
        case 6:
            return setStatusAndSearch();
        default:
            return addOrUpdate();
        }
    }

    /// Each key's record and place, as the plain model says, and the place of a record that is not there.
    void expectSamePlaces()
    {
        for (int number = 0; number < 27; ++number) {
            const std::string key = "K" + std::to_string(number);
            const quint64 hash = kdservice::hashOfKey(key);
            const int inAll = slow.find(slow.all, key);
            const int shown = slow.find(slow.visible, key);
            const auto page = model.getDataByKey(hash);
            ASSERT_EQ(model.containData(hash), inAll >= 0) << key;
            ASSERT_EQ(page != nullptr, inAll >= 0) << key;
            ASSERT_EQ(model.getAllDataIndex(page), inAll) << key;
            ASSERT_EQ(model.getDataIndex(page), shown) << key;
            ASSERT_EQ(model.getDataIndexByKey(hash), shown) << key;
            if (inAll >= 0) {
                ASSERT_EQ(page->getIData().get(), slow.all[static_cast<std::size_t>(inAll)].object) << key;
                ASSERT_EQ(model.getDataFromAll(inAll), page);
            }
        }
        const Values values = drawValues();
        const auto stranger = boost::make_shared<KV::CHpfPageData>(makeOrder("stranger", values));
        const SlowPageModel::Record record{"stranger", values, stranger->getIData().get(), 0};
        ASSERT_EQ(model.getDataInsertIndex(stranger), slow.insertIndex(slow.visible, record));
        ASSERT_EQ(model.getAllDataInsertIndex(stranger), slow.insertIndex(slow.all, record));
        ASSERT_EQ(model.getAllDataIndex(stranger), -1);
    }

    std::string sequences() const
    {
        std::string text;
        for (const auto &page : model.getAllDatas())
            text += std::to_string(page->getDataSeq()) + " ";
        return text;
    }

    std::string slowSequences() const
    {
        std::string text;
        for (const auto &record : slow.all)
            text += std::to_string(record.dataSeq) + " ";
        return text;
    }

    KV::CHpfPageDataModel model;
    SlowPageModel slow;
    PageView view;
    std::map<std::string, boost::shared_ptr<refhost::OrderRecord>> objects;
    std::map<std::string, int> lots;
    boost::shared_ptr<KV::CUpdatePageDataResult> result;
};

} // namespace

TEST_P(PageModelRandom, AgreesWithAPlainModelAndItsResultsKeepAViewRight)
{
    for (int i = 0; i < 3000; ++i) {
        SCOPED_TRACE("seed " + std::to_string(GetParam()) + ", step " + std::to_string(i) + ", sort column " +
                     std::to_string(model.sortColumn()) + ", order " + std::to_string(model.sortOrder()));
        ASSERT_NO_FATAL_FAILURE(step());
        ASSERT_EQ(keysOf(model.getAllDatas()), SlowPageModel::keys(slow.all));
        ASSERT_EQ(keysOf(model.getShowDatas()), SlowPageModel::keys(slow.visible));
        ASSERT_EQ(sequences(), slowSequences());
        ASSERT_TRUE(model.checkConsistency());
        ASSERT_EQ(model.getStatColumnLongLong(LongColumn), static_cast<qint64>(slow.sum(LongColumn)));
        ASSERT_EQ(model.getStatColumnInt(IntColumn), static_cast<int>(slow.sum(IntColumn)));
        ASSERT_DOUBLE_EQ(model.getStatColumnDouble(DoubleColumn), slow.sum(DoubleColumn));
        ASSERT_EQ(model.totalCountChange(), std::exchange(slow.countChanged, false));
        PageView fresh;
        fresh.refill(model);
        ASSERT_EQ(view.ordered(model), fresh.ordered(model));
        ASSERT_NO_FATAL_FAILURE(expectSamePlaces());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, PageModelRandom, ::testing::Range(1u, 13u));
