#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <boost/thread/thread.hpp>
#include <future>

#include "kdservice/keyhash.h"
#include "pagerulesmodel.h"
#include "plainrecord.h"

using namespace pagetest;

TEST(PageModelRecords, AMovedResultIsEmpty)
{
    const std::string longKey(100, 'k'); // too long to lie within a text
    for (const std::string &key : {std::string("a"), longKey}) {
        KV::CUpdatePageDataResult source;
        source.enterKey = key;
        source.leaveKey = key + '2';
        const KV::CUpdatePageDataResult copy(source);
        KV::CUpdatePageDataResult made(std::move(source));
        EXPECT_EQ(source.enterKey + source.leaveKey, "");
        KV::CUpdatePageDataResult assigned;
        assigned.enterKey = "former";
        assigned = std::move(made);
        EXPECT_EQ(made.enterKey + made.leaveKey, "");
        EXPECT_EQ(assigned.enterKey + assigned.leaveKey, key + key + '2');
        auto &itself = assigned;
        assigned = std::move(itself);
        EXPECT_EQ(assigned.enterKey + assigned.leaveKey, copy.enterKey + copy.leaveKey);
    }
}

TEST(PageModelRecords, TwoKeysOfOneHashAreBothKept)
{
    RulesModel model;
    const auto record = [](const char *key) { return boost::make_shared<PlainRecord>(key, 42); };
    model.addData(record("first"));
    model.addData(record("second"));
    EXPECT_EQ(model.shown(), "first second");
    model.addData(record("first"));
    EXPECT_EQ(model.size(), 2);
    model.removeDataByKey(quint64(42));
    EXPECT_EQ(model.size(), 1);
    EXPECT_TRUE(model.containData(42));
}

/// Destructors are the host's, and may well ask the model.
TEST(PageModelRecords, RecordsAreDestroyedWithoutTheLock)
{
    RulesModel model;
    std::string destroyed;
    const auto record = [&](const char *key) {
        return boost::make_shared<PlainRecord>(key, kdservice::hashOfKey(key), [&model, &destroyed, key] {
            auto asked = std::make_shared<std::promise<void>>();
            const std::future<void> answer = asked->get_future();
            boost::thread([&model, asked] {
                model.originalSize();
                asked->set_value();
            }).detach();
            destroyed += key;
            if (answer.wait_for(std::chrono::seconds(5)) != std::future_status::ready)
                destroyed += " under the lock ";
        });
    };
    model.addData(record("a"));
    model.addData(record("a"));
    EXPECT_EQ(destroyed, "a") << "an update";
    model.setExFilterStatus(4);
    model.filterColumn({{TextColumn, {ZB::FilterExact, {"none"}}}});
    model.addData(record("a"));
    EXPECT_EQ(destroyed, "aa") << "a cover";
    model.addData(record("b"));
    model.removeDataByKey(std::string("a"));
    EXPECT_EQ(destroyed, "aaa");
    model.clear();
    EXPECT_EQ(destroyed, "aaab");
}

/// What a page holds is the host's to change; the model sees it when it is handed in again.
TEST(PageModelRecords, ARecordStaysTheModelsWhenItsPageGetsAnother)
{
    RulesModel model;
    std::string destroyed;
    const auto record = [&destroyed](const char *key) {
        return boost::make_shared<PlainRecord>(key, kdservice::hashOfKey(key), [&destroyed, key] { destroyed += key; });
    };
    model.addData(record("a"));
    const auto page = model.getData(0);
    page->setIData(record("a"));
    EXPECT_EQ(destroyed, "");
    EXPECT_EQ(model.getMenuItems(TextColumn).size(), 1);
    model.addData(page);
    EXPECT_EQ(destroyed, "a");
    page->setIData(nullptr);
    model.sortByColumnID(TextColumn, 1);
    model.filterColumn({});
    EXPECT_FALSE(model.addData(page));
    EXPECT_EQ(model.size(), 1);
    model.clear();
    EXPECT_EQ(destroyed, "aa");
}
