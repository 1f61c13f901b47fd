#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "randomdraws.h"
#include "slowpagemodel.h"

namespace pagetest {

constexpr int recordCount = 2000; ///< more than one slice reads
constexpr int metaWithoutFilter = 16205;

/// A model whose sorts and filters go on in slices, and a plain one that does them when they have come to their end.
class SlicedPages : public ::testing::Test, protected RandomDraws
{
protected:
    explicit SlicedPages(bool append = true, unsigned number = 1)
        : RandomDraws(number), model(metaId, kdservice::TraderStock, append)
    {
        setColumns(model);
        slow.append = append;
        slow.status = 0;
        model.setExFilterStatus(0);
        model.setColumnStatEnable(LongColumn, true);
        model.setPageCount(40);
        model.setWorkPerCall(0);
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

    KV::CHpfPageDataModel model;
    SlowPageModel slow;
    std::vector<std::string> view;
    std::map<std::string, boost::shared_ptr<refhost::OrderRecord>> objects;
};

} // namespace pagetest
