#include <gtest/gtest.h>

#include <log4cxx/logger.h>

#include "loggedlines.h"
#include "pagerecords.h"
#include "utils/clogcenter.h"

using namespace pagetest;

namespace {

constexpr int detailId = 911;

class PageModelLog : public ::testing::Test
{
protected:
    PageModelLog() : model(metaId, kdservice::TraderStock, true)
    {
        setColumns(model);
        model.setExFilterStatus(0);
        model.setLogDetail(true);
        logger->setLevel(log4cxx::Level::getDebug());
        logger->addAppender(appender);
        utils::CLogCenter::instance()->setDebugIdEnabled(detailId, true);
    }
    ~PageModelLog() override
    {
        utils::CLogCenter::instance()->setDebugIdEnabled(detailId, false);
        logger->removeAppender(appender);
        logger->setLevel(levelBefore);
    }

    void put(const std::string &key, double price = 10, int status = '0')
    {
        Values values;
        values.price = price;
        values.status = status;
        model.addData(makeOrder(key, values));
    }
    /// The lines since the last call, with a star in place of the model's address.
    std::vector<std::string> lines() const
    {
        std::vector<std::string> taken = std::exchange(appender->lines, {});
        for (std::string &line : taken)
            if (const auto from = line.find("0x"); from != std::string::npos)
                line.replace(from, line.find(']', from) - from, "*");
        return taken;
    }

    /// The same as one text, without what all of them begin with.
    std::string written() const
    {
        const std::string start = "[dbg_id=911] [Model] [*] ";
        std::string text;
        for (const std::string &line : lines())
            text += (line.compare(0, start.size(), start) == 0 ? line.substr(start.size()) : line) + '\n';
        return text;
    }

    const log4cxx::LoggerPtr logger = utils::getLogger("KDDbgFile");
    const log4cxx::LevelPtr levelBefore = logger->getLevel();
    const std::shared_ptr<LoggedLines> appender = std::make_shared<LoggedLines>();
    KV::CHpfPageDataModel model;
};

const KV::CHpfPageDataModel::ColumnFilters noCode{{TextColumn, {ZB::FilterExact, {"none"}}}};

} // namespace

TEST_F(PageModelLog, DetailsAreWrittenOnlyWhileTheyAreWanted)
{
    model.setLogDetail(false);
    put("A");
    model.setLogDetail(true);
    utils::CLogCenter::instance()->setDebugIdEnabled(detailId, false);
    put("B");
    utils::CLogCenter::instance()->setDebugIdEnabled(detailId, true);
    logger->setLevel(log4cxx::Level::getInfo());
    put("C");
    model.filterColumn({});
    EXPECT_EQ(lines(), std::vector<std::string>());
    logger->setLevel(log4cxx::Level::getDebug());
    put("D");
    const std::string line = "[dbg_id=911] [Model] [*] [ADD] key = D, seq = 3 : append.";
    EXPECT_EQ(lines(), std::vector<std::string>(2, line)) << "for the visible list and for the all list";
}

TEST_F(PageModelLog, AnAddTellsItsPlaceInBothLists)
{
    put("A");
    model.setAppendSeq(false);
    put("B");
    model.sortByColumnID(DoubleColumn, 1);
    put("C", 99);
    EXPECT_EQ(written(), "[ADD] key = A, seq = 0 : append.\n"
                         "[ADD] key = A, seq = 0 : append.\n"
                         "[ADD] key = B, seq = 1 : prepend.\n"
                         "[ADD] key = B, seq = 1 : prepend.\n"
                         "sort col id = 2, order = 1.\n"
                         "[ADD] key = C, seq = 2 : idx_insert = 0, size = 3, insert with order.\n"
                         "[ADD] key = C, seq = 2 : idxAll_insert = 0, all_size = 3, insert with order.\n");
    model.filterColumn(noCode);
    written();
    put("A", 100);
    EXPECT_EQ(written(), "[ADD] key = A, seq = 0 : filter not passed.\n"
                         "[ADD] key = A, seq = 0 : idxAll = 2, all_size = 3, cover.\n");
}

TEST_F(PageModelLog, AnUpdateTellsWhatTheListsAreAfterIt)
{
    model.setExFilterStatus(1);
    model.sortByColumnID(DoubleColumn, 1);
    for (const auto &[key, price] : {std::pair{"A", 1.0}, {"B", 2.0}, {"C", 3.0}})
        put(key, price);
    written();
    put("A", 2.5);
    EXPECT_EQ(written(), "[UPDATE] key = A, seq = 0 : <all pass> idxAll = 2, all_size = 3, <pass> idx = 1, size = 3\n");
    put("A", 2.5, '8');
    EXPECT_EQ(written(), "[UPDATE] key = A, seq = 0 : <all pass> idxAll = 1, all_size = 3, <FAIL> idx = 1, size = 2\n");
}

TEST_F(PageModelLog, AFilterTellsWhatBecameOfEveryRecord)
{
    put("A", 1);
    put("B", 3, '8');
    put("C", 2);
    model.setAppendSeq(false); // a filter appends in any case
    model.setExFilterStatus(1);
    written();
    model.filterColumn({});
    EXPECT_EQ(written(), "[ADD] key = A, seq = 0 : append.\n"
                         "[ADD] key = B, seq = 1 : filter not passed.\n"
                         "[ADD] key = C, seq = 2 : append.\n");
    model.clearFilter(true);
    EXPECT_EQ(written(), "") << "a copy of the all list asks no record";
    model.setExFilterStatus(0);
    model.sortByColumnID(DoubleColumn, 1);
    written();
    model.filterColumn({});
    EXPECT_EQ(written(), "[ADD] key = B, seq = 1 : idx_insert = 0, size = 1, insert with order.\n"
                         "[ADD] key = C, seq = 2 : idx_insert = 1, size = 2, insert with order.\n"
                         "[ADD] key = A, seq = 0 : idx_insert = 2, size = 3, insert with order.\n");
}

TEST_F(PageModelLog, ARecordThatChangesWhileAFilterGoesOnIsToldOnce)
{
    for (int number = 0; number < 600; ++number)
        put("K" + std::to_string(number));
    put("gone");
    model.setWorkPerCall(0);
    model.filterColumn(noCode);
    ASSERT_FALSE(model.step(0)); // the first records have failed by now
    put("K3");
    put("K3");
    model.removeDataByKey(std::string("gone"));
    written();
    while (!model.step(0)) {
    }
    const std::string text = written();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 600);
    const std::string told = "[ADD] key = K3, seq = 3 : filter not passed.\n";
    EXPECT_NE(text.find(told), std::string::npos) << text.substr(0, 200);
    EXPECT_EQ(text.find(told), text.rfind(told));
    EXPECT_EQ(text.find("gone"), std::string::npos);
}
