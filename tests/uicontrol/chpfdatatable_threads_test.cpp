#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QThreadPool>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

#include "model/chpfextradatamodel.h"
#include "model/chpfthreaddatamodel.h"
#include "modelstrand.h"
#include "tablewindow.h"
#include "theme/themeservice.h"

using namespace testrecords;
using KV::CHpfThreadDataModel;
using refhost::ThemeService;

namespace {

using HpfDataTableThreads = TableWindow;

} // namespace

TEST_F(HpfDataTableThreads, LoadsPaintingFiltersAndThemesGoOnAtTheSameTime)
{
    constexpr int rounds = 12;
    constexpr int batch = 400;
    const Guarded<CHpfThreadDataModel> model;
    model->setFieldColors(true);
    table->setDataModel(model.pointer().get());
    std::atomic<bool> stop{false};
    std::thread pusher([&] {
        for (int turn = 0; !stop; ++turn) {
            model->getExtraDataModel()->addData(QStringLiteral("T%1").arg(turn % 300), ColumnPrice, turn, nullptr);
            if (turn % 64 == 0)
                model->getExtraDataModel()->removeData(QStringLiteral("T%1").arg(turn % 300));
        }
    });
    std::thread updater([&] {
        for (int turn = 0; !stop; ++turn)
            if (turn % 2 == 0)
                model->updateData(makeRow(model.pointer(), fullTicket("T" + std::to_string(turn % 50), turn)));
            else
                model->updateDataFixColorForSortTime(QStringLiteral("T7"), fullTicket("T7", turn),
                                                     QStringLiteral("clr_global_rise"));
    });
    model->getExtraDataModel()->addColumn(ColumnPrice, KV::CExtraColumnInfo());
    table->setColumnStatEnable(ColumnPrice, true);

    for (int round = 0; round < rounds; ++round) {
        model->addDatas(tickets(round * batch / 2, batch));
        model->setSortColumns({{round % 2 == 0 ? ColumnVolume : ColumnText, round % 3}});
        QPair<ZB::EFilterType, QSet<QString>> values(ZB::FilterExact, {QStringLiteral("买入")});
        if (round % 4 == 1)
            model->filterColumn(ColumnSide, values);
        if (round % 4 == 3)
            table->clearFilter();
        ThemeService::instance().setTheme(round % 2 == 0 ? QStringLiteral("light") : QStringLiteral("dark"));
        if (round % 5 == 2)
            ThemeService::instance().setScale(round % 2 == 0 ? 1.5 : 1.0);
        table->onTimer();
        settle();
        table->grab();
    }
    finishStrand();
    stop = true;
    pusher.join();
    updater.join();
    ThemeService::instance().setScale(1.0);
    ThemeService::instance().setTheme(QStringLiteral("dark"));
    table->clearFilter();
    settle();
    EXPECT_EQ(table->count(), (rounds + 1) * batch / 2);
    EXPECT_EQ(grid()->source()->rowCount(), table->count());
}

