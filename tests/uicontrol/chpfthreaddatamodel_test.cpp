#include "model/chpfthreaddatamodel.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QThread>
#include <atomic>
#include <boost/smart_ptr/bad_weak_ptr.hpp>
#include <thread>

#include "model/chpfdata.h"
#include "model/chpfsorttimedata.h"
#include "modelstrand.h"
#include "testrecords.h"

using namespace testrecords;
using KV::CHpfThreadDataModel;

namespace {

using Records = CHpfThreadDataModel::Records;
using ColoredRecords = CHpfThreadDataModel::ColoredRecords;

/// Remembers on which thread it was destroyed, and opens what runs on the strand.
class WatchedModel : public CHpfThreadDataModel
{
public:
    using CHpfThreadDataModel::CHpfThreadDataModel;
    using CHpfThreadDataModel::doAddDatas;

    ~WatchedModel() override
    {
        ++destroyed;
        if (QThread::currentThread() != QCoreApplication::instance()->thread())
            ++destroyedElsewhere;
    }

    static std::atomic<int> destroyed;
    static std::atomic<int> destroyedElsewhere;
};

std::atomic<int> WatchedModel::destroyed{0};
std::atomic<int> WatchedModel::destroyedElsewhere{0};

template <typename Condition>
bool waitFor(Condition condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition() && timer.elapsed() < 60000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return condition();
}

} // namespace

TEST(HpfThreadDataModel, BatchesArriveInTheOrderInWhichTheyCame)
{
    const Guarded<CHpfThreadDataModel> model;
    {
        Records first = tickets(1, 3);
        HeldStrand held;
        model->addDatas(first);
        first.clear(); // the batch has its own copy
        model->addDatas(Records{fullTicket("T2", 20), nullptr, fullTicket("T9", 9)});
        EXPECT_EQ(model->allSize(), 0);
        held.go();
    }
    finishStrand();
    EXPECT_EQ(shownKeys(*model), "T1 T2 T3 T9");
    EXPECT_EQ(model->getDataByKey(QStringLiteral("T2"))->getInt(ColumnLots), 20);
}

TEST(HpfThreadDataModel, AnEmptyBatchIsUnderWayUntilItsTurnAndChangesNothing)
{
    const Guarded<CHpfThreadDataModel> model;
    model->setUpdated(false);
    HeldStrand held;
    model->addDatas(Records{});
    model->addDatas(ColoredRecords{}, {{ColumnLots, {ZB::FilterExact, {QStringLiteral("1")}}}});
    EXPECT_EQ(model->loadProgress(), 0);
    held.go();
    finishStrand();
    EXPECT_EQ(model->loadProgress(), 1000);
    EXPECT_FALSE(model->updated());
    EXPECT_TRUE(model->columnFilters().isEmpty());
}

TEST(HpfThreadDataModel, ColouredBatchesBringTheirFilters)
{
    const Guarded<CHpfThreadDataModel> model;
    const ColoredRecords records{{fullTicket("T1", 1), QStringLiteral("clr_global_rise")},
                                 {fullTicket("T2", 2), QString()},
                                 {nullptr, QStringLiteral("clr_global_rise")},
                                 {fullTicket("T3", 3), QStringLiteral("clr_global_fall")}};
    const CHpfThreadDataModel::Filters filters{
        {ColumnSide, {ZB::FilterExact, {QStringLiteral("卖出")}}},
        {ColumnText, {ZB::FilterContains, {QStringLiteral("第1"), QStringLiteral("第2")}}}};
    model->addDatas(records, filters);
    finishStrand();
    EXPECT_EQ(shownKeys(*model), "T1");
    EXPECT_EQ(model->allSize(), 3);
    std::string colors;
    for (const auto &row : model->getAllDatas())
        colors += colorName(row->getColor(ColumnText)) + ' ' + colorName(row->getColor(ColumnShared)) + ' ';
    EXPECT_EQ(colors, "rise rise default default fall fall ");
}

TEST(HpfThreadDataModel, RowsSortedByTimeComeInAtOnce)
{
    const Guarded<CHpfThreadDataModel> model;
    model->updateDataFixColorForSortTime(QStringLiteral("T1"), fullTicket("T1", 1), QString());
    model->updateDataFixColorForSortTime(QStringLiteral("T2"), fullTicket("T2", 2), QStringLiteral("clr_global_fall"));
    model->updateDataFixColorForSortTime(QStringLiteral("T1"), fullTicket("T1", 5), QString());
    model->updateDataFixColorForSortTime(QStringLiteral("T3"), nullptr, QString());
    EXPECT_EQ(shownKeys(*model), "T1 T2");
    const auto first = model->getDataByKey(QStringLiteral("T1"));
    EXPECT_NE(dynamic_cast<KV::CHpfSortTimeData *>(first.get()), nullptr);
    EXPECT_EQ(first->getInt(ColumnLots), 5);
    EXPECT_EQ(colorName(first->getColor(0)) + colorName(model->getData(1)->getColor(0)), "defaultfall");
}

TEST(HpfThreadDataModel, AModelThatNobodySharesCannotBeLoaded)
{
    registerTypes();
    WatchedModel model(MetaTicket, kdservice::TraderStock);
    EXPECT_THROW(model.addDatas(tickets(1, 1)), boost::bad_weak_ptr);
    EXPECT_THROW(model.doAddDatas(tickets(1, 1)), boost::bad_weak_ptr);
    EXPECT_EQ(model.allSize(), 0);
}

TEST(HpfThreadDataModel, ABatchOfAModelThatIsGoneIsSkipped)
{
    registerTypes();
    const int before = WatchedModel::destroyed;
    const Records records = tickets(1, 2);
    {
        auto model = boost::make_shared<WatchedModel>(MetaTicket, kdservice::TraderStock);
        HeldStrand held;
        model->addDatas(records);
        model.reset();
        EXPECT_EQ(WatchedModel::destroyed, before + 1);
        held.go();
    }
    finishStrand();
    EXPECT_EQ(records.front().use_count(), 1);
}

TEST(HpfThreadDataModel, TheLastHoldOnAModelEndsOnTheGuiThread)
{
    registerTypes();
    const int before = WatchedModel::destroyed;
    WatchedModel::destroyedElsewhere = 0;

    // A row that dies on another thread is the last to know its model.
    auto model = boost::make_shared<WatchedModel>(MetaTicket, kdservice::TraderStock);
    auto row = boost::make_shared<KV::CHpfData>(fullTicket("T1", 1), model->fieldColumnMap(), model);
    model.reset();
    std::thread([moved = std::move(row)]() mutable { moved.reset(); }).join();
    EXPECT_EQ(WatchedModel::destroyed, before);
    EXPECT_TRUE(waitFor([&] { return WatchedModel::destroyed == before + 1; }));

    // Models are dropped by the GUI thread while their batches run.
    constexpr int models = 30;
    for (int number = 0; number < models; ++number) {
        auto loading = boost::make_shared<WatchedModel>(MetaTicket, kdservice::TraderStock);
        loading->addDatas(tickets(0, 200));
        loading->addDatas(tickets(100, 200));
        if (number % 3 != 0)
            waitFor([&] { return loading->allSize() > 0; });
        loading->clear();
        const boost::weak_ptr<CHpfThreadDataModel> watch = loading;
        loading.reset();
        finishStrand();
        if (const auto survivor = watch.lock())
            survivor->clear(); // a batch that ran after the clear() has brought rows, which hold their model
    }
    EXPECT_TRUE(waitFor([&] { return WatchedModel::destroyed == before + 1 + models; }));
    EXPECT_EQ(WatchedModel::destroyedElsewhere, 0);
}
