// Progress of bulk loads, and their end before time.

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <atomic>
#include <boost/weak_ptr.hpp>
#include <chrono>
#include <future>
#include <random>
#include <string>
#include <thread>

#include "kdservice/keyhash.h"
#include "modelstrand.h"
#include "plainrecord.h"
#include "testrecords.h"

using namespace testrecords;
using KV::CHpfThreadDataModel;

namespace {

using Records = CHpfThreadDataModel::Records;
using ColoredRecords = CHpfThreadDataModel::ColoredRecords;

/// As many as a batch stores before it asks whether to go on: a few hundred.
constexpr int aFewHundred = 1000;

/// Stands still when it is asked for its key while it is stored.
class HaltingRecord : public pagetest::PlainRecord
{
public:
    explicit HaltingRecord(const std::string &key) : PlainRecord(key, kdservice::hashOfKey(key)) {}

    std::string getKey() const override
    {
        if (isArmed.exchange(false)) {
            halted.set_value();
            release.get_future().wait();
        }
        return PlainRecord::getKey();
    }

    mutable std::atomic<bool> isArmed{false};
    mutable std::promise<void> halted;
    mutable std::promise<void> release;
};

/// "T0 T1 ... " as they stand in the order of arrival: the first of them, a dash and the last of every run of numbers
/// that follow each other.
std::string runsOf(const CHpfThreadDataModel &model)
{
    std::string runs;
    int first = -2;
    int last = -2;
    const auto close = [&] {
        if (first >= 0)
            runs += (runs.empty() ? "" : " ") + std::to_string(first) + '-' + std::to_string(last);
    };
    for (const auto &row : model.getAllDatas()) {
        const int number = std::stoi(row->key().substr(1));
        if (number != last + 1) {
            close();
            first = number;
        }
        last = number;
    }
    close();
    return runs;
}

} // namespace

TEST(HpfThreadDataModelCancel, ProgressRunsFromTheHandOverUntilAllIsIn)
{
    const Guarded<HaltingModel> model;
    EXPECT_EQ(model->loadProgress(), 1000);
    const quint64 before = model->loadNumber();
    model->haltAt("T1500");
    HeldStrand held;
    model->addDatas(tickets(0, 2000));
    EXPECT_EQ(model->loadProgress(), 0);
    model->addDatas(tickets(2000, 2000));
    held.go();
    model->waitUntilHalted(); // the first batch: all made, three quarters stored
    EXPECT_GT(model->loadProgress(), 250);
    EXPECT_LT(model->loadProgress(), 500);
    EXPECT_EQ(model->loadNumber(), before);
    model->goOn();
    finishStrand();
    EXPECT_EQ(model->loadProgress(), 1000);
    EXPECT_NE(model->loadNumber(), before);
    EXPECT_EQ(runsOf(*model), "0-3999");
}

TEST(HpfThreadDataModelCancel, WhatIsQueuedIsDroppedAndWhatComesLaterIsLoadedWholeAndInOrder)
{
    const Guarded<CHpfThreadDataModel> model;
    const Records dropped = tickets(0, 3);
    HeldStrand held;
    model->addDatas(dropped);
    model->addDatas(ColoredRecords{{fullTicket("T7", 7), QString()}},
                    {{ColumnSide, {ZB::FilterExact, {QStringLiteral("卖出")}}}});
    EXPECT_TRUE(model->cancelLoad());
    EXPECT_EQ(model->loadProgress(), 1000);
    EXPECT_FALSE(model->cancelLoad()) << "nothing is left to be cancelled";
    model->addDatas(tickets(10, 1000));
    model->addDatas(Records{fullTicket("T12", 99), fullTicket("T2000", 1)});
    EXPECT_EQ(model->loadProgress(), 0);
    held.go();
    finishStrand();
    EXPECT_EQ(runsOf(*model), "10-1009 2000-2000");
    EXPECT_EQ(model->getDataByKey(QStringLiteral("T12"))->getInt(ColumnLots), 99);
    EXPECT_TRUE(model->columnFilters().isEmpty()) << "the filters of a dropped batch";
    EXPECT_EQ(model->loadProgress(), 1000);
    EXPECT_EQ(dropped.front().use_count(), 1);
}