TEST_F(HpfDataTableThreads, ManyRowsComeAndChangeWhileTheyAreSortedFilteredSummedPausedCopiedAndPainted)
{
    constexpr int rows = 24000; // enough for orders made in the background, with a second thread that reads
    constexpr int rounds = 6;
    constexpr int batch = 500;
    const Guarded<CHpfThreadDataModel> model;
    table->setDataModel(model.pointer().get());
    model->setColumnStatEnable(ColumnVolume, true);
    model->addDatas(tickets(0, rows));
    std::atomic<bool> stop{false};
    std::thread updater([&] {
        for (int turn = 0; !stop; ++turn) {
            QVector<ZB::IBaseHpfTableModel::Row> changed;
            for (int i = 0; i < 100; ++i)
                changed.append(
                    makeRow(model.pointer(), fullTicket("T" + std::to_string((turn * 997 + i) % rows), turn)));
            model->updateDatas(changed);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    std::thread reader([&] {
        for (int turn = 0; !stop; ++turn) {
            model->getStatDispalyQString(ColumnVolume);
            model->getStatColumnLongLong(ColumnVolume);
            if (const auto row = model->getData(turn % std::max(1, model->size())))
                row->getDisplayQString(ColumnText);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    for (int round = 0; round < rounds; ++round) {
        model->addDatas(tickets(rows + round * batch, batch));
        model->setSortColumns({{round % 2 == 0 ? ColumnVolume : ColumnText, round % 3}});
        QPair<ZB::EFilterType, QSet<QString>> values(ZB::FilterExact, {QStringLiteral("买入")});
        if (round % 3 == 1)
            model->filterColumn(ColumnSide, values);
        else
            model->clearFilter();
        table->setPaused(round % 2 == 1);
        settle();
        grid()->selectAll();
        table->copySelection(true);
        table->grab();
    }
    finishStrand();
    stop = true;
    updater.join();
    reader.join();
    table->setPaused(false);
    model->clearFilter();
    settle();
    qint64 sum = 0;
    const auto all = model->getAllDatas();
    for (const auto &row : all)
        sum += row->getLongLong(ColumnVolume);
    EXPECT_EQ(all.size(), rows + rounds * batch);
    EXPECT_EQ(model->getStatColumnLongLong(ColumnVolume), sum);
    QThreadPool::globalInstance()->waitForDone(); // the copies
}

TEST_F(HpfDataTableThreads, LoadsAreCancelledByTheTableAndByOthersWhileTheyAreSortedAndPainted)
{
    constexpr int rounds = 8;
    constexpr int enough = 3; // loads that the other thread ended, however seldom it has its turn
    constexpr int mostRounds = 2000;
    constexpr int batch = 3000;
    const Guarded<CHpfThreadDataModel> model;
    table->setDataModel(model.pointer().get());
    std::atomic<bool> stop{false};
    std::atomic<int> cancelled{0};
    std::thread canceller([&] {
        while (!stop) {
            const int progress = model->loadProgress();
            if (progress > 300 && progress < 1000 && model->cancelLoad())
                ++cancelled;
            std::this_thread::yield();
        }
    });
    int round = 0;
    for (; round < rounds || (cancelled < enough && round < mostRounds); ++round) {
        model->addDatas(tickets(round * batch, batch));
        model->setSortColumns({{ColumnVolume, round % 2}});
        settle();
        table->grab();
        if (round % 3 == 2)
            table->cancelWork();
    }
    finishStrand();
    stop = true;
    canceller.join();
    const int in = model->allSize();
    EXPECT_GE(cancelled, enough);
    EXPECT_LE(in, round * batch);
    model->addDatas(tickets(round * batch, batch));
    finishStrand();
    settle();
    EXPECT_EQ(table->count(), in + batch);
    EXPECT_EQ(table->workProgress(), 1000);
}

TEST_F(HpfDataTableThreads, AModelIsSwappedAndATableGoesWhileALoadRuns)
{
    std::vector<boost::weak_ptr<CHpfThreadDataModel>> watched;
    for (int turn = 0; turn < 6; ++turn) {
        auto model = boost::make_shared<CHpfThreadDataModel>(MetaTicket, kdservice::TraderStock);
        watched.push_back(model);
        table->setDataModel(model.get());
        model->addDatas(tickets(0, 300));
        model->setTradeType(kdservice::TraderFuture);
        model->addDatas(tickets(100, 300));
        QCoreApplication::processEvents();
        if (turn % 2 == 0)
            finishStrand();
    }
    window.reset();
    finishStrand();
    for (const auto &watch : watched)
        if (const auto model = watch.lock())
            model->clear(); // taken off the table with its rows, or loaded after the table went
    QCoreApplication::processEvents();
    for (const auto &watch : watched)
        EXPECT_TRUE(watch.expired());
}