TEST(HpfThreadDataModelCancel, ABatchEndsInTheMiddleAndKeepsWhatIsIn)
{
    const Guarded<HaltingModel> model;
    model->setUpdated(false);
    model->haltAt("T5000");
    model->addDatas(tickets(0, 20000));
    model->addDatas(tickets(20000, 100));
    model->waitUntilHalted();
    const int stored = model->allSize();
    EXPECT_GT(stored, 5000);
    EXPECT_LT(stored, 5000 + aFewHundred);
    EXPECT_FALSE(model->updated()) << "one call, one mark";
    EXPECT_TRUE(model->cancelLoad());
    model->addDatas(tickets(30000, 700));
    model->goOn();
    finishStrand();
    EXPECT_TRUE(model->updated());
    EXPECT_EQ(runsOf(*model), "0-" + std::to_string(stored - 1) + " 30000-30699");
}

TEST(HpfThreadDataModelCancel, TheFiltersOfABatchOfWhichRowsAreInAreSet)
{
    const Guarded<HaltingModel> model;
    ColoredRecords records;
    for (int number = 0; number < 5000; ++number)
        records.append({fullTicket('T' + std::to_string(number), number), QString()});
    model->haltAt("T1000");
    model->addDatas(records, {{ColumnSide, {ZB::FilterExact, {QStringLiteral("卖出")}}}});
    model->waitUntilHalted();
    EXPECT_TRUE(model->cancelLoad());
    model->goOn();
    finishStrand();
    EXPECT_LT(model->allSize(), 1000 + aFewHundred);
    EXPECT_EQ(model->columnFilters().keys(), QList<int>{ColumnSide});
    EXPECT_LT(model->size(), model->allSize());
}

TEST(HpfThreadDataModelCancel, AModelGoesDuringALoadThatWasCancelled)
{
    registerTypes();
    auto model = boost::make_shared<HaltingModel>(MetaTicket, kdservice::TraderStock);
    const boost::weak_ptr<HaltingModel> watch = model;
    HaltingModel &halting = *model;
    model->haltAt("T600");
    model->addDatas(tickets(0, 5000));
    model->addDatas(tickets(5000, 5000));
    model->waitUntilHalted();
    EXPECT_TRUE(model->cancelLoad());
    model->clear();
    model.reset(); // the batch that runs holds it
    EXPECT_FALSE(watch.expired());
    halting.goOn();
    finishStrand();
    QCoreApplication::processEvents();
    EXPECT_TRUE(watch.expired());
}

TEST(HpfThreadDataModelCancel, ADismissedModelIsLeftWithoutRowsThoughSomeWereOnTheirWay)
{
    const Guarded<CHpfThreadDataModel> model;
    Records records = tickets(0, 1000);
    const auto halting = boost::make_shared<HaltingRecord>("T900");
    records[900] = halting;
    halting->isArmed = true;
    model->addDatas(records);
    model->addDatas(tickets(2000, 10));
    halting->halted.get_future().wait();
    EXPECT_GT(model->allSize(), 0);
    EXPECT_LT(model->allSize(), 900) << "the piece with this row is not stored yet";
    model->dismiss();
    model->addDatas(tickets(3000, 10));
    EXPECT_EQ(model->allSize(), 0);
    halting->release.set_value();
    finishStrand();
    EXPECT_EQ(runsOf(*model), "3000-3009");
}

TEST(HpfThreadDataModelCancel, WhereverTheCancelFallsWholeRunsAreInAndLaterBatchesAreWhole)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    constexpr int batch = 3000;
    const Records first = tickets(0, batch);
    const Records second = tickets(batch, batch);
    const Records third = tickets(2 * batch, batch);
    for (int round = 0; round < 20; ++round) {
        const Guarded<CHpfThreadDataModel> model;
        model->addDatas(first);
        model->addDatas(second);
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 4000));
        model->cancelLoad();
        model->addDatas(third);
        finishStrand();
        const int in = model->allSize() - batch;
        ASSERT_GE(in, 0);
        ASSERT_LE(in, 2 * batch);
        EXPECT_EQ(runsOf(*model), in == 2 * batch ? "0-8999"
                                  : in == 0       ? "6000-8999"
                                                  : "0-" + std::to_string(in - 1) + " 6000-8999");
    }
}
